#pragma once

#include <cstdint>

class QString;
class QWidget;

/// Windows as the contracts know them, and how they speak.
namespace zn {

/// The widget behind a window handle of this process; null for none.
QWidget* windowOf(std::int32_t handle);
/// The handle of a widget's window.
std::int32_t handleOf(const QWidget& widget);

/// Shows a sentence over the window until the user closes it.
void showSentence(QWidget* parent, const QString& title, const QString& sentence);

/// Runs the work of a slot or an event handler. No exception may pass through the toolkit: what the work raises ends in
/// `tellFailure`, which is called while the exception is handled.
template <class Work, class Tell> void guarded(Work&& work, Tell&& tellFailure) noexcept
{
    try {
        work();
    } catch (...) {
        tellFailure();
    }
}

} // namespace zn
