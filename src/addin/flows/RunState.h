#pragma once

#include "contracts/host/ArkTask.h"
#include "platform/Clock.h"

namespace zn {

/// Asks the host once how the run stands. A cancel request is raised as the status 1. A suspend request is
/// acknowledged and blocks, asking again every five seconds, until the run is resumed or cancelled.
void pollRunState(IArkTaskInstance& instance, Clock& clock);

} // namespace zn
