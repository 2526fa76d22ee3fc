#include "arkin/desktop/PropertyDialog.h"

#include "tests/arkin/desktop/DesktopFixture.h"

#include <algorithm>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>

namespace zn::arkin::test {

using zn::Value;

namespace {

/// The open dialog of one administrator.
class Opened {
public:
    Opened(const TaskHost& host, const TaskDefinition& task)
        : setup(host, task)
        , dialog(setup)
    {
        dialog.show();
        QApplication::setActiveWindow(&dialog);
    }

    QLineEdit& edit(const char* name) { return *find<QLineEdit>(dialog, name); }
    int page() { return find<QListWidget>(dialog, "pageTitles")->currentRow(); }
    void turnTo(int row)
    {
        auto* const list = find<QListWidget>(dialog, "pageTitles");
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
        QApplication::processEvents();
    }
    void press(QDialogButtonBox::StandardButton button)
    {
        zn::test::click(static_cast<QWidget*>(find<QDialogButtonBox>(dialog, "buttons")->button(button)));
    }
    void pressOk() { press(QDialogButtonBox::Ok); }

    TaskSetup setup;
    PropertyDialog dialog;
};

} // namespace

class PropertyDialogTest : public DesktopFixture { };

TEST_F(PropertyDialogTest, OkStoresAtOnceWhatCancelForgets)
{
    const auto task = define({{u"First", Value(u"one")}, {u"Kept", Value(7)}});
    {
        Opened given(host, task);
        EXPECT_EQ(given.edit("editFirst").text(), "one");
        zn::test::type(&given.edit("editFirst"), "x");
        given.press(QDialogButtonBox::Cancel);
        EXPECT_EQ(given.dialog.result(), QDialog::Rejected);
    }
    EXPECT_EQ(stored().variables, task.variables);
    Opened accepted(host, task);
    zn::test::type(&accepted.edit("editFirst"), " more");
    accepted.turnTo(1);
    zn::test::type(&accepted.edit("editSecond"), "two");
    EXPECT_EQ(stored().variables, task.variables); // what an option dialog writes waits for OK, too
    QTest::keyClick(&accepted.dialog, Qt::Key_Return);
    EXPECT_EQ(accepted.dialog.result(), QDialog::Accepted);
    const auto now = stored();
    EXPECT_EQ(now.variables,
        (Variables{{u"First", Value(u"one more")}, {u"Kept", Value(7)}, {u"Option", Value(u"one more")},
            {u"Second", Value(u"two")}}));
    EXPECT_EQ(now.menu, (std::vector<MenuEntry>{{3, u"Entry", u"Words"}}));
    EXPECT_EQ(now.revision, 1);
    EXPECT_EQ(now.changedBy, u"anna");
}

TEST_F(PropertyDialogTest, ARefusingPageComesToTheFrontWithItsFocus)
{
    Opened opened(host, define({{u"First", Value(u"bad")}}));
    opened.turnTo(1);
    EXPECT_EQ(opened.page(), 1);
    opened.pressOk();
    EXPECT_TRUE(opened.dialog.isVisible());
    EXPECT_EQ(opened.page(), 0);
    EXPECT_EQ(opened.dialog.focusWidget(), &opened.edit("editFirst"));
    EXPECT_EQ(stored().revision, 0);
}

TEST_F(PropertyDialogTest, APageMayStayInFront)
{
    Opened opened(host, define({{u"First", Value(u"stay")}}));
    opened.turnTo(1);
    EXPECT_EQ(opened.page(), 0);
    QTest::keyClick(&opened.dialog, Qt::Key_PageDown, Qt::ControlModifier);
    QApplication::processEvents();
    EXPECT_EQ(opened.page(), 0);
    opened.pressOk();
    EXPECT_TRUE(opened.dialog.isVisible());
    opened.edit("editFirst").setText("go");
    QTest::keyClick(&opened.dialog, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(opened.page(), 1);
}

TEST_F(PropertyDialogTest, AFailureLeavesTheTaskAsItWasAndTheDialogOpen)
{
    const struct {
        const char16_t* plan;
        const char* sentence;
    } rows[] = {
        {u"fail", "The task 'Nightly' isn't changed: It went wrong."},
        {u"object", "The variable 'Wrong' couldn't be written: "},
    };
    for (const auto& row : rows) {
        const auto task = define({{u"Plan", Value(row.plan)}});
        Opened opened(host, task);
        zn::test::type(&opened.edit("editFirst"), "typed");
        Answers answers{QMessageBox::Ok};
        opened.pressOk();
        EXPECT_THAT(answers.shown().join("").toStdString(), ::testing::HasSubstr(row.sentence));
        EXPECT_TRUE(opened.dialog.isVisible());
        EXPECT_EQ(opened.edit("editFirst").text(), "typed");
        EXPECT_EQ(stored().variables, task.variables);
        tasks.remove(task.id);
    }
}

TEST_F(PropertyDialogTest, TheSecondOfTwoAdministratorsIsAsked)
{
    const auto task = define();
    Opened second(host, task);
    zn::test::type(&second.edit("editFirst"), "second");
    {
        Opened first(host, task);
        zn::test::type(&first.edit("editFirst"), "first");
        first.pressOk();
    }
    EXPECT_EQ(stored().variables.at(u"First"), Value(u"first"));
    {
        Answers answers{QMessageBox::Cancel};
        second.pressOk();
        EXPECT_THAT(answers.shown().front().toStdString(), ::testing::StartsWith("anna has changed this task on "));
    }
    EXPECT_TRUE(second.dialog.isVisible());
    EXPECT_EQ(stored().variables.at(u"First"), Value(u"first"));
    Answers answers({[](QWidget& box) {
        for (auto* button : static_cast<QMessageBox&>(box).buttons())
            if (button->text() == "&Replace")
                button->click();
    }});
    second.pressOk();
    EXPECT_EQ(second.dialog.result(), QDialog::Accepted);
    EXPECT_EQ(stored().variables.at(u"First"), Value(u"second"));
    EXPECT_EQ(stored().revision, 2);
}

TEST_F(PropertyDialogTest, ATaskThatWasDeletedMeanwhileIsSaidSo)
{
    const auto task = define();
    Opened opened(host, task);
    tasks.remove(task.id);
    Answers answers{QMessageBox::Ok};
    opened.pressOk();
    EXPECT_EQ(answers.shown(), QStringList("The task was deleted in the meantime."));
    EXPECT_TRUE(opened.dialog.isVisible());
}

TEST_F(PropertyDialogTest, TheHostsOwnSettingsAreStoredWithThePages)
{
    {
        Opened opened(host, define());
        opened.turnTo(2);
        EXPECT_EQ(opened.edit("whenFailed").text(), "");
        EXPECT_FALSE(find<QSpinBox>(opened.dialog, "limitNumber")->isEnabled());
        zn::test::click(find<QCheckBox>(opened.dialog, "isLimited"));
        find<QComboBox>(opened.dialog, "limitUnit")->setCurrentText("hours");
        find<QSpinBox>(opened.dialog, "limitNumber")->setValue(100'000);
        EXPECT_EQ(find<QSpinBox>(opened.dialog, "limitNumber")->value(), 720);
        find<QSpinBox>(opened.dialog, "limitNumber")->setValue(2);
        zn::test::type(&opened.edit("whenFailed"), "mail:anna");
        zn::test::type(&opened.edit("whenEnded"), "tell anna");
        opened.turnTo(0);
        zn::test::type(&opened.edit("editFirst"), "one");
        Answers answers{QMessageBox::Ok};
        opened.pressOk();
        EXPECT_THAT(
            answers.shown().front().toStdString(), ::testing::StartsWith("The command 'tell anna' doesn't begin"));
        EXPECT_EQ(opened.page(), 2);
        EXPECT_EQ(opened.dialog.focusWidget(), &opened.edit("whenEnded"));
        EXPECT_EQ(stored().revision, 0);
        opened.edit("whenEnded").setText(" /bin/tell anna ");
        opened.pressOk();
        EXPECT_EQ(opened.dialog.result(), QDialog::Accepted);
    }
    EXPECT_EQ(stored().host.fileLimit, 7200);
    EXPECT_EQ(stored().host.notices, (Notices{"mail:anna", "/bin/tell anna"}));
    EXPECT_EQ(stored().variables.at(u"First"), Value(u"one"));
    Opened again(host, stored());
    again.turnTo(2);
    EXPECT_EQ(
        find<QSpinBox>(again.dialog, "limitNumber")->text() + find<QComboBox>(again.dialog, "limitUnit")->currentText(),
        "2hours");
    zn::test::click(find<QCheckBox>(again.dialog, "isLimited"));
    again.edit("whenFailed").clear();
    again.pressOk();
    EXPECT_EQ(stored().host.fileLimit, 0);
    EXPECT_EQ(stored().host.notices, (Notices{"", "/bin/tell anna"}));
}

TEST_F(PropertyDialogTest, TheDialogGrowsAndShrinksWithItsPages)
{
    Opened opened(host, define());
    QApplication::processEvents();
    const auto before = opened.dialog.size();
    // The host's page is the taller one at first.
    const int spare = find<QWidget>(opened.dialog, "hostPage")->sizeHint().height()
        - opened.edit("editFirst").parentWidget()->parentWidget()->sizeHint().height();
    zn::test::click(find<QCheckBox>(opened.dialog, "moreFirst"));
    const int most = opened.dialog.screen()->availableGeometry().height() - 64;
    const int wanted = std::min(before.height() + 300 + 6 - std::max(spare, 0), most);
    EXPECT_TRUE(QTest::qWaitFor([&] { return opened.dialog.height() == wanted; })) << opened.dialog.height();
    zn::test::click(find<QCheckBox>(opened.dialog, "moreFirst"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return opened.dialog.size() == before; })) << opened.dialog.height();
}

} // namespace zn::arkin::test
