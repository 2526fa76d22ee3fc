#pragma once

#include "arkin/tasks/TaskFile.h"

namespace arkin {

/// What the task to be made is given beside its file.
struct TaskRequest {
    zn::Text name;
    zn::TaskKind kind = zn::TaskKind::General;
    TaskFile file;
    Variables settings; ///< they win over the file's variables
    zn::Text script;    ///< the macro template
};

/// The definition with which the pages of the new task are opened: kind, script, and what the request gives. Raises
/// `StatusError` E_INVALIDARG with a sentence for an output format that isn't in the list.
TaskDefinition startTask(const TaskRequest& request);

/// After the pages have written all their variables: what the request gives wins over them. Variables that follow from
/// others are computed (`UsedVariables`, `SheetMetalOptions`). `vaultVariables` are the names of the vault's card
/// variables, in the vault's order.
void settleTask(TaskDefinition& task, const TaskRequest& request, const std::vector<zn::Text>& vaultVariables);

/// Computes the variables that follow from others anew, after some were changed.
void deriveVariables(Variables& variables, zn::TaskKind kind, const std::vector<zn::Text>& vaultVariables);
/// Raises like `startTask` for a format that isn't in the list. A conversion without one is no fault.
void requireFormat(const Variables& variables, zn::TaskKind kind);

} // namespace arkin
