#pragma once

#include "arkin/store/Vault.h"

#include <filesystem>
#include <vector>

class QWidget;

namespace zn::arkin {

/// Brings files of this machine, and folders with all that is in them, into a folder of the vault: copied, added and
/// checked in. Where names exist already it asks whether they get new versions. Shows progress, can be stopped between
/// batches, and tells what couldn't be brought in and why; the others are. Raises what concerns all of them.
void importFiles(Vault& vault, QWidget* window, std::int32_t folderId, const std::vector<std::filesystem::path>& paths);

} // namespace zn::arkin
