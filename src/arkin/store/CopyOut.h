#pragma once

#include "arkin/store/GetFiles.h"

#include <filesystem>
#include <vector>

namespace zn::arkin {

/// Writes copies of files into a folder outside the vault, which is made if it is missing; nothing is recorded, and the
/// copies are their taker's own. A file that is there stays unless `replace` says otherwise. All are looked at before
/// the first is written. Returns the copies' paths. Raises E_ARK_PERMISSION_DENIED, E_ARK_NO_SUCH_VERSION,
/// E_ARK_LOCAL_FILE_CHANGED for a name that is there or that two of the files have, and E_ARK_LOCAL_FILE_FAILED.
std::vector<std::filesystem::path> copyOut(
    Vault& vault, std::span<const GetRequest> requests, const std::filesystem::path& folder, bool replace);

} // namespace zn::arkin
