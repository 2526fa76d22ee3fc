#pragma once

#include <string>

namespace zn::arkin {

/// The text as a shell takes it for one word: in quotes where it needs some.
std::string shellWord(const std::string& text);

} // namespace zn::arkin
