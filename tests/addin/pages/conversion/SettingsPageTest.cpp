#include "addin/variables/OutputFormats.h"
#include "addin/variables/TaskVariables.h"
#include "tests/addin/pages/conversion/SettingsFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTextEdit>
#include <QToolButton>

namespace zn::test {
namespace {

using ::testing::ElementsAre;

class SettingsPage : public SettingsFixture {
protected:
    void choose(const QString& label) { on<QComboBox>("outputFormat")->setCurrentText(label); }
    /// A control of one of the two pages of a row of tabs.
    template <class Control> Control* of(const char* subPage, const char* role)
    {
        return find<Control>(*on<QWidget>(subPage), role);
    }
    /// What the page stored, without the settings of formats.
    std::vector<std::string> storedByPage()
    {
        zn::arkin::Variables variables = stored();
        std::erase_if(variables, [](const auto& variable) {
            const TaskVariable* row = findTaskVariable(variable.first);
            return !row || row->owner != VariableOwner::ConversionPage;
        });
        return lines(variables);
    }
};

TEST_F(SettingsPage, StoresItsDefaultsAndTheSettingsOfAllFormats)
{
    setUp();
    ASSERT_TRUE(page->save(task));
    EXPECT_THAT(storedByPage(),
        ElementsAre("Asm3DPDFThemePath=theme.xml", "AsmPrimaryViews=0", "AsmThemeAndViewsChecks=13", "FileConfs=5",
            "FileFormat=<Prompt the user>", "FileSheets=5", "OutputConfs=3", "OutputSheets=3",
            "Part3DPDFThemePath=theme.xml", "PartPrimaryViews=0", "PartThemeAndViewsChecks=13", "SourceRefs=6"));
    const zn::arkin::Variables all = stored();
    for (const TaskVariable& variable : taskVariables()) {
        if (variable.owner != VariableOwner::FormatOptions)
            continue;
        ASSERT_TRUE(all.contains(Text(variable.name))) << toUtf8(variable.name);
        EXPECT_EQ(all.at(Text(variable.name)), valueOf(variable.initial)) << toUtf8(variable.name);
    }
}

/// An installation in another language may have stored its own label.
TEST_F(SettingsPage, FindsAFormatByItsLabelInAnyLanguage)
{
    const std::pair<const char16_t*, const char*> rows[] = {
        {u"Parasolid bin\u00E4r (*.x_b)", "Parasolid Binary (*.x_b)"},
        {u"<benutzer fragen>", "<Prompt the user>"},
        {u"3d pdf - mbd (*.pdf)", "3D PDF - MBD (*.pdf)"},
        {u"Ein altes Format (*.x_b)", "<Prompt the user>"},
    };
    for (const auto& [storedLabel, shownLabel] : rows) {
        setUp({{u"FileFormat", Text(storedLabel)}});
        EXPECT_EQ(on<QComboBox>("outputFormat")->currentText().toStdString(), shownLabel);
    }
    // At a launch it is the administrator's, too.
    launch({{u"FileFormat", Text(u"Parasolid bin\u00E4r (*.x_b)")}}, 16);
    EXPECT_EQ(page->formatLabel(), u"Parasolid Binary (*.x_b)");
    EXPECT_FALSE(sees("outputFormat"));
}

TEST_F(SettingsPage, SaysWhileItIsTypedThatBracketsAreNoListOfLetters)
{
    setUp();
    of<QRadioButton>("configurations", "named")->click();
    auto* name = of<QLineEdit>("configurations", "name");
    name->selectAll();
    type(name, "*-M");
    EXPECT_FALSE(of<QLabel>("configurations", "bracketNote")->isVisible());
    name->home(false);
    type(name, "[ML]");
    EXPECT_TRUE(of<QLabel>("configurations", "bracketNote")->isVisible());
    of<QRadioButton>("configurations", "all")->click();
    EXPECT_FALSE(of<QLabel>("configurations", "bracketNote")->isVisible());
}

TEST_F(SettingsPage, StoresWhatAPersonChooses)
{
    setUp();
    choose("Viewpane (*.vprt; *.vasm; *.vdrw)");
    click(of<QRadioButton>("configurations", "named"));
    auto* name = of<QLineEdit>("configurations", "name");
    EXPECT_EQ(name->text(), "Default");
    name->selectAll();
    type(name, "Bo?t*");
    click(of<QRadioButton>("configurations", "sameFile"));
    click(of<QCheckBox>("configurations", "allowOutput"));
    on<QTabWidget>("outputTabs")->setCurrentIndex(1);
    click(of<QRadioButton>("sheets", "lastActive"));
    EXPECT_FALSE(of<QRadioButton>("sheets", "sameFile")->isEnabled());
    click(of<QCheckBox>("sheets", "allowFiles")); // greyed with its group, so it stays
    click(on<QRadioButton>("referencedVersion"));
    click(on<QCheckBox>("allowReferences"));
    ASSERT_TRUE(page->save(task));
    EXPECT_THAT(storedByPage(),
        ElementsAre("Asm3DPDFThemePath=theme.xml", "AsmPrimaryViews=0", "AsmThemeAndViewsChecks=13", "FileConfs=3",
            "FileFormat=Viewpane (*.vprt; *.vasm; *.vdrw)", "FileSheets=5", "NamedConf=Bo?t*", "OutputConfs=8",
            "OutputSheets=5", "Part3DPDFThemePath=theme.xml", "PartPrimaryViews=0", "PartThemeAndViewsChecks=13",
            "SourceRefs=1"));
}

TEST_F(SettingsPage, ShowsAndKeepsWhatIsStored)
{
    const zn::arkin::Variables before{
        {u"FileFormat", Text(u"adobe pdf (*.PDF)")},
        {u"OutputConfs", 0}, // nothing set shows all
        {u"OutputSheets", 9},
        {u"NamedSheet", Text(u"Sheet?")},
        {u"FileSheets", 2},
        {u"FileConfs", Text(u"2")}, // a number as text; this format has no choice of grouping for configurations
        {u"SourceRefs", 3},
    };
    setUp(before);
    EXPECT_EQ(page->formatLabel(), u"Adobe PDF (*.pdf)");
    EXPECT_TRUE(of<QRadioButton>("configurations", "all")->isChecked());
    EXPECT_FALSE(of<QCheckBox>("configurations", "allowOutput")->isChecked());
    EXPECT_FALSE(of<QWidget>("configurations", "fileBox")->isVisible());
    EXPECT_FALSE(of<QLineEdit>("configurations", "name")->isEnabled());
    on<QTabWidget>("outputTabs")->setCurrentIndex(1);
    EXPECT_TRUE(of<QRadioButton>("sheets", "named")->isChecked());
    EXPECT_EQ(of<QLineEdit>("sheets", "name")->text(), "Sheet?");
    EXPECT_TRUE(of<QRadioButton>("sheets", "sameFile")->isVisible());
    EXPECT_TRUE(of<QRadioButton>("sheets", "sameFile")->isChecked());
    EXPECT_TRUE(on<QRadioButton>("referencedVersion")->isChecked());
    EXPECT_FALSE(on<QCheckBox>("allowReferences")->isChecked());

    ASSERT_TRUE(page->save(task));
    const std::vector<std::string> saved = storedByPage();
    EXPECT_THAT(saved,
        ElementsAre("Asm3DPDFThemePath=theme.xml", "AsmPrimaryViews=0", "AsmThemeAndViewsChecks=13", "FileConfs=4",
            "FileFormat=Adobe PDF (*.pdf)", "FileSheets=2", "NamedSheet=Sheet?", "OutputConfs=2", "OutputSheets=9",
            "Part3DPDFThemePath=theme.xml", "PartPrimaryViews=0", "PartThemeAndViewsChecks=13", "SourceRefs=1"));
    reopenTask();
    page->load(task);
    ASSERT_TRUE(page->save(task));
    EXPECT_EQ(storedByPage(), saved);
}

TEST_F(SettingsPage, AnUnknownFormatBecomesTheFirstRow)
{
    setUp({{u"FileFormat", Text(u"Lost format (*.lost)")}});
    EXPECT_EQ(page->formatLabel(), u"<Prompt the user>");
    EXPECT_TRUE(of<QWidget>("configurations", "fileBox")->isVisible());
}

TEST_F(SettingsPage, OffersTheOptionsOfFormatsThatHaveSome)
{
    setUp();
    auto* formats = on<QComboBox>("outputFormat");
    QStringList greyed;
    for (int row = 0; row < formats->count(); ++row) {
        formats->setCurrentIndex(row);
        EXPECT_EQ(formats->currentData().toInt(), row);
        if (!on<QPushButton>("conversionOptions")->isEnabled())
            greyed << QString::number(row);
    }
    EXPECT_EQ(greyed.join(' '), "0 1 2 4 7 11 12 14 15 21");

    choose("IGES (*.igs)");
    Answers answers({[](QWidget& modal) { modal.close(); }});
    click(on<QPushButton>("conversionOptions"));
    EXPECT_EQ(answers.shown(), QStringList("Advanced Scripting Options (IGES)"));
}

TEST_F(SettingsPage, NamesAVariableThatHoldsSomethingElse)
{
    for (const char16_t* name : {u"OutputSheets", u"FileConfs", u"AsmPrimaryViews", u"SourceRefs"}) {
        if (task)
            tasks.remove(std::exchange(task, nullptr)->task().id);
        openTask(TaskKind::Conversion, {{name, Text(u"all")}});
        page = pages().makeConversionPage(setting(TaskKind::Conversion), false);
        try {
            page->load(task);
            ADD_FAILURE() << "a text was taken for a number";
        } catch (const StatusError& error) {
            EXPECT_EQ(error.status(), DISP_E_TYPEMISMATCH);
            EXPECT_THAT(error.what(), ::testing::HasSubstr(toUtf8(name)));
        }
        // The page stays usable: what it shows can be stored.
        EXPECT_TRUE(page->save(task));
    }
}

TEST_F(SettingsPage, NamesALibraryThatIsMissing)
{
    openTask(TaskKind::Conversion);
    const std::filesystem::path installation = platform.folder / "product";
    std::filesystem::create_directory(installation);
    for (const char* missing : {"LexMgr.dll", "TokenCtrl.dll", "FlowIcons.dll"}) {
        ports.registry.write(RegistryRoot::Machine, productKey, u"Location",
            RegistryValue::text(platform.machine.files().fromMachine(installation)));
        try {
            Pages(ports).makeConversionPage(setting(TaskKind::Conversion), false);
            ADD_FAILURE() << "the page opened without " << missing;
        } catch (const StatusError& error) {
            EXPECT_THAT(error.what(), ::testing::HasSubstr(missing));
        }
        EXPECT_TRUE(window.findChildren<QWidget*>().isEmpty()) << "a part of the page was left behind";
        std::filesystem::create_symlink(std::filesystem::path(ZN_BIN_DIR) / missing, installation / missing);
    }
    EXPECT_NO_THROW(Pages(ports).makeConversionPage(setting(TaskKind::Conversion), false));
}

/// A definition whose host refuses one write.
class RefusingTask final : public IArkTaskProperties {
public:
    RefusingTask(IArkTaskProperties& task, int accepted)
        : m_task(task)
        , m_accepted(accepted)
    {
    }

