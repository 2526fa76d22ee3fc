#include "arkin/tasks/RunRequests.h"

#include "arkin/tasks/RunEnd.h"

#include <soci/soci.h>

namespace zn::arkin {

using soci::use;
using zn::TaskRunState;

namespace {

void setState(RunStore& store, std::int32_t runId, TaskRunState state)
{
    const auto number = static_cast<std::int32_t>(state);
    store.database().session() << "UPDATE task_runs SET state = :state WHERE id = :id", use(number), use(runId);
}

[[noreturn]] void refuse(const RunInfo& run, const std::string& why)
{
    throw zn::StatusError(zn::E_INVALIDARG, "Run " + std::to_string(run.id) + " " + why);
}

/// Reads the run, lets `change` act on it, and reads it again.
template <class Change> RunInfo inTransaction(RunStore& store, std::int32_t runId, Change change)
{
    Transaction transaction(store.database());
    const auto before = store.get(runId);
    change(before);
    auto after = store.get(runId);
    transaction.commit();
    return after;
}

} // namespace

RunInfo requestCancel(RunStore& store, std::int32_t runId, std::int64_t now)
{
    return inTransaction(store, runId, [&](const RunInfo& run) {
        if (run.state == TaskRunState::Cancelled)
            return;
        if (run.ended())
            refuse(run, "has ended already (" + zn::toUtf8(stateText(run, now)) + "): there is nothing to cancel.");
        if (!run.taken())
            endUnheld(store, run, TaskRunState::Cancelled, "The run was cancelled before it started.", now);
        else if (workerDied(run, now))
            endUnheld(store, run, TaskRunState::Cancelled,
                "The run was cancelled after its worker had died. What it had checked out was given back.", now);
        else
            setState(store, runId, TaskRunState::CancelRequested);
    });
}

RunInfo requestSuspend(RunStore& store, std::int32_t runId, std::int64_t now)
{
    return inTransaction(store, runId, [&](const RunInfo& run) {
        if (run.ended())
            refuse(run, "has ended already (" + zn::toUtf8(stateText(run, now)) + "): there is nothing to suspend.");
        if (workerDied(run, now))
            refuse(run, "has lost its worker: 'arkin task run' starts it again, 'arkin task cancel' ends it.");
        if (run.state == TaskRunState::CancelRequested)
            refuse(run, "is being cancelled: it can't be suspended any more.");
        if (run.state == TaskRunState::Queued)
            setState(store, runId, TaskRunState::Suspended);
        else if (run.state != TaskRunState::Suspended)
            setState(store, runId, TaskRunState::SuspendRequested);
    });
}

RunInfo requestResume(RunStore& store, std::int32_t runId, std::int64_t now)
{
    return inTransaction(store, runId, [&](const RunInfo& run) {
        if (run.ended())
            refuse(run, "has ended already (" + zn::toUtf8(stateText(run, now)) + "): there is nothing to resume.");
        if (workerDied(run, now) || (run.state == TaskRunState::Suspended && !run.taken()))
            giveBackToWaiting(store, run, TaskRunState::Queued);
        else if (run.state == TaskRunState::Suspended || run.state == TaskRunState::SuspendRequested)
            setState(store, runId, TaskRunState::ResumeRequested);
        else if (run.state != TaskRunState::ResumeRequested)
            refuse(run, "isn't suspended (" + zn::toUtf8(stateText(run, now)) + "): there is nothing to resume.");
    });
}

} // namespace zn::arkin
