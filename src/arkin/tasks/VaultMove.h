#pragma once

#include "arkin/store/Vault.h"

#include <functional>

namespace zn::arkin {

/// What a vault's new local folder has brought along.
struct VaultMoveReport {
    zn::Text from, to;              ///< the local folders
    std::vector<std::string> tasks; ///< "TASK: VARIABLE" of each setting that led into the former folder
    std::int32_t schedules = 0;     ///< schedules and waiting runs whose paths have changed
    std::int32_t waitingRuns = 0;
    std::int32_t checkOuts = 0;     ///< of a relocation: files that are checked out; their copies stay where they were
    std::int32_t otherMachines = 0; ///< of a move: machines whose copies of files aren't known any more
    std::string leftBehind;         ///< of a move: why the former folder couldn't be removed; empty if it was
};

/// Moves a vault's local folder with all that is in it. To another disk it is copied, and removed when the
/// copy is durable. Schedules,
/// waiting runs and task settings whose paths begin with the former folder follow. `progress` gets copied bytes.
/// Raises `StatusError` with a sentence, and has changed nothing then: while workers or runs are at work, when files
/// are checked out on other machines, when the new folder isn't empty, or if the folder belongs to another home.
VaultMoveReport moveVault(Store& store, const VaultInfo& vault, zn::TextView root,
    const std::function<void(std::int64_t done, std::int64_t total)>& progress = {});

/// Lets a vault work with another local folder from now on, and leaves the former one alone: it is another home's, or
/// lost. No local copy is known any more. Paths follow as with a move. Raises `StatusError` with a sentence.
VaultMoveReport relocateVault(Store& store, const VaultInfo& vault, zn::TextView root);

/// Raises `StatusError` with a sentence while a worker or a run of the vault is at work.
void requireNobodyAtWork(Store& store, const VaultInfo& vault);

} // namespace zn::arkin
