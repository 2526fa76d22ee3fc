#pragma once

#include "arkin/store/Vault.h"

namespace zn::arkin {

// A vault remembers which home works with its local folder. A home that was copied, or restored beside the one that it
// comes from, names the same folder; two homes that write there would take each other's files for changed or lost ones.
// The copy's vault can be read until it gets a folder of its own.

/// The archive of the other home that works with the vault's local folder, while that one is still there; none if the
/// folder is this home's. Of a home that was moved the new place is noted.
std::optional<std::filesystem::path> otherHome(Store& store, const VaultInfo& vault);

/// Raises E_ARK_LOCAL_FILE_FAILED with a sentence that says what to do if the local folder is another home's.
void requireOwnRoot(Store& store, const VaultInfo& vault);

/// Gives the vault another local folder, which this home works with from now on. Inside a transaction.
void writeRoot(Store& store, const VaultInfo& vault, zn::TextView root);

} // namespace zn::arkin
