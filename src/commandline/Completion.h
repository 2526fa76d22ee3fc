#pragma once

#include "commandline/Description.h"

namespace zn::commandline {

/// Scripts with which shells complete the program's commands, options and their values; where those can't be told,
/// file names.
std::string bashCompletion(const CommandDescription& program);
std::string zshCompletion(const CommandDescription& program);
std::string fishCompletion(const CommandDescription& program);

} // namespace zn::commandline
