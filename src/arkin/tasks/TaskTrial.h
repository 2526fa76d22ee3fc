#pragma once

#include "arkin/tasks/TaskHost.h"
#include "arkin/tasks/TaskStore.h"
#include "contracts/host/ArkMacroCheck.h"

#include <filesystem>

namespace zn::arkin {

/// A task of a copied vault as it can be tried on the file at `path`: what its runs would write outside of the vault
/// goes below `folder`, and its macros reach nothing else. `host` is the copy's. Raises `StatusError` with a sentence
/// for an add-in that can't do that, and for a task that it refuses.
TaskDefinition preparedForTrial(
    const TaskHost& host, const TaskDefinition& task, const zn::Text& path, const zn::Text& folder);

/// What of the task's macro a run will not take as its author meant it; nothing from an add-in that doesn't tell.
/// Raises `StatusError` with a sentence.
std::vector<zn::ArkMacroWarning> macroWarnings(const TaskHost& host, const TaskDefinition& task);

/// What the run has left in the copy's local folder beside the files that it has read, in the order of their paths.
std::vector<std::filesystem::path> filesMadeBy(Vault& copy, std::int32_t runId);

} // namespace zn::arkin
