#pragma once

#include "arkin/commands/frame/Session.h"
#include "arkin/tasks/RunStore.h"

#include <optional>
#include <string>

namespace zn::arkin {

/// A text with the line ends of a terminal.
std::string withTerminalLineEnds(std::string text);
/// The log of a run as it stands in its file; none if there is none.
std::optional<std::string> logText(Session& session, const RunInfo& run);
/// Prints the log and, below it, the run's messages that it doesn't have. False if there is nothing of either.
bool printLog(Session& session, const RunInfo& run);

} // namespace zn::arkin
