#pragma once

#include <filesystem>

namespace zn::zentrel {

/// The folder for files of this process's own, in the temporary folder. It isn't made here.
/// Folders that killed processes of this user have left are removed.
std::filesystem::path processWorkFolder(const std::filesystem::path& temporaryFolder);

} // namespace zn::zentrel
