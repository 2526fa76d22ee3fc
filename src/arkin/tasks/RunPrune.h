#pragma once

#include <cstdint>

namespace zn {
class Registry;
}

namespace zn::arkin {

class Database;

/// How many days the records of ended runs are kept: the machine's value "KeepRunsDays" below "Software\Arkin", or 90.
/// 0 keeps them for ever.
int daysRunsAreKept(zn::Registry& registry);

/// Removes what the database has of runs of the vault that ended before the time (seconds since 1970): the run, its
/// variables, files, outputs and messages. A run that has left files checked out stays, and so do the logs in the
/// vault. Returns how many went.
int pruneRuns(Database& database, std::int32_t vaultId, std::int64_t before);

/// Removes the templates and settings that no run names any more. Inside a transaction.
void dropUnusedTexts(Database& database);

constexpr std::int64_t secondsOfDay = std::int64_t{24} * 60 * 60;

} // namespace zn::arkin
