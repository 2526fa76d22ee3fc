#pragma once

#include "base/Dispatch.h"
#include "language/FileAccess.h"

namespace zn::language {

/// An object for a file or folder that exists. Raises 53 or 76.
DispatchRef fileObject(FileAccess& files, const Text& path);
DispatchRef folderObject(FileAccess& files, const Text& path);

/// A relative path made absolute by the current folder.
Text absolutePath(FileAccess& files, const Text& path);
/// Deletes a folder with all that is in it.
void deleteFolderTree(FileAccess& files, const Text& path, bool force);
void copyFolderTree(FileAccess& files, const Text& from, const Text& to, bool overwrite);

} // namespace zn::language
