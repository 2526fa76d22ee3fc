#pragma once

#include "language/Reason.h"
#include "zentrel/application/ScriptObject.h"

namespace zn::zentrel {

class Application;

struct MacroOutcome {
    bool success = false;
    zn::language::Reason reason = zn::language::Reason::None;
};

/// Runs a procedure of a macro file in this process. The file is read in the narrow code page and makes up one
/// module, which bears the name "ZNMacro1". A fault is reported with file, line, column and the line's text.
MacroOutcome runMacro(Application& application, const Text& file, const Text& module, const Text& procedure);

/// A fault as a person reads it: "macro.znb:12:5: Type mismatch." and below it the source line with a mark.
std::string faultText(const std::string& file, int line, int column, const Text& message, const Text& sourceLine);

} // namespace zn::zentrel
