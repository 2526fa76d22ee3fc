#pragma once

#include "arkin/store/Vault.h"

#include <span>
#include <vector>

class QWidget;

namespace zn::arkin {

/// Something that people do with a folder: an entry of the folders' menu.
struct FolderWork {
    const char* name = "";
    const char* text = "";
    /// Returns the folder that is to be shown now; 0 if nothing was done.
    std::int32_t (*work)(Vault& vault, QWidget* window, std::int32_t folderId) = nullptr;
};

std::span<const FolderWork> folderWorks();

/// Asks for a file's new name. False if nothing was done.
bool renameFile(Vault& vault, QWidget* window, const Place& place);
/// Moves files into a folder; where references that stand in documents would break, only if the user agrees. Raises a
/// sentence and moves none if one can't be moved. False if nothing was done.
bool moveFiles(Vault& vault, QWidget* window, const std::vector<Place>& places, std::int32_t toFolderId);
/// Asks for the folder.
bool moveFiles(Vault& vault, QWidget* window, const std::vector<Place>& places);

} // namespace zn::arkin
