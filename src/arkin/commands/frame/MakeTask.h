#pragma once

#include "arkin/commands/frame/Session.h"
#include "arkin/tasks/NewTask.h"
#include "arkin/tasks/VariableRules.h"

namespace zn::arkin {

/// Raises `StatusError` with a sentence that names the file, and the place in it.
TaskFile readTaskFile(const std::filesystem::path& file, const KnownVariables& known);
/// The macro that the task file names, which lies beside it, or the product's own for this kind, in the form in which
/// the script page keeps it. Raises `StatusError` with a sentence.
zn::Text macroOf(const TaskFile& task, const std::filesystem::path& file, zn::TaskKind kind);

/// Makes the task and stores it. Its pages write every variable first, as if an administrator accepted them unseen;
/// then the request wins, but for what the rules compute. Returns how many variables it has. Raises `StatusError` with
/// a sentence.
std::size_t makeTask(Session& session, const VariableRules& rules, const TaskRequest& request);

} // namespace zn::arkin
