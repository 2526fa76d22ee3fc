#pragma once

#include "arkin/tasks/RunStore.h"
#include "arkin/tasks/TaskHost.h"
#include "contracts/host/ArkAddIn.h"
#include "contracts/host/ArkTask.h"

namespace zn::arkin {

/// Why a run isn't queued although nothing has failed; a person who knows better may launch it anyway.
class CannotRun : public zn::StatusError {
public:
    using StatusError::StatusError;
};

/// Why a run can't give what it should, a sentence each with what to do: a version that a file doesn't have, what the
/// add-in foresees (printers, formats), and folders of outputs that can't be made or written by the user of this
/// process on this machine. Empty as far as anybody can tell before the run. `run` sees its settings. Only looks;
/// raises the database's failures.
std::vector<std::string> obstaclesOf(const TaskHost& host, const std::shared_ptr<zn::IArkAddIn5>& addIn,
    const std::shared_ptr<zn::IArkTaskInstance>& run, const zn::ArkSelection& selection);

/// Raises `CannotRun` with the first of them, if there are any.
void requireCanRun(const TaskHost& host, const std::shared_ptr<zn::IArkAddIn5>& addIn,
    const std::shared_ptr<zn::IArkTaskInstance>& run, const zn::ArkSelection& selection, const zn::Text& taskName);

} // namespace zn::arkin
