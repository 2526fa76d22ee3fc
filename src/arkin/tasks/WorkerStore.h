#pragma once

#include "arkin/tasks/RunStore.h"

#include <optional>

namespace zn::arkin {

/// A process that takes runs. Times are Unix seconds.
struct WorkerInfo {
    std::int32_t id = 0; ///< 0 for a process that was started for its one run
    zn::Text userName;   ///< in whose name it works; of a process with one run, who launched that
    ProcessMark process;
    std::int64_t begunAt = 0;
    std::int64_t since = 0;   ///< when it began to wait, or took its run
    std::int64_t heardAt = 0; ///< its last sign of life
    bool stopWanted = false;  ///< it ends as soon as it has no run
    std::optional<RunInfo> run;
};

/// How often a worker that waits gives a sign of life, in seconds; one at work gives that of its run.
inline constexpr std::int64_t waitingBeat = 20;

/// Whether its process went away without having said so, or hasn't been heard of for `heartbeatLimit`.
bool isGone(const WorkerInfo& worker, std::int64_t now);
/// "waiting", "at work", "stops", "stops after its run" or "gone".
zn::Text workerStateText(const WorkerInfo& worker, std::int64_t now);

/// The workers of one vault.
class WorkerStore {
public:
    /// Brings the task tables to their last step.
    WorkerStore(Database& database, std::int32_t vaultId);

    /// Notes a worker that has just begun, and returns its number. Forgets those of its machine whose processes are
    /// gone, and of others those that haven't been heard of for a day.
    std::int32_t enter(zn::TextView userName, const ProcessMark& process, std::int64_t now);
    void leave(std::int32_t id);
    /// A sign of life of a worker that waits since that time. False if the database doesn't have it any more, as
    /// happens to one that has slept with its machine.
    bool beat(std::int32_t id, std::int64_t since, std::int64_t now);
    bool isStopWanted(std::int32_t id);
    void wantStop(std::int32_t id);

    /// In the order of their numbers; behind them the processes that were started for one run.
    std::vector<WorkerInfo> list();
    /// Raises `StatusError` E_INVALIDARG with a sentence if there is no such worker.
    WorkerInfo get(std::int32_t id);

private:
    void forgetGone(std::int64_t now);

    Database& m_database;
    std::int32_t m_vaultId;
};

} // namespace zn::arkin
