#pragma once

#include "addin/variables/OutputFormats.h"

namespace zn {

struct Platform;

/// The format of that label in English, or in any language of the installation, since a task may have come from one
/// that stores its own; compared without regard to case. Null if there is none.
const OutputFormat* findFormatInAnyLanguage(const Platform& platform, TextView label);

} // namespace zn
