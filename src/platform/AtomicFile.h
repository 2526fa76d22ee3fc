#pragma once

#include <filesystem>
#include <string_view>

namespace zn {

/// Creates or replaces a file so that a reader, or the machine after a crash, finds the old content or the new one
/// whole: a temporary name in the same folder, synced, renamed, the folder synced. Raises `StatusError` with a
/// sentence that names the file; the old content then still stands and no temporary file is left.
void writeFileAtomically(const std::filesystem::path& path, std::string_view bytes);

/// The second half of the above for a file that was written elsewhere on the same disk: syncs `temporary`, renames
/// it to `path`, which may exist, and syncs the folder. Raises `StatusError`; `temporary` then still stands.
void replaceFileDurably(const std::filesystem::path& temporary, const std::filesystem::path& path);

/// Makes the names in a folder durable. Raises `StatusError`.
void syncFolder(const std::filesystem::path& folder);

} // namespace zn
