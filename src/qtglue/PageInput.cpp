#include "qtglue/PageInput.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>

namespace zn {

namespace {

/// Whether the control would take a turn of the wheel over it for a change of its value. Its list, when it is open, is
/// a window of its own.
bool changesByWheel(const QWidget& control)
{
    if (qobject_cast<const QAbstractSpinBox*>(&control))
        return !control.hasFocus();
    if (qobject_cast<const QAbstractSlider*>(&control))
        return !qobject_cast<const QScrollBar*>(&control);
    return qobject_cast<const QComboBox*>(&control) || qobject_cast<const QTabBar*>(&control);
}

/// 1 or -1 for the keys that turn pages, else 0.
int turnOf(const QKeyEvent& event)
{
    if (event.modifiers() != Qt::ControlModifier && event.modifiers() != (Qt::ControlModifier | Qt::KeypadModifier))
        return 0;
    return event.key() == Qt::Key_PageDown ? 1 : event.key() == Qt::Key_PageUp ? -1 : 0;
}

QTabWidget* tabsAround(QWidget* control)
{
    for (; control && !control->isWindow(); control = control->parentWidget()) {
        if (auto* tabs = qobject_cast<QTabWidget*>(control))
            return tabs;
    }
    return nullptr;
}

QTabWidget* tabsOf(const QWidget& window)
{
    if (QTabWidget* around = tabsAround(window.focusWidget()))
        return around;
    for (QTabWidget* tabs : window.findChildren<QTabWidget*>()) {
        if (tabs->isVisible())
            return tabs;
    }
    return nullptr;
}

void turnTabs(const QWidget& window, int step)
{
    QTabWidget* const tabs = tabsOf(window);
    if (!tabs || tabs->count() < 2)
        return;
    const int count = tabs->count();
    tabs->setCurrentIndex((tabs->currentIndex() + count + step) % count);
}

/// Sees events before the controls do. It listens to the application, since controls come and go, and lets everything
/// pass that is no business of its window.
class PageInput final : public QObject {
public:
    PageInput(QWidget& window, TurnPages turn)
        : QObject(&window)
        , m_window(window)
        , m_turn(std::move(turn))
    {
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        const QEvent::Type type = event->type();
        if (type != QEvent::Wheel && type != QEvent::KeyPress && type != QEvent::Polish)
            return false;
        auto* const widget = qobject_cast<QWidget*>(object);
        if (!widget || (widget != &m_window && !m_window.isAncestorOf(widget)))
            return false;
        if (type == QEvent::Wheel)
            return passesOn(*event, changesByWheel(*widget));
        if (type == QEvent::KeyPress)
            return takesKey(*widget, static_cast<QKeyEvent&>(*event));
        // The toolkit gives the focus before anybody is asked about the event.
        if (widget->focusPolicy() == Qt::WheelFocus)
            widget->setFocusPolicy(Qt::StrongFocus);
        return false;
    }

private:
    /// An event that nobody accepts goes to the control's parent.
    static bool passesOn(QEvent& event, bool passes)
    {
        if (passes)
            event.ignore();
        return passes;
    }

    bool takesKey(const QWidget& receiver, QKeyEvent& event)
    {
        const int step = turnOf(event);
        const bool isTurner = m_turn || m_window.isWindow();
        if (step == 0 || &receiver != &m_window || !isTurner)
            return passesOn(event, step != 0);
        event.accept();
        if (m_turn)
            m_turn(step);
        else
            turnTabs(m_window, step);
        return true;
    }

    QWidget& m_window;
    TurnPages m_turn;
};

} // namespace

void keepInputForPages(QWidget& window, TurnPages turn) { new PageInput(window, std::move(turn)); }

} // namespace zn
