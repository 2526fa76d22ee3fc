#pragma once

#include "arkin/store/Vault.h"

namespace zn::arkin {

/// Removes the file from the folder, together with its local copy there unless that holds what the vault doesn't know.
/// When no folder shows the file any more it counts as deleted: its versions stay in the database and the archive for
/// whoever refers to them, and its name is free. Raises E_ARK_PERMISSION_DENIED, E_ARK_NOT_IN_VAULT, and
/// E_ARK_CHECKED_OUT_ELSEWHERE while somebody else has it checked out. A check-out of the caller is given up with it.
void deleteFile(Vault& vault, const Place& place);

} // namespace zn::arkin
