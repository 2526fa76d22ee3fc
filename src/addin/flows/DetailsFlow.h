#pragma once

#include "addin/flows/ZNTaskAddIn.h"

namespace zn {

/// Command 42: hands the host one page that lists the files of a run, with its title in `text`.
/// Failures are raised.
void showDetails(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, const ObjectRef& self);

} // namespace zn
