#pragma once

#include <filesystem>

namespace zn {

/// Whom a folder of the system lets in besides its owner.
enum class Sharing { Nobody, Group };

/// As the folder is set up: for its group with the set-group-ID bit and the group's right to write (mode 2770), which
/// an administrator gives it. A folder that isn't there is nobody's.
Sharing sharingOf(const std::filesystem::path& folder);

/// Makes a folder, the ones above as usual, and closes one of this user's that is open to others: 0700, or 2770. Raises
/// `std::system_error`, also where a link or a file is in the way.
void makePrivateFolder(const std::filesystem::path& folder, Sharing sharing);

/// Makes an empty file where there is none, and closes one of this user's that is open to others: 0600, or 0660. Raises
/// `std::system_error`.
void makePrivateFile(const std::filesystem::path& file, Sharing sharing);

} // namespace zn
