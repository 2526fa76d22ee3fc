#pragma once

#include "base/Text.h"

#include <cstdint>

class QComboBox;

namespace zn {

class PageEnvironment;

/// Fills an image combo box with the output formats; each row's data is the format's code. At a launch the row
/// "<Prompt the user>" is missing, so that positions and codes differ. The first row is selected.
void fillFormatList(QComboBox& list, PageEnvironment& environment, bool launch);

/// The code of the selected row.
std::int32_t selectedFormat(const QComboBox& list);

/// Selects the row of the format with that label in English, or in any language of the installation, since a task may
/// have come from one that stores its own; compared without regard to case. Without one the first row.
void selectFormat(QComboBox& list, PageEnvironment& environment, TextView label);

} // namespace zn
