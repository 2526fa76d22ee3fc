#pragma once

#include "addin/flows/ZNTaskAddIn.h"

namespace zn {

/// After the CAD session has stopped: adds what came out to the vault, writes the lists back and commits the log.
/// Returns `result`, or the first failure of these steps if `result` is none.
Status closeRun(TaskContext& context, const std::shared_ptr<IArkVault>& vault,
    const std::shared_ptr<IArkTaskInstance>& instance, Status result, std::int32_t total, const SelectionRecords& items,
    const Text& logPath);

/// Tells the host the run's final state, its text and the documents that it touched. `code` is the run's result.
/// Returns 1 if the run was cancelled, whose state the host finishes itself; a failure of telling; else `code`.
Status reportRun(TaskContext& context, IArkTaskInstance& instance, Status code, const SelectionRecords& items);

} // namespace zn
