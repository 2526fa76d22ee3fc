#pragma once

#include "arkin/store/BackupFolder.h"

namespace zn::arkin {

using Progress = std::function<void(std::int64_t done, std::int64_t total)>;

struct BackupSetting {
    /// So many copies stay, the newest ones.
    int keep = 30;
    /// Reads what the backup holds already, too, and brings it again where it is damaged.
    bool verify = false;
};

struct BackupReport {
    std::string copy; ///< its name
    std::int64_t contents = 0, bytes = 0;
    std::int64_t newContents = 0, newBytes = 0; ///< of these, what the backup didn't hold yet
    int removedCopies = 0, removedContents = 0;
    /// A sentence for each content that the vault itself has lost and the backup doesn't hold either. The copy was made
    /// without them, and nothing older was removed.
    std::vector<std::string> problems;
};

/// Backs up the store and the registry into a folder; others go on working meanwhile, only a clean is refused. First a
/// copy of the databases is made, then the contents that it names are copied, then the copy gets its name: interrupted
/// anywhere, the copies from before are whole and the next backup goes on with the contents that are there.
/// Raises `StatusError` with a sentence.
BackupReport backUp(Store& store, const std::filesystem::path& registryFile, const std::filesystem::path& folder,
    const BackupSetting& setting, const Progress& progress = {});

struct BackupCheckReport {
    std::int64_t copies = 0, contents = 0, bytes = 0;
    std::vector<std::string> problems;
};

/// Verifies every copy and every content in a backup by its hash. Only reads.
BackupCheckReport checkBackup(const std::filesystem::path& folder, const Progress& progress = {});

} // namespace zn::arkin
