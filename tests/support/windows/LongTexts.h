#pragma once

#include "tests/support/windows/Desk.h"

namespace zn::test {

/// Writes the string files of a language "XX" in which every text is 40 percent longer than the English one.
void writeLongTexts(const AskedTexts& english, const std::filesystem::path& stringFolder);

} // namespace zn::test
