#include "tests/support/pages/PageFixture.h"

#include <QCheckBox>
#include <QLineEdit>

namespace zn::test {

namespace {

class MenuCommand : public PageFixture {
protected:
    /// What the first page of the task shows: the box, both texts, whether they can be edited.
    std::string shownFor(TaskKind kind)
    {
        const auto page = pages().makeMenuCommandPage(setting(kind));
        page->load(task);
        const MenuChoice choice = page->choice();
        const bool editable = find<QLineEdit>(window, "menuTitle")->isEnabled();
        return std::string(choice.show ? "on " : "off ") + toUtf8(choice.title) + "|" + toUtf8(choice.description)
            + (editable ? "|open" : "|greyed");
    }
};

} // namespace

TEST_F(MenuCommand, ShowsTheKindsTextsUnlessTheTaskHasAnEntry)
{
    openTask(TaskKind::General);
    EXPECT_EQ(
        shownFor(TaskKind::Conversion), "on Convert Files|Converts ZENTREL files from one format to another|open");
    EXPECT_EQ(shownFor(TaskKind::Printing), "on Print Files|Prints selected documents with ZENTREL|open");
    EXPECT_EQ(shownFor(TaskKind::General), "off Execute Script|Executes script on selected documents|greyed");

    // A boolean that another program stored as a number, and a menu entry with one text.
    ASSERT_EQ(task->SetValue(u"__menucmd_display", 5), S_OK);
    ASSERT_EQ(task->SetMenuCmds({{1, u"STEP for purchasing", 0x4001, u""}}), S_OK);
    reopenTask();
    EXPECT_EQ(shownFor(TaskKind::General), "on STEP for purchasing||open");
}

TEST_F(MenuCommand, RefusesABlankTitleWhileTheCommandIsShown)
{
    openTask(TaskKind::Conversion);
    const auto page = pages().makeMenuCommandPage(setting(TaskKind::Conversion));
    page->load(task);
    auto* title = find<QLineEdit>(window, "menuTitle");
    title->selectAll();
    type(title, "   ");
    Answers answers({QMessageBox::Ok});
    EXPECT_FALSE(page->save(task));
    EXPECT_EQ(answers.shown(), QStringList("Please enter menu command."));
    EXPECT_EQ(window.focusWidget(), title);
    EXPECT_FALSE(stored().contains(u"__menucmd_display"));

    click(find<QCheckBox>(window, "showCommand"));
    EXPECT_TRUE(page->save(task));
    EXPECT_EQ(stored().at(u"__menucmd_display"), Value(false));
}

TEST_F(MenuCommand, TakesNoMoreThanTheHostKeeps)
{
    openTask(TaskKind::Printing);
    const auto page = pages().makeMenuCommandPage(setting(TaskKind::Printing));
    page->load(task);
    for (const auto& [role, limit] : {std::pair("menuTitle", 255), std::pair("menuDescription", 1020)}) {
        auto* edit = find<QLineEdit>(window, role);
        edit->selectAll();
        edit->insert(QString(limit + 50, u'x'));
        EXPECT_EQ(edit->text().size(), limit) << role;
    }
    EXPECT_EQ(page->choice().description.size(), 1020u);
}

TEST_F(MenuCommand, SaysThatItsWindowHasGone)
{
    openTask(TaskKind::General);
    auto holder = std::make_unique<QWidget>();
    PageSetting below = setting(TaskKind::General);
    below.parentWindow = static_cast<std::int32_t>(holder->winId());
    const auto page = pages().makeMenuCommandPage(below);
    EXPECT_TRUE(pages().isWindow(page->window()));
    holder.reset();
    EXPECT_EQ(page->window(), 0);
    EXPECT_THROW(page->load(task), StatusError);
}

} // namespace zn::test
