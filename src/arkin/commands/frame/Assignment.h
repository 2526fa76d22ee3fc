#pragma once

#include "base/Text.h"

#include <string>
#include <utility>

namespace zn::arkin {

/// "NAME=VALUE" at its first "="; the value may be empty. Raises `StatusError` E_INVALIDARG with a sentence.
std::pair<zn::Text, zn::Text> splitAssignment(const std::string& text);

} // namespace zn::arkin
