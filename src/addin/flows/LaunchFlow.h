#pragma once

#include "addin/flows/ZNTaskAddIn.h"

namespace zn {

/// Command 44, on the user's machine: settles the selection, asks what the task leaves open, and writes the selection
/// to the run's `__selection_list`, by which it travels to the worker. Sets `cancel` when there is nothing to launch.
/// A conversion that leaves something open hands its page to the host. Where nobody can be asked (`parentWindow` 0),
/// a launch that would have to is cancelled with a sentence in `text`. Failures are raised.
void launchTask(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, ArkSelection& selection,
    const ObjectRef& self);

/// What command 44 does last, for a run whose settings stand already: writes `__selection_list`. Failures are raised.
void settleSelection(TaskContext& context, const std::shared_ptr<IArkVault>& vault,
    const std::shared_ptr<IArkTaskInstance>& instance, const ArkSelection& selection);

/// Command 45, OK of the launch page: what the user changed goes to the run and not to the task. 1 when the page
/// refused its values; failures are raised.
Status launchButton(TaskContext& context, ArkCmd& cmd);

} // namespace zn
