#pragma once

#include "arkin/store/Vault.h"

#include <filesystem>

namespace zn::arkin {

/// Makes the source's content the next version of a file: checks it out, replaces the local copy and checks it in; if
/// that fails, the file is as before. False, and no version, if the latest one has that content already. Raises
/// E_ARK_CHECKED_OUT_ELSEWHERE for a file that anybody has checked out, the caller included, E_ARK_LOCAL_FILE_CHANGED
/// for a local copy that the vault doesn't know, E_ARK_PERMISSION_DENIED and what a check-in raises.
bool updateFile(Vault& vault, const Place& place, const std::filesystem::path& source, zn::TextView comment);

} // namespace zn::arkin
