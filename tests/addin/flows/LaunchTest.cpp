#include "tests/addin/flows/FlowFixture.h"
#include "tests/support/FakeHost.h"

#include <QTabWidget>

namespace zn::test {

namespace {

/// A conversion that an administrator has settled.
zn::arkin::Variables settled()
{
    return {{u"FileFormat", u"STEP (*.step)"}, {u"PromptOutput", false}, {u"SourceRefs", 2}, {u"OutputConfs", 2},
        {u"OutputSheets", 2}, {u"FileConfs", 4}, {u"FileSheets", 4}};
}

class Launch : public FlowFixture {
protected:
    Text written(const std::shared_ptr<zn::arkin::LaunchInstance>& instance)
    {
        const auto& own = instance->ownVariables();
        const auto found = own.find(u"__selection_list");
        return found == own.end() ? Text() : found->second.toText();
    }
    /// The tabs of themes on the page that the host was handed; empty without a page.
    std::string shownTabs()
    {
        QWidget* page = QWidget::find(static_cast<WId>(cmd.parentWindow));
        if (page == &window)
            return {};
        page->show();
        const auto* tabs = find<QTabWidget>(*page, "themeTabs");
        QStringList titles;
        for (int tab = 0; tab < tabs->count() && tabs->isVisible(); ++tab)
            titles << tabs->tabText(tab);
        return titles.join(' ').toStdString();
    }
};

} // namespace

TEST_F(Launch, GoesOnAtOnceWhenNothingIsOpen)
{
    openTask(TaskKind::Conversion, settled());
    selection = {addSelected("bracket.zenprt")};
    const auto instance = launchInstance();
    ASSERT_EQ(send(TaskCmdLaunch, instance), S_OK);
    EXPECT_EQ(cmd.cancel, 0);
    EXPECT_EQ(cmd.text, u"");
    EXPECT_EQ(cmd.taskObject, instance);
    EXPECT_EQ(cmd.parentWindow, static_cast<std::int32_t>(window.winId()));
    EXPECT_NE(written(instance).find(u"bracket.zenprt</path>"), Text::npos);
}

TEST_F(Launch, HandsItsPageToTheHostAndKeepsTheAnswerOnTheRun)
{
    auto variables = settled();
    variables[u"SourceRefs"] = 6;
    openTask(TaskKind::Conversion, variables);
    selection = {addSelected("bracket.zenprt")};
    const auto instance = launchInstance();
    ASSERT_EQ(send(TaskCmdLaunch, instance), S_OK);
    EXPECT_EQ(cmd.text, u"Conversion Settings");
    EXPECT_EQ(cmd.taskObject, addIn);
    QWidget* page = QWidget::find(static_cast<WId>(cmd.parentWindow));
    ASSERT_NE(page, nullptr);
    page->show();
    find<QAbstractButton>(*page, "referencedVersion")->click();

    ASSERT_EQ(send(TaskCmdLaunchButton, instance, u"OK"), S_OK);
    EXPECT_EQ(instance->ownVariables().at(u"SourceRefs").toInt32() & 3, 1);
    EXPECT_EQ(stored().at(u"SourceRefs"), Value(6));
}

TEST_F(Launch, AsksForTheThemesOfTheKindsThatAreSelected)
{
    constexpr int open = 9;
    constexpr int fixed = 6;
    const struct {
        std::vector<std::string> files;
        int assemblyChecks, partChecks;
        const char* tabs; ///< empty for a launch without a question
    } cases[] = {
        {{"a/bracket.v2.zenprt"}, fixed, open, "Part"},
        {{"b/bracket.zenprt"}, open, fixed, ""},
        {{"c/pump.ZENASM"}, open, fixed, "Assembly"},
        {{"d/pump.zenasm"}, fixed, open, ""},
        {{"e/pump.zenasm", "e/bracket.zenprt"}, open, open, "Assembly Part"},
        {{"f/bracket.zenprt"}, open, open, "Part"},
        {{"g/pump.zendrw", "g/pump.step"}, open, fixed, ""},
    };
    auto variables = settled();
    variables[u"FileFormat"] = u"3D PDF - MBD (*.pdf)";
    openTask(TaskKind::Conversion, variables);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.files.front());
        selection.clear();
        for (const std::string& file : c.files)
            selection.push_back(addSelected(file));
        task->SetValue(u"AsmThemeAndViewsChecks", c.assemblyChecks);
        task->SetValue(u"PartThemeAndViewsChecks", c.partChecks);
        reopenTask();

