#pragma once

#include "addin/flows/ZNTaskAddIn.h"

namespace zn {

/// Command 43, on the worker: runs the task on the selected files, whatever its kind, and reports to the host.
/// Blocks until the run has ended, also while it is suspended. Returns the code for the host; a run that was stopped,
/// or had nothing to do, sets `cancel` in `cmd`.
Status runTask(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, ArkSelection& selection);

} // namespace zn
