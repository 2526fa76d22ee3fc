#pragma once

#include "addin/flows/ZNTaskAddIn.h"

namespace zn {

/// Command 43, on the worker: runs the task on the selected files, whatever its kind, and reports to the host.
/// Blocks until the run has ended, also while it is suspended. Returns 0, or 1 for a run that was stopped or had
/// nothing to do, which sets `cancel` in `cmd`. A failure of the run, or else of its report, is raised.
Status runTask(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, ArkSelection& selection);

} // namespace zn