        const auto instance = launchInstance();
        ASSERT_EQ(send(TaskCmdLaunch, instance), S_OK);
        EXPECT_EQ(shownTabs(), c.tabs);

        ArkCmd unseen{TaskCmdLaunch, 0, vault, {}, launchInstance(), 0, false, {}};
        ASSERT_EQ(addIn->OnCmd(&unseen, &selection), S_OK);
        EXPECT_EQ(unseen.cancel, *c.tabs ? -1 : 0) << toUtf8(unseen.text);
    }
}

TEST_F(Launch, AsksForFilesWhenNothingIsSelected)
{
    openTask(TaskKind::General);
    const auto instance = launchInstance();
    Answers answers({[](QWidget& dialog) { dialog.close(); }});
    ASSERT_EQ(send(TaskCmdLaunch, instance), S_OK);
    EXPECT_EQ(answers.shown(), QStringList("Select Files and Folders for Nightly"));
    EXPECT_EQ(cmd.cancel, -1);
    EXPECT_EQ(written(instance), u"");
}

TEST_F(Launch, ShowsThePrintDialogUnlessTheTaskSaysOtherwise)
{
    selection = {addSelected("bracket.zenprt")};
    openTask(TaskKind::Printing);
    auto instance = launchInstance();
    {
        Answers answers({[](QWidget& dialog) { press(&dialog, Qt::Key_Escape); }});
        ASSERT_EQ(send(TaskCmdLaunch, instance), S_OK);
        EXPECT_EQ(answers.shown(), QStringList("Print"));
    }
    EXPECT_EQ(cmd.cancel, -1);
    EXPECT_TRUE(instance->ownVariables().empty());

    task->SetValue(u"__printer_showprintdlg", false);
    task->SetValue(u"__printer_prname", u"Plotter");
    reopenTask();
    instance = launchInstance();
    ASSERT_EQ(send(TaskCmdLaunch, instance), S_OK);
    EXPECT_EQ(cmd.cancel, 0);
    EXPECT_NE(written(instance).find(u"bracket.zenprt</path>"), Text::npos);
    EXPECT_EQ(instance->ownVariables().at(u"__printer_copycount"), Value(1));
}

/// The window of a run that was launched.
TEST_F(FlowFixture, DetailsTitleFollowsKindAndState)
{
    const struct {
        std::int32_t kind;
        TaskRunState state;
        const char16_t* title;
    } rows[] = {
        {1, TaskRunState::Running, u"Selected Files"},
        {1, TaskRunState::Finished, u"Converted Files"},
        {2, TaskRunState::FinishedWithErrors, u"Printed Files"},
        {2, TaskRunState::Suspended, u"Selected Files"},
        {3, TaskRunState::Cancelled, u"Selected Files"},
        {7, TaskRunState::Finished, u""},
        {7, TaskRunState::Queued, u"Selected Files"},
    };
    for (const auto& row : rows) {
        FakeHost host;
        host.taskVariables[u"__type"] = row.kind;
        host.states = {row.state};
        ASSERT_EQ(send(TaskCmdDetails, host.task()), S_OK) << row.kind;
        EXPECT_EQ(cmd.text, row.title) << row.kind;
        EXPECT_EQ(cmd.taskObject, addIn);
        EXPECT_TRUE(pages().isWindow(cmd.parentWindow));
    }
    EXPECT_EQ(send(TaskCmdDetails, nullptr), E_POINTER);
}

} // namespace zn::test
