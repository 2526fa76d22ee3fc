#pragma once

#include "arkin/store/ActingRun.h"
#include "arkin/store/Cards.h"
#include "arkin/store/Codes.h"
#include "arkin/store/LocalView.h"
#include "arkin/store/Permissions.h"
#include "arkin/store/References.h"
#include "platform/Clock.h"

namespace zn::arkin {

struct VaultInfo {
    std::int32_t id = 0;
    zn::Text name;
    zn::Text root; ///< backslash path of the local view
    std::int32_t rootFolderId = 0;
};

/// The database and the archive, which all vaults of a home share. One thread uses a store and its vaults.
class Store {
public:
    /// Opens database and archive, creating what is missing, and clears away what interrupted work has left.
    /// `files` and `clock` outlive the store.
    Store(const std::string& connection, const std::filesystem::path& archiveFolder, zn::FileSystem& files,
        zn::Clock& clock);

    Database& database() { return m_database; }
    Archive& archive() { return m_archive; }
    zn::FileSystem& files() { return m_files; }
    zn::Clock& clock() { return m_clock; }

    /// In the order of their names.
    std::vector<VaultInfo> vaults();
    /// By name without regard to case.
    std::optional<VaultInfo> findVault(zn::TextView name);
    /// Raises E_ARK_NAME_ALREADY_EXISTS, or as `requireRoot`.
    VaultInfo createVault(zn::TextView name, zn::TextView root);
    /// The path as a vault's local folder is stored. Raises E_ARK_BAD_NAME if a vault can't have it, or if it lies in
    /// another vault's or around it; that of the vault `except` doesn't count.
    zn::Text requireRoot(zn::TextView root, std::int32_t except = 0);
    /// Makes the folder if it is missing. Raises E_ARK_LOCAL_FILE_FAILED.
    void makeRoot(zn::TextView root);

private:
    Database m_database;
    Archive m_archive;
    zn::FileSystem& m_files;
    zn::Clock& m_clock;
};

/// Who works with the vault, and where.
struct Caller {
    std::string user;
    std::string machine;
    std::int32_t run = 0; ///< the run of a task for which the work is done; 0 for a person's own

    /// The user and the machine of this process.
    static Caller current();
};

/// An open vault: what its operations (AddFiles.h, CheckOut.h, CheckIn.h, GetFiles.h …) work with.
class Vault {
public:
    /// `store` outlives the vault. While another home works with the vault's local folder (see VaultPlace.h), the
    /// vault can be read, but neither it nor the folder can be changed.
    Vault(Store& store, const VaultInfo& info, Caller caller = Caller::current());
    Vault(const Vault&) = delete;
    Vault& operator=(const Vault&) = delete;

    const VaultInfo& info() const { return m_info; }
    const Caller& caller() const { return m_caller; }
    /// From now on the vault is worked with for the run: check-outs belong to it, and nothing is written any more once
    /// the run has gone to another worker. Null for a person's own work. `run` outlives that.
    void actFor(ActingRun* run);
    /// Null for a person's own work.
    ActingRun* actingRun() { return m_actingRun; }
    Database& database() { return m_store.database(); }
    Archive& archive() { return m_store.archive(); }
    zn::Clock& clock() { return m_store.clock(); }
    Folders& folders() { return m_folders; }
    Files& files() { return m_files; }
    Cards& cards() { return m_cards; }
    References& references() { return m_references; }
    Permissions& permissions() { return m_permissions; }
    LocalView& local() { return m_local; }

    /// The file at a path of the local view, in any spelling of its case. None if the vault doesn't have it.
    /// Raises E_ARK_PERMISSION_DENIED without the right to read it.
    std::optional<Place> find(zn::TextView path);
    /// As `find` for many paths, without asking for rights: where the vault doesn't have a file, both ids are 0.
    std::vector<Place> findAll(std::span<const zn::Text> paths);
    /// Likewise for a folder; the root is one too.
    std::optional<std::int32_t> findFolder(zn::TextView path);
    /// Raises E_ARK_NOT_IN_VAULT for an unknown file or one that was deleted.
    FileRow file(std::int32_t fileId);
    /// A version of the file; 0 is the latest. Raises E_ARK_NO_SUCH_VERSION with a sentence.
    VersionRow version(std::int32_t fileId, std::int32_t version);
    /// Raises E_ARK_PERMISSION_DENIED with a sentence that names the file and its folder.
    void require(const Place& place, Right right);
    /// Whether the caller has the file checked out on this machine, for himself or for the run that he acts for. What
    /// he has checked out for another run is that run's.
    bool isMine(const CheckOutRow& checkOut) const;
    /// The file's path in the local view.
    zn::Text pathOf(const Place& place) { return m_local.pathOf(place.folderId, file(place.fileId).name); }

    /// Write to the latest version, in a transaction of their own.
    void setRevision(std::int32_t fileId, zn::TextView revision);
    void setWorkflowState(std::int32_t fileId, zn::TextView state);
    /// Shows the file in a further folder. Raises E_ARK_NAME_ALREADY_EXISTS.
    void shareFile(std::int32_t fileId, std::int32_t folderId);
    /// Makes the folder and what is missing above it, in the vault and in the local view. A path of the local view.
    std::int32_t createFolder(zn::TextView path);

private:
    Store& m_store;
    VaultInfo m_info;
    Caller m_caller;
    ActingRun* m_actingRun = nullptr;
    Folders m_folders;
    Files m_files;
    Cards m_cards;
    References m_references;
    Permissions m_permissions;
    LocalView m_local;
};

} // namespace zn::arkin
