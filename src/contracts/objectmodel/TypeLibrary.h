#pragma once

#include "language/Program.h"

namespace zn::zentrel {

/// What macros may name without declaring it: the object model's classes, its constants and its global object, and
/// the constants of conditional compilation. For the checker of an editor as well as for running.
zn::language::CompileOptions macroCompileOptions();

} // namespace zn::zentrel
