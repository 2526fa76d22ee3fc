#include "tests/addin/flows/FlowFixture.h"
#include "tests/support/pages/RefusingTask.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>

namespace zn::test {

namespace {

class Setup : public FlowFixture {
protected:
    std::vector<Text> titles() const
    {
        std::vector<Text> all;
        for (const auto& page : task->pages())
            all.push_back(page.title);
        return all;
    }
    Value valueOf(TextView name)
    {
        Value value;
        task->GetValue(name, value);
        return value;
    }
};

} // namespace

/// The task holds its pages' records, they hold the add-in, and the pages of that hold the task.
TEST_F(Setup, SurvivesAHostThatDestroysItsWindowFirst)
{
    for (const TaskKind kind : {TaskKind::Conversion, TaskKind::Printing, TaskKind::General}) {
        openTask(kind);
        auto lone = std::make_shared<CZNTaskAddIn>(ports, [this] { return std::make_shared<Pages>(ports); });
        auto* const foreign = new QWidget;
        ArkCmd setup{TaskCmdSetup, static_cast<std::int32_t>(foreign->winId()), vault, {}, task, 0, true, {}};
        ASSERT_EQ(lone->OnCmd(&setup, &selection), S_OK);
        EXPECT_FALSE(foreign->findChildren<QWidget*>().isEmpty());
        const std::weak_ptr<CZNTaskAddIn> addInLives = lone;
        const std::weak_ptr<zn::arkin::TaskProperties> taskLives = task;
        tasks.remove(task->task().id);
        lone.reset();
        task.reset();
        setup = {};
        EXPECT_FALSE(addInLives.expired());
        delete foreign;
        QCoreApplication::processEvents();
        EXPECT_TRUE(addInLives.expired());
        EXPECT_TRUE(taskLives.expired());
    }
}

TEST_F(Setup, HandsOverThePagesOfTheKind)
{
    openTask(TaskKind::Conversion);
    ASSERT_EQ(send(TaskCmdSetup, task), S_OK);
    EXPECT_THAT(titles(), ElementsAre(u"Menu Command", u"Conversion Settings", u"File Card", u"Output File Details"));
    EXPECT_EQ(task->flags(), 23);
    for (const auto& page : task->pages()) {
        EXPECT_TRUE(pages().isWindow(page.window)) << toUtf8(page.title);
        EXPECT_EQ(page.callback, addIn);
    }

    // The pages of the kind that a script page chose come at the next opening, those that are there go before.
    const auto gone = task->pages();
    ASSERT_EQ(task->SetValue(u"__type", u"2"), S_OK);
    ASSERT_EQ(send(TaskCmdSetup, task), S_OK);
    EXPECT_THAT(
        titles(), ElementsAre(u"Menu Command", u"Printer", u"Paper Size and Orientation", u"Margins", u"Files"));
    for (const auto& page : gone)
        EXPECT_FALSE(pages().isWindow(page.window)) << toUtf8(page.title);
    ASSERT_EQ(task->SetValue(u"__type", 3), S_OK);
    ASSERT_EQ(send(TaskCmdSetup, task), S_OK);
    EXPECT_THAT(titles(), ElementsAre(u"Menu Command", u"Script"));
}

TEST_F(Setup, RefusesWhatItCannotWorkWith)
{
    openTask(TaskKind::General);
    EXPECT_EQ(send(TaskCmdSetup, nullptr), E_POINTER);
    EXPECT_EQ(send(TaskCmdSetupButton, nullptr, u"OK"), E_POINTER);
    EXPECT_EQ(send(TaskCmdSetupButton, nullptr, u"Cancel"), S_OK);
    cmd.command = TaskCmdSetup;
    cmd.taskObject = task;
    cmd.parentWindow = 0x7ffffff;
    EXPECT_EQ(addIn->OnCmd(&cmd, &selection), E_INVALIDARG);

    CZNTaskAddIn withoutWindows(ports);
    EXPECT_EQ(withoutWindows.OnCmd(&cmd, &selection), E_NOTIMPL);
    EXPECT_EQ(cmd.text, u"This build of the add-in has no windows.");
}

TEST_F(Setup, KeepsTheDialogOpenOnAPageThatRefuses)
{
    openTask(TaskKind::Printing);
    ASSERT_EQ(send(TaskCmdSetup, task), S_OK);
    find<QRadioButton>(window, "marginsFixed")->click();
    auto* top = find<QLineEdit>(window, "marginTop");
    top->setText("two");
    {
        Answers answers({QMessageBox::Ok});
        EXPECT_EQ(send(TaskCmdSetupButton, task, u"OK"), S_OK);
    }
    EXPECT_EQ(cmd.cancel, -1);
    EXPECT_EQ(cmd.text, u"Margins");
    EXPECT_EQ(valueOf(u"__printer_prseltype"), Value());
    EXPECT_EQ(cmd.unspoken, u"");

    // Where nobody sees the box, the host gets what it would have said.
    ArkCmd unseen{TaskCmdSetupButton, static_cast<std::int32_t>(window.winId()), vault, u"OK", task, 0, false, {}};
    EXPECT_EQ(addIn->OnCmd(&unseen, &selection), S_OK);
    EXPECT_EQ(unseen.cancel, -1);
    EXPECT_EQ(unseen.text, u"Margins");
    EXPECT_EQ(
        toUtf8(unseen.unspoken), "\"two\" is no length for the margin \"Top\". Please enter a number, such as 12.5.");

    top->setText("12.5");
    EXPECT_EQ(send(TaskCmdSetupButton, task, u"OK"), S_OK);
    EXPECT_EQ(cmd.cancel, 0);
    EXPECT_EQ(valueOf(u"__printer_margintop"), Value(12.5f));
}

TEST_F(Setup, WritesTheMenuEntryEvenIfAPageCouldNotBeStored)
{
    openTask(TaskKind::Conversion);
    const auto refusing
        = std::make_shared<RefusingTask>(task, [](TextView name, auto) { return name == u"FileFormat"; });
    ASSERT_EQ(send(TaskCmdSetup, refusing), S_OK);
    auto* title = find<QLineEdit>(window, "menuTitle");
    title->selectAll();
    type(title, "STEP for purchasing");
    {
        Answers answers({QMessageBox::Ok});
        EXPECT_EQ(send(TaskCmdSetupButton, refusing, u"OK"), S_OK);
    }
    std::vector<ArkMenuCmd> entries;
    task->GetMenuCmds(entries);
    EXPECT_THAT(entries,
        ElementsAre(
            ArkMenuCmd{1, u"STEP for purchasing", 0x4001, u"Converts ZENTREL files from one format to another"}));
    EXPECT_EQ(valueOf(u"OutputPath"), Value());

    find<QCheckBox>(window, "showCommand")->click();
    EXPECT_EQ(send(TaskCmdSetupButton, task, u"OK"), S_OK);
    task->GetMenuCmds(entries);
    EXPECT_THAT(entries, ElementsAre());
    EXPECT_EQ(valueOf(u"__menucmd_display"), Value(false));
    EXPECT_EQ(valueOf(u"FileFormat"), Value(u"<Prompt the user>"));
}

/// The table of variables and the controls of the pages tell the same defaults, each in its own words.
TEST_F(Setup, StoresForAnUntouchedTaskWhatTheTableSays)
{
    openTask(TaskKind::Conversion);
    for (const TaskKind kind : {TaskKind::Conversion, TaskKind::Printing}) {
        task->SetValue(u"__type", static_cast<std::int32_t>(kind));
        ASSERT_EQ(send(TaskCmdSetup, task), S_OK);
        ASSERT_EQ(send(TaskCmdSetupButton, task, u"OK"), S_OK);
        for (const auto& [name, value] : initialVariables(kind, u"Nightly"))
            EXPECT_EQ(valueOf(name), value) << toUtf8(name);
    }
    for (const auto& [name, value] : stored()) {
        const TaskVariable* row = findTaskVariable(name);
        ASSERT_NE(row, nullptr) << toUtf8(name);
        EXPECT_EQ(value.type(), row->type) << toUtf8(name);
    }
}

} // namespace zn::test
