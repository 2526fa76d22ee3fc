#pragma once

#include "contracts/host/ArkTask.h"
#include "platform/Clock.h"

namespace zn {

/// Raised when the user has cancelled the run. No failure: what came out so far is kept, and the run is closed.
struct RunStopped { };

/// Asks the host once how the run stands. A cancel request is raised as `RunStopped`, a failure of asking as
/// `StatusError`. A suspend request is acknowledged and blocks, asking again every five seconds, until the run is
/// resumed or cancelled.
void pollRunState(IArkTaskInstance& instance, Clock& clock);

} // namespace zn
