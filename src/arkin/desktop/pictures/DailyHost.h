#pragma once

#include "arkin/tasks/RunStore.h"
#include "arkin/tasks/TaskHost.h"

#include <filesystem>
#include <functional>
#include <optional>

namespace zn::arkin {

/// What the windows for daily work need of the host around them.
struct DailyHost {
    TaskHost tasks;                    ///< with its opened vault
    std::filesystem::path cacheFolder; ///< of the home, for what can be made again; may be missing
    /// Shows what the task's add-in leaves to the user, and puts the run into the queue; none if the user wants none.
    /// Raises what the add-in raises.
    std::function<std::optional<RunInfo>(const TaskDefinition& task, zn::ArkSelection selection)> launch;
    /// Shows the add-in's page about a run until it is closed.
    std::function<void(std::int32_t runId)> showDetails;
};

} // namespace zn::arkin
