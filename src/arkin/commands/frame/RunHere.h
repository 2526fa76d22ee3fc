#pragma once

#include "arkin/commands/frame/Session.h"
#include "arkin/tasks/RunClaim.h"

namespace zn::arkin {

/// Carries a taken run out in this process, with a live progress line, and prints how it ended. Returns the exit code.
int runHere(Session& session, const RunClaim& claim);
/// Takes the run and carries it out here; if another worker has it by now, watches until it has ended there.
int runOrWatch(Session& session, std::int32_t runId);

} // namespace zn::arkin
