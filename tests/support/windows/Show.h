#pragma once

#include "tests/support/windows/Windows.h"

namespace zn::test {

using Prepare = std::function<void(QWidget& page)>;

/// Shows a page in a window of the size that it asks for, as the host's property dialog does.
void showPage(Desk& desk, TaskPage& page, const Look& look, const Prepare& prepare = {});

/// Runs what opens a modal dialog, looks at the dialog when it stands there, and cancels it.
void showModal(const Look& look, const std::function<void()>& run, const Prepare& prepare = {});

/// A page as it is made, on a new task of that kind with these variables.
using MakePage = std::function<std::unique_ptr<TaskPage>(Pages&, const PageSetting&)>;
WindowCase pageCase(const std::string& name, TaskKind kind, const MakePage& make,
    const zn::arkin::Variables& variables = {}, const Prepare& prepare = {});
/// The cases by their subject.
std::vector<WindowCase> conversionWindows();
std::vector<WindowCase> optionWindows();
std::vector<WindowCase> printWindows();
std::vector<WindowCase> otherWindows();

} // namespace zn::test
