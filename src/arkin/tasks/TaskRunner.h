#pragma once

#include "arkin/tasks/RoomWait.h"
#include "arkin/tasks/RunInstance.h"
#include "arkin/tasks/TaskHost.h"

#include <atomic>

namespace zn::arkin {

/// Carries one taken run to its end, in this process and on this thread.
class TaskRunner {
public:
    /// `interrupted`, which a signal handler may set, turns into a cancel request; null for none.
    TaskRunner(TaskHost host, RunWatcher watcher = {}, const std::atomic<bool>* interrupted = nullptr);

    /// Loads the run's add-in, sends it the run command with the stored selection, and sees that the run has an end
    /// state: a cancelled run is finished as such, and a run that the add-in left without a report ends with errors
    /// and a sentence that says so. What the add-in has left checked out is given back, with a message each. Returns
    /// the run as it stands then. Raises `StatusError` E_ARK_RUN_TAKEN_OVER if another worker took the run in the
    /// meantime, and the database's failures.
    RunInfo run(const RunClaim& claim);

private:
    zn::Status callAddIn(const RunClaim& claim, const std::shared_ptr<RunInstance>& instance);
    void giveBackTheRest(const RunClaim& claim);
    void settle(const RunClaim& claim, zn::Status code, const std::string& failure);

    TaskHost m_host;
    RunWatcher m_watcher;
    const std::atomic<bool>* m_interrupted;
    RoomWait m_room;
};

} // namespace zn::arkin
