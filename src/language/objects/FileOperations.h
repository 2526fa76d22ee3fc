#pragma once

#include "language/FileAccess.h"

namespace zn::language {

/// Whether a file name fits "*" and "?" without regard to case; "*.*" fits every name.
bool fitsWildcards(TextView name, TextView pattern);
/// The entries of the folder of `path` whose names fit. Raises `StatusError`.
std::vector<FolderEntry> entriesMatching(FileAccess& files, const Text& path, TextView pattern);
/// Deletes a file, or all files that a name with wildcards fits; read-only ones too if `force`.
/// Raises `ScriptError`: 53 if there was nothing to delete.
void deleteFiles(FileAccess& files, const Text& path, bool force);
bool fileExistsAt(FileAccess& files, const Text& path);
bool folderExistsAt(FileAccess& files, const Text& path);

} // namespace zn::language
