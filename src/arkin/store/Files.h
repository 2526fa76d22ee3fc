#pragma once

#include "arkin/store/Archive.h"
#include "arkin/store/Database.h"
#include "contracts/host/Records.h"

#include <optional>
#include <span>
#include <vector>

namespace zn::arkin {

/// A file seen in a folder.
using Place = zn::ArkFileFolderPair;

struct FileRow {
    std::int32_t id = 0;
    zn::Text name;
    std::int32_t latestVersion = 0;
    bool deleted = false; ///< no folder shows it any more
};

struct VersionRow {
    std::int32_t version = 0;
    Content content;
    zn::Text comment;
    zn::Text user;
    std::int64_t madeAt = 0; ///< Unix time in seconds
    zn::Text revision;
    zn::Text state;       ///< of the workflow
    std::int32_t run = 0; ///< the run of a task that made the version; 0 if a person did
};

struct CheckOutRow {
    std::int32_t fileId = 0;
    std::int32_t folderId = 0;
    std::string user;
    std::string machine;
    std::int64_t takenAt = 0;
    std::int32_t baseVersion = 0; ///< 0 for a file that was added and never checked in
    bool cardOpen = false;        ///< the version to come has its own copy of the card
    bool referencesOpen = false;  ///< likewise of the references
    std::int32_t run = 0;         ///< the run of a task that took the file; 0 if a person did

    std::int32_t versionToCome() const { return baseVersion + 1; }
};

/// Which version of which file.
struct FileVersion {
    std::int32_t fileId = 0;
    std::int32_t version = 0;
};

/// The files of one vault with their versions and check-outs. Questions about many files are asked in one call, which
/// answers in their order.
class Files {
public:
    Files(Database& database, std::int32_t vaultId)
        : m_database(database)
        , m_vaultId(vaultId)
    {
    }

    std::vector<std::optional<FileRow>> rows(std::span<const std::int32_t> fileIds);
    std::optional<FileRow> row(std::int32_t fileId);
    std::vector<std::optional<VersionRow>> versions(std::span<const FileVersion> asked);
    std::optional<VersionRow> version(std::int32_t fileId, std::int32_t version);
    /// From the first version to the latest.
    std::vector<VersionRow> history(std::int32_t fileId);
    std::vector<std::optional<CheckOutRow>> checkOuts(std::span<const std::int32_t> fileIds);
    std::optional<CheckOutRow> checkOut(std::int32_t fileId);

    /// The ids of files by folder and name without regard to case; 0 for none.
    struct NameInFolder {
        std::int32_t folderId = 0;
        zn::Text name;
    };
    std::vector<std::int32_t> find(std::span<const NameInFolder> asked);
    /// In the order of their names.
    std::vector<FileRow> inFolder(std::int32_t folderId);
    std::vector<std::int32_t> foldersOf(std::int32_t fileId);

private:
    Database& m_database;
    std::int32_t m_vaultId;
};

} // namespace zn::arkin
