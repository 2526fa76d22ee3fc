#pragma once

#include "arkin/store/FileHandle.h"
#include "platform/PrivateFiles.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace zn::arkin {

/// What a version holds: the SHA-256 of its bytes (64 lower-case hexadecimal digits) and their number.
struct Content {
    std::string hash;
    std::int64_t size = 0;
    bool operator==(const Content&) const = default;
};

/// Copies from where both files stand to the end of the source, or only reads it without a destination.
Content copyAndHash(FileHandle& source, FileHandle* destination);

/// Contents by their hash, each once, in files that are never changed:
///   ab/<hash>     a content, whole and synced, for hashes that begin with "ab"
///   identity      a line that says to which database the archive belongs; see Identity.h
///   removed/      what `setAside` has taken out, by the day on which it did
///   incoming/     contents on their way in; whatever lies there belongs to a living batch or is left over
///   lock          held shared by every batch, exclusively while leftovers are removed
/// Failures are raised as `StatusError` E_ARK_ARCHIVE or E_ARK_DISK_FULL with a sentence.
class Archive {
public:
    /// Opens the archive in `folder`, creating it if it is missing.
    explicit Archive(const std::filesystem::path& folder);

    const std::filesystem::path& folder() const { return m_folder; }
    /// Empty if the archive has none yet.
    std::string identity() const;
    /// Durable on return.
    void setIdentity(const std::string& identity);
    /// Whether it holds no content.
    bool empty() const;

    /// From now on contents that it doesn't hold itself are read from the archive in `folder`, to which nothing is ever
    /// written: for a copy of a vault that is there for a while.
    void readBehind(const std::filesystem::path& folder) { m_behind = folder; }

    bool holds(const std::string& hash) const;
    /// Whether it holds a content of this size, which is all that is looked at.
    bool holdsSized(const Content& content) const;
    /// Of a content that may be read there; a missing one has its place in this archive.
    std::filesystem::path pathOf(const std::string& hash) const;
    /// Writes the content to `destination`. Raises E_ARK_ARCHIVE if the archive's copy is damaged or missing.
    void copyOut(const Content& content, FileHandle& destination) const;
    /// Reads the content again; a sentence if it is missing or damaged.
    std::optional<std::string> problemOf(const Content& content) const;

    /// Calls `visit` with the hash of every content in the archive, in no order.
    void forEach(const std::function<void(const std::string& hash)>& visit) const;

    /// Removes contents that never got into the archive; nothing while another process has a batch open.
    void removeArrivals();
    /// Whether a content is needed; asked while no other process has a batch open, so that what is needed can be read
    /// at the first call.
    using IsNeeded = std::function<bool(const std::string& hash)>;
    /// Counts the contents that nobody needs. None while another process has a batch open.
    std::optional<int> countLeftovers(const IsNeeded& isNeeded) const;
    struct SetAside {
        int moved = 0;
        std::int64_t bytes = 0; ///< of these
        int tooNew = 0;         ///< left where they are
        int deleted = 0;        ///< of those that were set aside before
    };
    /// Moves the contents that nobody needs and that came before `before` (Unix time) to `removed/DAY/`, and deletes
    /// what lies there for longer than `keptDays` days. None, with nothing done, while another process has a batch
    /// open.
    std::optional<SetAside> setAside(const IsNeeded& isNeeded, std::int64_t before, std::int64_t now);
    static constexpr int keptDays = 30;
    /// Deletes the contents that nobody needs; `moved` counts them. None, with nothing done, while another process has
    /// a batch open.
    std::optional<SetAside> removeLeftovers(const IsNeeded& isNeeded);

private:
    friend class ArchiveBatch;

    /// False, and nothing visited, while another process has a batch open; nobody can open one meanwhile.
    template <class Visit> bool forEachLeftover(const IsNeeded& isNeeded, const Visit& visit) const;
    std::vector<std::filesystem::path> arrivals() const;
    std::filesystem::path ownPathOf(const std::string& hash) const;

    std::filesystem::path m_folder;
    std::filesystem::path m_behind; ///< empty for none
    zn::Sharing m_sharing;          ///< of the folder that it lies in
};

/// Contents on their way into the archive. `put` takes them one by one, `publish` makes all of them durable at the
/// price of a few syncs. The batch has to live until the transaction that refers to its contents has ended: as long
/// as it does, nobody removes them as left over.
class ArchiveBatch {
public:
    explicit ArchiveBatch(const Archive& archive);
    ArchiveBatch(const ArchiveBatch&) = delete;
    ArchiveBatch& operator=(const ArchiveBatch&) = delete;
    /// Removes what was put and not published.
    ~ArchiveBatch();

    /// Copies what the open file holds from its present position to its end.
    Content put(FileHandle& source);
    /// Copies the whole file, which is to be this content, also over what the archive holds of it. False, with nothing
    /// put, if the file has other bytes.
    bool putAs(const Content& content, FileHandle& source);
    /// After the return all contents put so far are in the archive and survive a loss of power.
    void publish();

private:
    struct Arrival {
        std::filesystem::path path;
        std::string hash;
    };

    Content takeIn(FileHandle& source);
    void dropLast();
    void syncArrivals();
    void syncFolders(const std::unordered_set<std::string>& folders);

    const Archive& m_archive;
    FileHandle m_lock;
    std::string m_name;
    unsigned m_count = 0;
    std::vector<Arrival> m_arrivals;
    /// Folders of contents that were there already, perhaps not yet synced by the process that put them.
    std::unordered_set<std::string> m_sharedFolders;
};

} // namespace zn::arkin
