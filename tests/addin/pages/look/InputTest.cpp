// In every window: what turns pages, or scrolls them, changes no value.

#include "tests/support/pages/Person.h"
#include "tests/support/windows/Windows.h"

#include <gtest/gtest.h>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTabBar>
#include <set>

namespace zn::test {
namespace {

class InputTest : public ::testing::TestWithParam<WindowCase> { };

std::string valueOf(const QWidget& control)
{
    if (const auto* combo = qobject_cast<const QComboBox*>(&control))
        return combo->currentText().toStdString();
    if (const auto* edit = qobject_cast<const QLineEdit*>(&control))
        return edit->text().toStdString();
    if (const auto* view = qobject_cast<const QAbstractItemView*>(&control))
        return std::to_string(view->currentIndex().row());
    return {};
}

std::string nameOf(const QWidget& control)
{
    return std::string(control.metaObject()->className()) + " " + control.objectName().toStdString();
}

/// The controls that a person sees.
std::vector<QWidget*> controlsOf(QWidget& window)
{
    std::vector<QWidget*> controls;
    for (QWidget* control : window.findChildren<QWidget*>()) {
        if (control->isVisible() && control->isEnabled() && control->window() == window.window())
            controls.push_back(control);
    }
    return controls;
}

/// "class role: value" of every control, those of hidden tabs included; turning a tab changes their order.
std::multiset<std::string> valuesOf(QWidget& window)
{
    std::multiset<std::string> values;
    for (const QWidget* control : window.findChildren<QWidget*>())
        values.insert(nameOf(*control) + ": " + valueOf(*control));
    return values;
}

int tabOf(const QWidget& control)
{
    const auto* tabs = qobject_cast<const QTabBar*>(&control);
    return tabs ? tabs->currentIndex() : 0;
}

TEST_P(InputTest, KeysThatTurnPagesChangeNoValue)
{
    Desk desk;
    GetParam().open(desk, [](QWidget& window) {
        QApplication::setActiveWindow(window.window());
        for (QWidget* control : controlsOf(window)) {
            if (!(control->focusPolicy() & Qt::TabFocus) || !control->isVisible())
                continue;
            control->setFocus();
            const auto before = valuesOf(window);
            for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_PageUp}) {
                QTest::keyClick(control, key, Qt::ControlModifier);
                EXPECT_EQ(valuesOf(window), before) << nameOf(*control);
            }
        }
    });
}

TEST_P(InputTest, TheWheelChangesNoControlWithoutTheFocus)
{
    Desk desk;
    GetParam().open(desk, [](QWidget& window) {
        QApplication::setActiveWindow(window.window());
        for (QWidget* control : controlsOf(window)) {
            const bool isNumber = qobject_cast<QAbstractSpinBox*>(control);
            if (!isNumber && !qobject_cast<QComboBox*>(control) && !qobject_cast<QTabBar*>(control))
                continue;
            // A combo box doesn't follow the wheel where it has the focus, either.
            isNumber ? window.setFocus() : control->setFocus();
            const QWidget* focus = QApplication::focusWidget();
            const auto before = valuesOf(window);
            const int tab = tabOf(*control);
            for (const int notches : {1, -1, -1}) {
                turnWheel(*control, notches);
                EXPECT_EQ(valuesOf(window), before) << nameOf(*control);
                EXPECT_EQ(tabOf(*control), tab) << nameOf(*control);
                EXPECT_EQ(QApplication::focusWidget(), focus) << nameOf(*control);
            }
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Windows, InputTest, ::testing::ValuesIn(allWindows()), testName);

} // namespace
} // namespace zn::test
