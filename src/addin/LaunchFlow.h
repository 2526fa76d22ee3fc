#pragma once

#include "addin/ZNTaskAddIn.h"

namespace zn {

/// Command 44, on the user's machine: settles the selection and writes it to the run's `__selection_list`, by which
/// it travels to the worker. Sets `cancel` when there is nothing to launch. Without windows nothing can be asked:
/// an empty selection, or a conversion whose format is left to the user, cancels the launch with a sentence in `text`.
Status launchTask(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, ArkSelection& selection);

/// Command 45, OK of the launch page. Without pages there is nothing to save.
Status launchButton(TaskContext& context, ArkCmd& cmd);

} // namespace zn
