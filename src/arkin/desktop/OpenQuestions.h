#pragma once

#include <string>

class QWidget;

namespace zn::arkin {

/// What a page that nobody sees would ask: the titles of its groups that are open to the user, else the labels of its
/// controls, separated by commas. Empty for no page.
std::string openQuestions(QWidget* page);

} // namespace zn::arkin
