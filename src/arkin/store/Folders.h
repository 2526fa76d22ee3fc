#pragma once

#include "arkin/store/Database.h"

#include <map>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace zn::arkin {

/// The folders of one vault. A folder that moves or gets another name gets another number, too, so what was read once
/// of a number stays true and is kept.
class Folders {
public:
    Folders(Database& database, std::int32_t vaultId, std::int32_t rootId)
        : m_database(database)
        , m_vaultId(vaultId)
        , m_rootId(rootId)
    {
    }

    std::int32_t rootId() const { return m_rootId; }

    /// The folder at the path below the root ("Plates\Thin"; empty for the root). None if the vault doesn't have it.
    std::optional<std::int32_t> find(zn::TextView relativePath);
    /// The deepest folder of the path that exists.
    std::int32_t findNearest(zn::TextView relativePath);
    /// The folder at the path, which is there until the transaction ends; makes what is missing. Inside a write
    /// transaction; `forget` after it was rolled back.
    std::int32_t ensure(zn::TextView relativePath);
    /// Path below the root without separators around it. Raises E_ARK_NOT_IN_VAULT for an unknown folder.
    zn::Text pathOf(std::int32_t folderId);
    /// 0 for the root.
    std::int32_t parentOf(std::int32_t folderId);
    /// In the order of their names.
    std::vector<std::int32_t> children(std::int32_t folderId);
    void forget();
    /// Keeps what a larger query has read of a folder, so that nobody asks for it again.
    void keep(std::int32_t folderId, std::int32_t parentId, zn::TextView name);

private:
    struct Folder {
        std::int32_t parentId = 0;
        zn::Text name;
    };

    bool isThere(std::int32_t folderId);
    std::optional<std::int32_t> child(std::int32_t parentId, zn::TextView name);
    std::int32_t makeChild(std::int32_t parentId, zn::TextView name);
    const Folder& row(std::int32_t folderId);

    Database& m_database;
    std::int32_t m_vaultId;
    std::int32_t m_rootId;
    std::unordered_map<std::int32_t, Folder> m_byId;
    std::map<std::pair<std::int32_t, std::string>, std::int32_t> m_byName;
};

/// The form of a name by which it is compared and stored in a key column.
std::string nameKey(zn::TextView name);
/// Raises E_ARK_BAD_NAME with a sentence if no file or folder of the vault can bear the name: empty, ".", "..", more
/// than 255 bytes on the disk, a separator, a control character, or half a surrogate pair.
void requireGoodName(zn::TextView name);
/// Whether the name has a character that a macro's text can't carry or that other machines' disks don't take: a double
/// quote, an angle bracket or a control character. Files that have long been in a vault may have one.
bool hasUnsafeCharacter(zn::TextView name);
/// As `requireGoodName`, for names that are new to the vault: an unsafe character is refused, too, and the beginning
/// of a drive's path.
void requireGoodNewName(zn::TextView name);
/// The name with "_" for each unsafe character, and for the colon of a drive.
zn::Text safeName(zn::TextView name);
/// The parts of a path below the root; empty ones are passed over.
std::vector<zn::Text> pathParts(zn::TextView relativePath);

} // namespace zn::arkin
