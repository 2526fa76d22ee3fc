#pragma once

#include "commandline/Description.h"

namespace zn::commandline {

/// The program's manual page, of section 1, in the language of `man`.
std::string manualPage(const CommandDescription& program);

} // namespace zn::commandline
