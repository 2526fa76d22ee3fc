#pragma once

#include "addin/flows/ZNTaskAddIn.h"

namespace zn {

/// What can be told of a run before it begins: a printer that this machine doesn't have, a format that the CAD
/// application, by its registration, saves none of the files as, and the names of its outputs. Of a script that
/// somebody wrote nobody knows what it saves. Failures of the host are raised.
ArkForesight foreseeRun(TaskContext& context, const std::shared_ptr<IArkVault>& vault,
    const std::shared_ptr<IArkTaskInstance>& instance, const ArkSelection& selection);

} // namespace zn
