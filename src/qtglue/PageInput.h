#pragma once

#include <functional>

class QWidget;

namespace zn {

/// Turns pages by `step`, which is 1 or -1. What it raises has to be caught in it.
using TurnPages = std::function<void(int step)>;

/// Lets the window, and all that is in it now or later, keep two gestures from the controls that would take them for a
/// change of their value:
///
/// - Ctrl+Page Up and Ctrl+Page Down turn pages wherever the focus is, by `turn`. A dialog without one turns the tabs
///   around the focus, else its first ones; a page hands the keys to the window in which it stands.
/// - The wheel scrolls. It changes no combo box, no tab and no slider, a number only where the focus is, and it moves
///   no focus. Lists and edits that have more than they show scroll themselves.
///
/// To be called in the window's constructor.
void keepInputForPages(QWidget& window, TurnPages turn = {});

} // namespace zn
