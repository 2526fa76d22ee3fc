#pragma once

#include "contracts/host/ArkTask.h"
#include "contracts/host/ArkVault.h"

namespace zn {

class Registry;

/// What `IArkTaskTrial::PrepareTrial` says: changes the copied task and the copied registry. Places outside of the
/// vault keep their names below `folder`: "P:\Out\%Project%" becomes "FOLDER\P\Out\%Project%".
/// Raises `StatusError` with a sentence for a task that can't be tried.
void prepareTrial(Registry& registry, const std::shared_ptr<IArkVault>& vault,
    const std::shared_ptr<IArkTaskProperties>& task, const Text& path, const Text& folder);

} // namespace zn
