#pragma once

#include "arkin/store/Vault.h"
#include "arkin/tasks/RunStore.h"
#include "platform/FileSystem.h"

namespace zn::arkin {

/// Full path of a run's log as its task settles it; empty if the task keeps none.
zn::Text runLogPath(RunStore& runs, const RunInfo& run, zn::TextView vaultRoot);

/// The log's text in UTF-8, lines as they stand: of the local file, or else of the vault's latest version, which then
/// comes to the local view. None if there is neither. Raises E_FAIL with a sentence for a file that can't be read.
std::optional<std::string> readRunLog(Vault& vault, zn::FileSystem& files, const zn::Text& path);

} // namespace zn::arkin
