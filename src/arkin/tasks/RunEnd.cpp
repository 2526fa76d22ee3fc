#include "arkin/tasks/RunEnd.h"

#include "arkin/store/CheckOut.h"
#include "arkin/tasks/RunRow.h"

#include <fmt/format.h>

namespace zn::arkin {

using soci::use;
using zn::TaskRunState;

void giveBackToWaiting(RunStore& store, const RunInfo& run, TaskRunState state)
{
    const auto number = static_cast<std::int32_t>(state);
    store.database().session() << "UPDATE task_runs SET state = :state, claim = claim + 1, owner_host = '', "
                                  "owner_process = 0, owner_mark = 0, heartbeat_at = 0 WHERE id = :id",
        use(number), use(run.id);
    giveBackOfRuns(store.database(), run.id);
}

void endUnheld(RunStore& store, const RunInfo& run, TaskRunState state, const std::string& sentence, std::int64_t now)
{
    const long long at = now;
    const auto number = static_cast<std::int32_t>(state);
    store.database().session() << "UPDATE task_runs SET state = :state, claim = claim + 1, result_text = :text, "
                                  "ended_at = :at WHERE id = :id",
        use(number), use(sentence), use(at), use(run.id);
    giveBackOfRuns(store.database());
}

void giveBackOfRuns(Database& database, std::int32_t alsoOf)
{
    giveBackCheckOuts(database,
        fmt::format("SELECT c.file_id, c.folder_id, c.machine, c.base_version FROM check_outs c "
                    "LEFT JOIN task_runs r ON r.id = c.run_id "
                    "WHERE c.run_id <> 0 AND (r.id IS NULL OR r.id = {} OR r.state IN ({}, {}, {}, {}))",
            alsoOf, static_cast<int>(TaskRunState::Queued), static_cast<int>(TaskRunState::Finished),
            static_cast<int>(TaskRunState::Cancelled), static_cast<int>(TaskRunState::FinishedWithErrors)));
}

std::vector<RunInfo> workersGone(RunStore& store)
{
    auto taken = store.listTaken();
    std::erase_if(taken, [](const RunInfo& run) { return mayBeAlive(run.owner); });
    return taken;
}

} // namespace zn::arkin
