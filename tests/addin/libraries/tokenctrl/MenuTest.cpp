#include "tests/addin/libraries/tokenctrl/BoxWindow.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QMenu>

namespace tokenctrl::test {

namespace {

QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

/// Labels of a menu, "&&" for "&", with ">" behind those that open a further one.
std::vector<QString> labels(const QMenu& menu)
{
    std::vector<QString> found;
    for (const QAction* action : menu.actions())
        found.push_back(action->text() + (action->menu() ? ">" : ""));
    return found;
}

QMenu* opened(QMenu& menu, int index)
{
    QMenu* sub = menu.actions().at(index)->menu();
    Q_EMIT sub->aboutToShow();
    return sub;
}

} // namespace

TEST(TokenMenu, HasTheLevelsOfTheMenuPathsInTheirOrder)
{
    BoxWindow window;
    window.box->mvAddPattern(u"%hidden%", true, u"hidden", nullptr, nullptr);
    ASSERT_TRUE(window.box->mbShowMenu(window.menuButton, nullptr));
    QMenu* menu = openMenu();
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(menu->pos(), window.menuButton->mapToGlobal(QPoint(0, window.menuButton->height())));
    EXPECT_EQ(labels(*menu), (std::vector<QString>{"Source Folder Path", "Source File Name", "Variables>"}));
    QMenu* variables = opened(*menu, 2);
    EXPECT_EQ(labels(*variables), (std::vector<QString>{"Num - Num>", "A&&B"}));
    EXPECT_EQ(labels(*opened(*variables, 0)), (std::vector<QString>{"Number"}));
    menu->close();
}

TEST(TokenMenu, InsertsAtTheCaretInPlaceOfTheSelection)
{
    BoxWindow window;
    window.box->mvSetText(u"abc");
    window.key(Qt::Key_Left);
    window.key(Qt::Key_Left, Qt::ShiftModifier);
    window.menuButton->setFocus();
    window.box->mbShowMenu(window.menuButton, nullptr);
    QTest::keyClick(openMenu(), Qt::Key_Down);
    QTest::keyClick(openMenu(), Qt::Key_Down);
    QTest::keyClick(openMenu(), Qt::Key_Return);
    EXPECT_EQ(window.text(), "a<Filename>c");
    EXPECT_EQ(window.shown(), "a#|c");
    EXPECT_EQ(window.focusWidget(), window.edit);
    window.key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(window.text(), "abc");
}

TEST(TokenMenu, OpensFromTheKeyboard)
{
    BoxWindow window;
    window.key(Qt::Key_Down, Qt::AltModifier);
    ASSERT_NE(openMenu(), nullptr);
    QTest::keyClick(openMenu(), Qt::Key_Up);    // "Variables"
    QTest::keyClick(openMenu(), Qt::Key_Right); // its first entry, a level
    QTest::keyClick(openMenu(), Qt::Key_Right); // "Number"
    QTest::keyClick(openMenu(), Qt::Key_Return);
    EXPECT_EQ(window.text(), "%Number%");
}

TEST(TokenMenu, ThousandsOfVariablesStayReadable)
{
    BoxWindow window;
    for (int i = 0; i < 5000; ++i) {
        const std::u16string name = QString("Value_%1").arg(i, 4, 10, QLatin1Char('0')).toStdU16String();
        window.box->mvAddPattern(
            (u"%" + name + u"%").c_str(), true, name.c_str(), name.c_str(), (u"Variables\\Val - Val\\" + name).c_str());
    }
    window.box->mbShowMenu(window.menuButton, nullptr);
    QMenu* group = opened(*opened(*openMenu(), 2), 2);
    EXPECT_EQ(labels(*group),
        (std::vector<QString>{"Value_0000 - Value_1023>", "Value_1024 - Value_2047>", "Value_2048 - Value_3071>",
            "Value_3072 - Value_4095>", "Value_4096 - Value_4999>"}));
    QMenu* last = opened(*opened(*group, 4), 28);
    EXPECT_EQ(last->actions().size(), 8);
    last->actions().back()->trigger();
    openMenu()->close();
    EXPECT_EQ(window.text(), "%Value_4999%");

    window.type("<Path>\\%Value_0001%_%Value_1234%_%Unknown%_<Filename>_100%");
    EXPECT_EQ(window.shown(), "##\\#_#_%Unknown%_#_100%|");
}

} // namespace tokenctrl::test
