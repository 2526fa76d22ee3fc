#pragma once

#include "tests/support/windows/Windows.h"

namespace zn::test {

using Prepare = std::function<void(QWidget& page)>;

/// Shows a page in a window of the size that it asks for, as the host's property dialog does.
void showPage(Desk& desk, TaskPage& page, const Look& look, const Prepare& prepare = {});

/// Runs what opens a modal dialog, looks at the dialog when it stands there, and cancels it.
void showModal(const Look& look, const std::function<void()>& run, const Prepare& prepare = {});

/// The cases by their subject.
std::vector<WindowCase> conversionWindows();
std::vector<WindowCase> optionWindows();
std::vector<WindowCase> printWindows();
std::vector<WindowCase> otherWindows();

} // namespace zn::test
