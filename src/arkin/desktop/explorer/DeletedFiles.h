#pragma once

#include "arkin/store/Vault.h"

class QWidget;

namespace zn::arkin {

/// Lets the user choose of the files that were deleted from the folder, and brings those back. True if any was; what
/// couldn't be brought back is told.
bool restoreDeletedFiles(Vault& vault, QWidget* window, std::int32_t folderId);

} // namespace zn::arkin
