#pragma once

#include <QWidget>

#include <string>
#include <vector>

namespace zn::test {

/// What a person would see wrong in a shown window: a control that is too small for its text, that overlaps a
/// neighbour or that sticks out of its parent. One sentence each, naming the control.
std::vector<std::string> layoutFaults(const QWidget& window);

/// Controls that neither show a text nor tell a screen reader a name, those without an object name, and those that
/// share the key of another one.
std::vector<std::string> namingFaults(const QWidget& window);

} // namespace zn::test
