#pragma once

#include "arkin/store/Backup.h"
#include "arkin/store/Schema.h"

namespace zn::arkin {

struct RepairSetting {
    /// Where contents and rows are brought back from; none mends only what `accepted` names.
    std::optional<std::filesystem::path> backup;
    /// Damaged rows that are right as they stand, each "table:row" as the check names them.
    std::vector<std::string> accepted;
    /// Says what would be done, and changes nothing.
    bool dryRun = false;
    /// Whose rows are looked at.
    std::vector<const SchemaArea*> areas = {&vaultSchema};
    /// What else is wrong after the work; called at its end.
    std::function<std::vector<std::string>()> otherProblems;
};

struct RepairFinding {
    std::string problem; ///< the check's sentence
    bool mended = false; ///< of a dry run: can be
    std::string how;     ///< by what it was mended, or why it wasn't; without a full stop
};

/// Mends what a check finds, as far as a backup of this store or its owner's word allows. Each row is mended in a
/// transaction of its own, with a record of what stood there; contents come in as those of a check-in do. Afterwards
/// everything is checked again, and what is still wrong is among the findings.
/// Raises `StatusError` with a sentence, with nothing done: for a database file that is damaged itself, a backup of
/// another vault, and a row that is to be accepted and isn't damaged.
std::vector<RepairFinding> repairStore(Store& store, const RepairSetting& setting, const Progress& progress = {});

} // namespace zn::arkin
