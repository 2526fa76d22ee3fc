#pragma once

#include "tests/support/windows/Desk.h"

#include <functional>
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

namespace zn::test {

/// What is done with a window that stands there as a person would see it.
using Look = std::function<void(QWidget& window)>;

/// One state of a page or dialog of the product.
struct WindowCase {
    std::string name; ///< a file name: "MenuCommandDlg", "ConversionSettingsPageDlg-3dpdf"
    /// Opens the window, lets `look` at it and closes it.
    std::function<void(Desk& desk, const Look& look)> open;
};

/// How a failing test names the case.
inline void PrintTo(const WindowCase& window, std::ostream* out) { *out << window.name; }

const std::vector<WindowCase>& allWindows();
/// The letters and digits of the case's name, as the name of its test.
std::string testName(const ::testing::TestParamInfo<WindowCase>& window);

} // namespace zn::test