    Status GetValue(TextView name, Value& value) override { return m_task.GetValue(name, value); }
    Status SetValue(TextView name, const Value& value) override
    {
        if (static_cast<int>(written.size()) == m_accepted)
            return E_ARK_PERMISSION_DENIED;
        written.push_back(toUtf8(name));
        return m_task.SetValue(name, value);
    }
    Status GetTaskName(Text& name) override { return m_task.GetTaskName(name); }
    Status SetSetupPages(const std::vector<ArkTaskPage>& shown) override { return m_task.SetSetupPages(shown); }
    Status GetMenuCmds(std::vector<ArkMenuCmd>& entries) override { return m_task.GetMenuCmds(entries); }
    Status SetMenuCmds(const std::vector<ArkMenuCmd>& entries) override { return m_task.SetMenuCmds(entries); }
    Status SetTaskFlags(std::int32_t flags) override { return m_task.SetTaskFlags(flags); }
    Status GetVariable(std::int32_t id, Value& value) override { return m_task.GetVariable(id, value); }
    Status SetVariable(std::int32_t id, const Value& value) override { return m_task.SetVariable(id, value); }

    std::vector<std::string> written;

private:
    IArkTaskProperties& m_task;
    int m_accepted;
};

TEST_F(SettingsPage, StopsAtTheFirstRefusedWrite)
{
    setUp();
    constexpr int never = 1000;
    const auto all = std::make_shared<RefusingTask>(*task, never);
    ASSERT_TRUE(page->save(all));
    // The settings of the formats first, then the page's own, sub-page by sub-page.
    const std::vector<std::string> own(all->written.end() - 12, all->written.end());
    EXPECT_THAT(own,
        ElementsAre("FileFormat", "SourceRefs", "OutputSheets", "FileSheets", "OutputConfs", "FileConfs",
            "Asm3DPDFThemePath", "AsmThemeAndViewsChecks", "AsmPrimaryViews", "Part3DPDFThemePath",
            "PartThemeAndViewsChecks", "PartPrimaryViews"));

    const int count = static_cast<int>(all->written.size());
    for (int accepted = count - 12; accepted < count; ++accepted) {
        const auto refusing = std::make_shared<RefusingTask>(*task, accepted);
        zn::arkin::test::expectStatus(E_ARK_PERMISSION_DENIED, [&] { page->save(refusing); });
        EXPECT_EQ(static_cast<int>(refusing->written.size()), accepted);
    }
    // A refused setting of a format is told at once, and the rest isn't tried.
    Answers answers({QMessageBox::Ok});
    const auto refusing = std::make_shared<RefusingTask>(*task, 3);
    zn::arkin::test::expectStatus(E_FAIL, [&] { page->save(refusing); });
    EXPECT_EQ(refusing->written.size(), 3u);
    EXPECT_TRUE(answers.allUsed());
}

} // namespace
} // namespace zn::test
