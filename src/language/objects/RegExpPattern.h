#pragma once

#include "base/Text.h"

namespace zn::language {

/// A pattern of the dialect's `RegExp` in the words of ICU, which would take some of it otherwise: its classes `\d`,
/// `\w`, `\s` and the border `\b` know more than ASCII, its `$` also stands before a last line end, and inside brackets
/// it has sets of sets.
Text icuPattern(TextView pattern, bool multiLine);

} // namespace zn::language
