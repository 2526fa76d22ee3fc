#pragma once

#include "arkin/store/Outlines.h"

namespace zn::arkin {

/// A file that gets another folder, another name, or both.
struct FileMove {
    Place from;
    std::int32_t toFolderId = 0;
    zn::Text toName;
};

/// A folder, with all that is in it, that gets another parent, another name, or both.
struct FolderMove {
    std::int32_t folderId = 0;
    std::int32_t toParentId = 0;
    zn::Text toName;
};

/// What becomes of references that stand in documents and wouldn't lead to their files any more.
enum class BrokenReferences {
    Refuse, ///< raises E_ARK_REFERENCED with a sentence that names them, and nothing is moved
    Accept,
};

/// Gives files and folders other places or names, all of them or none; their versions, cards, references, rights and
/// histories stay. Unchanged local copies go with their files; a folder's copies go whatever they hold. Returned are
/// the references that are broken now. Raises E_ARK_PERMISSION_DENIED without the right to delete where it was and to
/// add where it goes, E_ARK_CHECKED_OUT or E_ARK_CHECKED_OUT_ELSEWHERE while anybody has one of the files checked out,
/// E_ARK_LOCAL_FILE_CHANGED, E_ARK_NAME_ALREADY_EXISTS, E_ARK_BAD_NAME, E_ARK_NOT_IN_VAULT; and
/// E_ARK_LOCAL_FILE_FAILED when the vault has it all but a local copy could not follow.
std::vector<BrokenReference> moveInVault(Vault& vault, std::span<const FileMove> files,
    std::span<const FolderMove> folders, BrokenReferences broken = BrokenReferences::Refuse);

/// Where a file was before, and who moved it.
struct MoveRow {
    std::int64_t movedAt = 0; ///< Unix time in seconds
    std::string user;
    zn::Text from; ///< paths below the vault's root
    zn::Text to;
};
/// In the order of time.
std::vector<MoveRow> movesOf(Vault& vault, std::int32_t fileId);

} // namespace zn::arkin
