#pragma once

#include "arkin/tasks/TaskFile.h"

namespace zn::arkin {

/// What the task to be made is given beside its file.
struct TaskRequest {
    zn::Text name;
    zn::TaskKind kind = zn::TaskKind::General;
    TaskFile file;
    Variables settings;                    ///< they win over the file's variables
    zn::Text script;                       ///< the macro template
    std::optional<std::int32_t> fileLimit; ///< wins over the file's
    std::optional<bool> keepsIdentical;    ///< likewise
};

/// The definition with which the pages of the new task are opened: kind, script, and what the request gives.
TaskDefinition startTask(const TaskRequest& request);

/// After the pages have written all their variables: what the request gives wins over them. Variables that follow from
/// others are left to the add-in (`VariableRules`).
void settleTask(TaskDefinition& task, const TaskRequest& request);

} // namespace zn::arkin
