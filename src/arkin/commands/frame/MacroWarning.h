#pragma once

#include "commandline/Json.h"
#include "contracts/host/ArkMacroCheck.h"

#include <string>

namespace zn::arkin {

/// A warning about a macro template for a person: "3:7: The task has no …", below it the line, and a mark below the
/// place.
std::string shownWarning(const zn::ArkMacroWarning& warning, zn::TextView source);
/// Line, column, message and the line as "source".
commandline::Json toJson(const zn::ArkMacroWarning& warning, zn::TextView source);

} // namespace zn::arkin
