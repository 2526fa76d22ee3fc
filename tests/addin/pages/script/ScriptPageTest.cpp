#include "addin/pages/script/ScriptPageDlg.h"

#include "addin/macro/MacroResources.h"
#include "addin/pages/script/InstalledVersions.h"
#include "addin/pages/script/MacroEdit.h"
#include "platform/linux/RegistryProducts.h"
#include "tests/support/pages/PageFixture.h"

#include <gmock/gmock.h>
#include <QComboBox>
#include <QMenu>
#include <QPushButton>
#include <QTest>

using namespace zn;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zn::arkin::Variables;

namespace {

using Form = CScriptPageDlg::Form;

class ScriptPageTest : public test::PageFixture {
protected:
    /// The definition of a new task with these variables.
    std::shared_ptr<zn::arkin::TaskProperties> makeTask(const Variables& before)
    {
        zn::arkin::TaskDefinition definition;
        definition.name = u"Task " + numberText(++m_tasksMade);
        definition.variables = before;
        tasks.create(definition);
        return std::make_shared<zn::arkin::TaskProperties>(tasks.get(definition.name));
    }
    /// What the vault has once the host has accepted what was written.
    Variables storedOf(const zn::arkin::TaskProperties& made)
    {
        tasks.change(made.task().id, made.change());
        return tasks.get(made.task().name).variables;
    }
    PageEnvironment& environment() { return pages().environment(); }

    void install(std::initializer_list<const char16_t*> names)
    {
        int number = 0;
        for (const char16_t* name : names)
            ports.registry.write(RegistryRoot::Machine,
                Text(installedProductsKey) + u"\\{" + numberText(++number) + u"}", productNameValue,
                RegistryValue::text(name));
    }
    static Text defaultText(TaskKind kind) { return defaultMacro(kind) + u"\n"; }
    template <class Widget> static Widget& child(QWidget& window, const char* name)
    {
        return *test::find<Widget>(window, name);
    }
    static MacroEdit& edit(QWidget& window) { return static_cast<MacroEdit&>(child<QPlainTextEdit>(window, "macro")); }
    static std::vector<std::string> entries(const QComboBox& list)
    {
        std::vector<std::string> out;
        for (int i = 0; i < list.count(); ++i)
            out.push_back(list.itemText(i).toStdString());
        return out;
    }
    /// Chooses another kind of the task with a key.
    static void pressKey(QWidget& window, Qt::Key key)
    {
        auto& kinds = child<QComboBox>(window, "taskType");
        kinds.setFocus();
        QTest::keyClick(&kinds, key);
    }
    static Variables variables(const Text& script, std::int32_t version, std::int32_t kind)
    {
        return {{u"__script", script}, {u"__zn_version", version}, {u"__type", kind}};
    }

private:
    int m_tasksMade = 0;
};

TEST_F(ScriptPageTest, InstalledVersionsFollowTheProductsNames)
{
    const auto labels = [](const std::vector<Text>& names) {
        std::vector<std::string> out;
        for (const CadVersion& version : cadVersions(names))
            out.push_back(toUtf8(version.label) + "=" + std::to_string(version.year));
        return out;
    };
    EXPECT_THAT(labels({u"ZENTREL 2018 x64 Edition SP0.0", u"ZENTREL 2018 SP0.0", u"ZENTREL 2018 Beta 1",
                    u"zentrel 2017 X64 Edition  Pre", u"ZENTREL 2008 Alpha"}),
        ElementsAre("ZENTREL 2018=2018", "ZENTREL 2017=2017", "ZENTREL 2008=2008"));
    EXPECT_THAT(
        labels({u"ZENTREL Explorer 2018 SP0", u"ZENTREL 2007 SP5", u"ZENTREL 2018 sp0", u"ZENTREL 2018", u"ZENTREL",
            u"", u"ZENTRELX 2018 SP0", u"ZENTREL 2018 x64", u"ZENTREL 2019 Viewer SP1", u"ZENTREL 2019 x64 SP1"}),
        IsEmpty());
}

TEST_F(ScriptPageTest, WhatIsLoadedIsWhatIsSaved)
{
    install({u"ZENTREL 2018 SP0.0", u"ZENTREL 2020 SP1", u"ZENTREL 2018 x64 Edition SP0.0"});
    struct Row {
        Variables before;
        Text script;
        std::int32_t version;
        std::int32_t kind;
    };
    const Text general = defaultText(TaskKind::General);
    const Row rows[] = {
        {{}, general, 0, 3},
        {variables(u"", 2020, 1), defaultText(TaskKind::Conversion), 2020, 1},
        {variables(u"my macro\r\n[A] – \u00A0x", 2018, 2), u"my macro\r\n[A] – \u00A0x", 2018, 2},
        {variables(u"x", 2019, 3), u"x", 0, 3}, // that version isn't installed
        {{{u"__zn_version", u"2018"}, {u"__type", 17}}, general, 2018, 3},
    };
    for (const Row& row : rows) {
        const auto made = makeTask(row.before);
        CScriptPageDlg page(environment(), nullptr, Form::Page);
        page.load(made);
        page.save(made);
        EXPECT_EQ(storedOf(*made), variables(row.script, row.version, row.kind)) << toUtf8(row.script);
    }
    const auto made = makeTask({});
    CScriptPageDlg page(environment(), nullptr, Form::Page);
    page.load(made);
    EXPECT_THAT(
        entries(child<QComboBox>(page, "version")), ElementsAre("<Use default>", "ZENTREL 2018", "ZENTREL 2020"));
    EXPECT_THAT(entries(child<QComboBox>(page, "taskType")), ElementsAre("File Conversion", "Printing", "General"));
}

TEST_F(ScriptPageTest, AnotherKindOnThePageReplacesTheMacroAndSaysSo)
{
    const auto made = makeTask(variables(u"mine", 0, 3));
    CScriptPageDlg page(environment(), nullptr, Form::Page);
    page.show();
    page.load(made);
    test::Answers boxes({QMessageBox::Ok, QMessageBox::Ok});
    pressKey(page, Qt::Key_Home); // File Conversion
    EXPECT_EQ(boxes.shown(),
        QStringList("You must restart the task property dialog box in order to see the new user interface."));
    EXPECT_EQ(edit(page).macroText(), defaultText(TaskKind::Conversion));
    pressKey(page, Qt::Key_End);        // General
    EXPECT_EQ(boxes.shown().size(), 1); // the kind that the task has
    EXPECT_EQ(edit(page).macroText(), defaultText(TaskKind::Conversion));
    pressKey(page, Qt::Key_Up); // Printing
    page.save(made);
    EXPECT_EQ(storedOf(*made), variables(defaultText(TaskKind::Printing), 0, 2));
}

TEST_F(ScriptPageTest, TheInsertMenuReplacesTheSelection)
{
    CScriptPageDlg page(environment(), nullptr, Form::Page);
    page.show();
    page.load(makeTask(variables(u"a = \"here\"", 0, 3)));
    edit(page).setTextCursor(edit(page).document()->find("here"));
    QStringList items;
    QTimer::singleShot(0, [&items] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (const QAction* action : menu->actions())
            items.append(action->text());
        for (int i = 0; i < 6; ++i)
            QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QTest::mouseClick(&child<QPushButton>(page, "insertMacro"), Qt::LeftButton);
    EXPECT_EQ(items,
        QStringList({"Source File Name", "Source File Extension", "Configuration Name", "Source Folder Path",
            "Vault Root Folder Path", "Task Instance GUID", "Source File Path"}));
    EXPECT_EQ(edit(page).macroText(), u"a = \"<TaskInstanceGuid>\"");
    QTest::keyClick(&edit(page), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit(page).macroText(), u"a = \"here\"");
}

TEST_F(ScriptPageTest, TheDialogsResetIsThereForAChangedMacro)
{
    const Text general = defaultText(TaskKind::General);
    struct Row {
        Text script;
        bool enabled;
    };
    for (const Row& row : {Row{u"", false}, Row{general, false}, Row{general + u" ", true}}) {
        CScriptDlg dialog(environment(), nullptr);
        dialog.page().load(makeTask(variables(row.script, 0, 3)));
        EXPECT_EQ(child<QPushButton>(dialog, "resetScript").isEnabled(), row.enabled) << row.script.size();
    }

    CScriptDlg dialog(environment(), nullptr);
    dialog.show();
    dialog.page().load(makeTask(variables(u"mine", 0, 3)));
    auto& reset = child<QPushButton>(dialog, "resetScript");
    {
        test::Answers boxes({[](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), "Reset");
            static_cast<QMessageBox&>(box).button(QMessageBox::No)->click();
        }});
        QTest::mouseClick(&reset, Qt::LeftButton);
        EXPECT_EQ(
            boxes.shown(), QStringList("Are you sure you want to discard any changes you have made to the script?"));
        EXPECT_EQ(edit(dialog).macroText(), u"mine");
    }
    test::Answers boxes({QMessageBox::Yes});
    pressKey(dialog, Qt::Key_Up);
    EXPECT_EQ(edit(dialog).macroText(), u"mine"); // in the dialog only OK acts on another kind
    QTest::mouseClick(&reset, Qt::LeftButton);
    EXPECT_EQ(edit(dialog).macroText(), defaultText(TaskKind::Printing));
    EXPECT_FALSE(reset.isEnabled());
    QTest::keyClicks(&edit(dialog), "x");
    EXPECT_TRUE(reset.isEnabled());
}

