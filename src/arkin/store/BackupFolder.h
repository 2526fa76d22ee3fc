#pragma once

#include "arkin/store/StoreCheck.h"
#include "platform/FileDescriptor.h"

#include <memory>

namespace zn::arkin {

/// Databases of one moment in a backup: `vault.sqlite` and `registry.sqlite`, whose hashes are in `SHA256SUMS`, in a
/// folder that bears its moment's name. Failures are raised as `StatusError` with a sentence.
class BackupCopy {
public:
    static constexpr const char* database = "vault.sqlite";
    static constexpr const char* registry = "registry.sqlite";
    static constexpr const char* sums = "SHA256SUMS";

    explicit BackupCopy(std::filesystem::path folder)
        : m_folder(std::move(folder))
    {
    }

    /// "2026-11-22T19-25-00Z": its moment, UTC.
    std::string name() const { return m_folder.filename(); }
    const std::filesystem::path& folder() const { return m_folder; }
    /// A sentence for each of its files that is missing or isn't what was backed up.
    std::vector<std::string> problems() const;
    /// Of the vault.
    std::string identity() const;
    /// The contents that it needs, by their hashes.
    std::vector<Holder> contents() const;
    /// Opens its database to be read.
    void open(soci::session& session) const;

private:
    template <class Read> auto read(const Read& reading) const;

    std::filesystem::path m_folder;
};

/// What `arkin vault backup` writes:
///   archive/    the contents that the copies need, each once, in the vault's own form (Archive.h)
///   copies/     a folder for each backup (BackupCopy), which gets its name when it is whole
///   lock        held exclusively by a backup, shared by a check and a restore
/// It belongs to one vault, by the identity of its archive. A folder that others may write to is refused: what is
/// brought back from it names libraries that are loaded. Failures are raised as `StatusError` with a sentence.
class BackupFolder {
public:
    enum class Use {
        Write, ///< makes what is missing, and removes what an interrupted backup has left
        Read,
    };
    /// Refuses a folder that holds anything else, or that is in use in a way that doesn't go with this one.
    BackupFolder(const std::filesystem::path& folder, Use use);

    const std::filesystem::path& folder() const { return m_folder; }
    Archive& archive() { return *m_archive; }

    /// Whole ones, the oldest first.
    std::vector<BackupCopy> copies() const;
    /// The newest one whose name begins with the digits of `moment`, such as "2026-11-22" or "2026-11-22 19:25"; of an
    /// empty one the newest of all.
    BackupCopy copyAt(const std::string& moment) const;

    /// A new empty folder for a copy that is being made.
    std::filesystem::path beginCopy();
    /// Makes what was begun a copy of this moment, durably, together with all contents that were put to the archive.
    BackupCopy finishCopy(std::int64_t time);
    /// After the return this is no copy any more, also after a loss of power.
    void retire(const BackupCopy& copy);
    /// Whether there may be contents that no copy needs: a copy was retired, or a backup was interrupted.
    bool mayHoldLeftovers() const;
    /// Removes what was retired; to be called when contents that only this needed are gone.
    void removeRetired();

private:
    std::filesystem::path copiesFolder() const { return m_folder / "copies"; }

    std::filesystem::path m_folder;
    zn::FileDescriptor m_lock;
    std::unique_ptr<Archive> m_archive;
    bool m_wasInterrupted = false;
};

void moveFolder(const std::filesystem::path& from, const std::filesystem::path& to);
/// Makes a file's bytes, or the names in a folder, durable.
void syncPlace(const std::filesystem::path& path);
/// The content of a file.
Content contentOf(const std::filesystem::path& file);

} // namespace zn::arkin
