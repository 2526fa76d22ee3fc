#pragma once

#include "arkin/store/Folders.h"

#include <vector>

namespace zn::arkin {

enum class Right {
    Read,   ///< see files and get their contents
    Add,    ///< put files and new versions
    Delete, ///< remove files from the folder
};

struct Rights {
    bool read = true;
    bool add = true;
    bool remove = true;
};

/// Rights of users on folders. The nearest folder upwards with an entry for the user decides; without any entry
/// everything is allowed.
class Permissions {
public:
    Permissions(Database& database, Folders& folders, std::string user)
        : m_database(database)
        , m_folders(folders)
        , m_user(std::move(user))
    {
    }

    bool allowed(std::int32_t folderId, Right right);
    /// Raises E_ARK_PERMISSION_DENIED with a sentence that names the folder.
    void require(std::int32_t folderId, Right right);
    /// Sets what the folder says for a user, in a transaction of its own.
    void set(std::int32_t folderId, zn::TextView user, const Rights& rights);
    /// Takes away what the folder says for a user, likewise.
    void inherit(std::int32_t folderId, zn::TextView user);
    /// What the folders of a vault say for all users, by folder and user.
    struct Entry {
        std::int32_t folderId = 0;
        std::string user;
        Rights rights;
    };
    std::vector<Entry> entries(std::int32_t vaultId);
    /// Reads the entries of the user again; for the beginning of an operation that asks for many files.
    void refresh();

private:
    Database& m_database;
    Folders& m_folders;
    std::string m_user;
    std::unordered_map<std::int32_t, Rights> m_entries;
};

} // namespace zn::arkin
