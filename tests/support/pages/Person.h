#pragma once

#include <functional>
#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>

/// What a person does with windows in a test.
namespace zn::test {

/// The control with that role below `window`, which fails the test's step (null) if there is none.
template <class Control> Control* find(QWidget& window, const char* role)
{
    auto* control = window.findChild<Control*>(QLatin1String(role));
    if (!control)
        throw std::runtime_error(std::string("No control has the role ") + role + ".");
    return control;
}

inline void click(QWidget* control) { QTest::mouseClick(control, Qt::LeftButton); }
/// Checks or unchecks by a click on the indicator.
inline void click(QAbstractButton* button) { button->click(); }
inline void type(QWidget* edit, const QString& text) { QTest::keyClicks(edit, text); }
inline void press(QWidget* control, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QTest::keyClick(control, key, modifiers);
}
/// Turns the wheel towards the user, with the pointer on the middle of the control, as the window system tells it: to
/// the native window there.
inline void turnWheel(const QWidget& control, int notches = 1)
{
    constexpr int notch = 120;
    const QWidget* native = control.internalWinId() != 0 ? &control : control.nativeParentWidget();
    const QPoint at = control.mapTo(native, control.rect().center());
    QWheelEvent event(
        at, native->mapToGlobal(at), {}, {0, -notch * notches}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(native->windowHandle(), &event);
}

/// Waits, while it lives, for the next modal window and lets `answer` deal with it; a second one gets the next answer.
/// A modal window that nobody expects is closed, so that a test fails instead of hanging.
class Answers {
public:
    using Answer = std::function<void(QWidget& modal)>;

    explicit Answers(std::vector<Answer> answers);
    /// Message boxes, answered by their buttons.
    explicit Answers(std::initializer_list<QMessageBox::StandardButton> buttons);
    /// Expects that every answer was asked for, and no more.
    ~Answers();

    /// The texts of the message boxes that came up, in order; for other windows their titles.
    const QStringList& shown() const { return m_shown; }
    /// Whether every answer was asked for, and no more.
    bool allUsed() const { return m_next == m_answers.size() && !m_unexpected; }

private:
    void look();

    QTimer m_timer;
    std::vector<Answer> m_answers;
    std::size_t m_next = 0;
    bool m_unexpected = false;
    QStringList m_shown;
    QPointer<QWidget> m_dealtWith;
};

} // namespace zn::test
