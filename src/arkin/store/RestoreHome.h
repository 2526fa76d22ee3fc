#pragma once

#include "arkin/store/Backup.h"

namespace zn::arkin {

struct RestoreSetting {
    std::string at; ///< as `BackupFolder::copyAt` takes it
    /// Moves a home that is there aside, instead of refusing it.
    bool replace = false;
};

struct RestoreReport {
    std::string copy; ///< its name
    std::int64_t contents = 0, bytes = 0;
    std::filesystem::path replaced; ///< where the former home is now; empty if there was none
    /// A sentence for each content that the backup has lost. The home is there without them.
    std::vector<std::string> problems;
};

/// Brings a whole home back from a backup: database, registry and archive. It is made as "HOME.restoring" and gets its
/// name when it is whole and durable; what an interrupted restore has left under that name is made again.
/// Raises `StatusError` with a sentence: for a home that is there and isn't empty, for a damaged copy of the database,
/// and while another restore makes the same home.
RestoreReport restoreHome(const std::filesystem::path& backup, const std::filesystem::path& home,
    const RestoreSetting& setting, const Progress& progress = {});

} // namespace zn::arkin
