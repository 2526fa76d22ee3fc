#pragma once

#include "arkin/tasks/TaskFile.h"

namespace arkin {

/// What the task to be made is given beside its file.
struct TaskRequest {
    zn::Text name;
    zn::TaskKind kind = zn::TaskKind::General;
    TaskFile file;
    Variables settings;                   ///< they win over the file's variables
    zn::Text script;                      ///< the macro template
    std::vector<zn::Text> vaultVariables; ///< names of the vault's card variables, in the vault's order
};

/// The complete definition: what the property pages would store for a task that nobody changed, without the freedoms
/// that they leave to the user at the launch (there is no window to ask in), then the file's variables, then the
/// settings. Variables that follow from others are computed (`UsedVariables`, `SheetMetalOptions`). Raises
/// `StatusError` E_INVALIDARG with a sentence for a conversion without a format of the list.
TaskDefinition makeTask(const TaskRequest& request);

/// Computes the variables that follow from others anew, after some were changed.
void deriveVariables(Variables& variables, zn::TaskKind kind, const std::vector<zn::Text>& vaultVariables);
/// Raises like `makeTask` for a conversion without a format of the list.
void requireFormat(const Variables& variables, zn::TaskKind kind);

} // namespace arkin