TEST_F(ScriptPageTest, OnlyOkOfTheDialogWritesAndMistakesDontKeepItFromDoingSo)
{
    const auto made = makeTask(variables(u"mine", 0, 1));
    const auto run = [&](const char* button, auto&& before, std::vector<test::Answers::Answer> boxes = {}) {
        boxes.insert(boxes.begin(), [&](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Advanced Scripting Options");
            before(dialog);
            QTest::mouseClick(&child<QPushButton>(dialog, button), Qt::LeftButton);
        });
        const test::Answers answers(std::move(boxes));
        return editScript(environment(), nullptr, made);
    };
    const auto type = [](QWidget& dialog) { QTest::keyClicks(&edit(dialog), "If ) "); };
    EXPECT_FALSE(run("cancel", type));
    EXPECT_EQ(storedOf(*made), variables(u"mine", 0, 1));
    EXPECT_TRUE(run("ok", type));
    EXPECT_EQ(storedOf(*made), variables(u"If ) mine", 0, 1));

    // Another kind brings its own macro, whatever was typed.
    const auto typeAndTurn = [&](QWidget& dialog) {
        type(dialog);
        pressKey(dialog, Qt::Key_End);
    };
    EXPECT_TRUE(run("ok", typeAndTurn, {[](QWidget& box) { box.close(); }}));
    EXPECT_EQ(storedOf(*made), variables(defaultText(TaskKind::General), 0, 3));
}

TEST_F(ScriptPageTest, AFailedReadShowsWhatWasReadAndTellsTheCaller)
{
    const auto made = makeTask({{u"__script", u"mine"}, {u"__zn_version", u"newest"}, {u"__type", 1}});
    CScriptPageDlg page(environment(), nullptr, Form::Page);
    EXPECT_THROW(page.load(made), StatusError);
    EXPECT_EQ(edit(page).macroText(), u"mine");
}

} // namespace
