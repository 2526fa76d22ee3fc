#pragma once

#include <functional>
#include <QWidget>

namespace zn {

/// Lets Tab reach the controls of a window that `comeFirst` before its other ones, both in the order that they had.
/// Controls that are put into a window later, such as pages, would come last.
void tabFirstTo(QWidget& window, const std::function<bool(const QWidget& control)>& comeFirst);

} // namespace zn
