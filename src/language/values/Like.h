#pragma once

#include "base/Text.h"

namespace zn::language {

/// The operator `Like`: "*" any run, "?" one character, "#" a digit, "[a-z,]" one of a list, "[!a]" none of it.
/// Raises 93 for a pattern with an open bracket or a range that runs backwards.
bool matchesPattern(TextView text, TextView pattern, bool ignoreCase);

} // namespace zn::language
