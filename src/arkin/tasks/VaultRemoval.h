#pragma once

#include "arkin/store/Vault.h"

namespace zn::arkin {

/// What goes with a vault.
struct VaultRemovalReport {
    std::int64_t files = 0, versions = 0, checkOuts = 0, tasks = 0, runs = 0;
    /// A copy of the database as it was before; empty if nothing was removed.
    std::filesystem::path copy;
};

/// What a removal would take away.
VaultRemovalReport countVault(Store& store, const VaultInfo& vault);

/// Takes a vault with its files, cards, tasks and runs out of the home's database, of which a copy is kept beside it
/// ("removed/NAME-TIME.sqlite" in the home). Its contents stay in the archive until a clean sets them aside, its local
/// folder stays as it is. Raises `StatusError` with a sentence while workers or runs are at work, and while files are
/// checked out unless they may be `givenUp`.
VaultRemovalReport removeVault(Store& store, const VaultInfo& vault, bool givenUp);

} // namespace zn::arkin
