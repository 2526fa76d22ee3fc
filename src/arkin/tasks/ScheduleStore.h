#pragma once

#include "arkin/store/Database.h"
#include "arkin/tasks/ScheduleTime.h"
#include "contracts/host/Records.h"

#include <optional>
#include <vector>

namespace zn::arkin {

/// When a task is launched by itself, and on what. Times are Unix seconds, 0 for never.
struct Schedule {
    std::int32_t id = 0;
    zn::Text taskName; ///< the task may be gone, or come again
    zn::Text userName; ///< in whose name the runs are
    ScheduleTime time;
    zn::ArkSelection items;   ///< by their numbers in the vault; their paths are those of the day of the making
    bool onlyChanged = false; ///< its runs leave out files that an earlier run has done already
    std::int64_t createdAt = 0;
    std::int64_t nextAt = 0;
    std::int64_t lastDue = 0; ///< when it should have been launched the last time
    std::int64_t lastAt = 0;  ///< when a worker came to that
    std::int32_t lastRun = 0;
    std::string lastSentence; ///< what was the matter then; empty when all was well
};

/// What came of a time that was due.
struct ScheduleOutcome {
    std::int64_t at = 0;
    std::int64_t nextAt = 0;
    std::int32_t run = 0;
    std::string sentence;
};

/// The schedules of one vault.
class ScheduleStore {
public:
    /// Brings the task tables to their last step.
    ScheduleStore(Database& database, std::int32_t vaultId);

    /// Stores a new schedule with `nextAt` as it says, and returns its number.
    std::int32_t add(const Schedule& schedule);
    /// In the order of their numbers; those of one task only if `taskName` isn't empty.
    std::vector<Schedule> list(zn::TextView taskName = {});
    /// The one that has been due the longest, if any is.
    std::optional<Schedule> due(std::int64_t now);
    /// Notes the outcome, unless another worker has been quicker with the same time: then false. Inside a write
    /// transaction.
    bool settle(const Schedule& schedule, const ScheduleOutcome& outcome);
    void remove(std::int32_t id);

    Database& database() { return m_database; }

private:
    std::vector<Schedule> select(const std::string& condition, std::int64_t now);
    zn::ArkSelection itemsOf(std::int32_t id);

    Database& m_database;
    std::int32_t m_vaultId;
};

} // namespace zn::arkin
