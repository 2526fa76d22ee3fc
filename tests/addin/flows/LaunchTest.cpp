#include "tests/addin/flows/FlowFixture.h"

#include <QAbstractItemView>
#include <QDialog>

namespace zn::test {

namespace {

/// A conversion that an administrator has settled.
arkin::Variables settled()
{
    return {{u"FileFormat", u"STEP (*.step)"}, {u"PromptOutput", false}, {u"SourceRefs", 2}, {u"OutputConfs", 2},
        {u"OutputSheets", 2}, {u"FileConfs", 4}, {u"FileSheets", 4}};
}

class Launch : public FlowFixture {
protected:
    Text written(const std::shared_ptr<arkin::LaunchInstance>& instance)
    {
        const auto& own = instance->ownVariables();
        const auto found = own.find(u"__selection_list");
        return found == own.end() ? Text() : found->second.toText();
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

} // namespace zn::test
