#pragma once

#include "arkin/store/Vault.h"

namespace zn::arkin {

/// A file that no folder shows any more.
struct DeletedFile {
    std::int32_t fileId = 0;
    std::int32_t folderId = 0; ///< that showed it last
    zn::Text name;
    std::int32_t latestVersion = 0;
    std::int64_t deletedAt = 0; ///< Unix time in seconds
    std::string deletedBy;
};

/// The deleted files that were last shown in a folder, the newest deletion first.
std::vector<DeletedFile> deletedFiles(Vault& vault, std::int32_t folderId);

/// Shows a deleted file in its last folder again, with all its versions, and brings its local copy. Raises
/// E_ARK_NAME_ALREADY_EXISTS if another file has taken its place, and E_ARK_PERMISSION_DENIED without the right to add.
Place restoreFile(Vault& vault, const DeletedFile& file);

/// Makes an older version's content the newest version, under the comment "Version N restored"; card and references
/// stay those of the latest. Returns the new version's number. Raises what checking out and in raise,
/// E_ARK_NO_SUCH_VERSION, and E_INVALIDARG for the version that is the latest already.
std::int32_t restoreVersion(Vault& vault, const Place& place, std::int32_t version);

} // namespace zn::arkin
