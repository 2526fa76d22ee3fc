#pragma once

#include "arkin/store/Vault.h"

#include <optional>
#include <vector>

namespace zn::arkin {

/// How a file of the local view stands to the vault.
enum class LocalState {
    NotHere,   ///< no copy was brought to this machine
    AsInVault, ///< the latest version, or the one that is checked out
    Older,     ///< an older version, unchanged
    Changed,   ///< not what was brought here
    Gone,      ///< a copy was brought here and isn't there any more
};

struct FileStatus {
    Place place;
    zn::Text path; ///< below the vault's root
    LocalState local = LocalState::NotHere;
    std::optional<CheckOutRow> checkOut;
};

/// The files in the folder and below it that somebody has checked out or whose copy on this machine isn't the latest
/// version, as far as the caller may read them, in the order of their paths. Reads files whose size or time has
/// changed. Raises E_ARK_LOCAL_FILE_FAILED.
std::vector<FileStatus> localStatus(Vault& vault, std::int32_t folderId);

} // namespace zn::arkin
