#pragma once

#include "arkin/tasks/Notice.h"
#include "arkin/tasks/ScheduledLaunch.h"
#include "arkin/tasks/TaskRunner.h"

namespace zn::arkin {

/// What a worker can't do by itself; it leaves undone what isn't there.
struct WorkerHelpers {
    UnattendedLaunch launch{};
    NoticeSender tell{};
};

/// Takes waiting runs of a vault, one after the other, and launches what is scheduled between them.
class Worker {
public:
    /// What a worker tells whoever started it.
    struct Listener {
        std::function<void(const RunInfo&)> started;
        RunWatcher progress;
        std::function<void(const RunInfo&)> ended;
        /// A run that this worker could not bring to its end: it was taken over.
        std::function<void(const RunInfo&, const std::string& sentence)> lost;
        /// A time that was due; the run may have ended already, and no other function tells of it then.
        std::function<void(const ScheduledRun&)> scheduled{};
    };
    struct Tally {
        int finished = 0;   ///< without errors and missing outputs
        int inPart = 0;     ///< with some of their outputs missing
        int others = 0;     ///< with all of them missing or with errors, cancelled, or lost
        bool asked = false; ///< it ended since somebody wanted it to
    };

    /// `interrupted` cancels the current run and ends the worker.
    Worker(TaskHost host, Listener listener, const std::atomic<bool>& interrupted, WorkerHelpers helpers = {});

    /// Works until it is interrupted or asked to stop (`WorkerStore::wantStop`); with `untilEmpty` until nothing
    /// waits and nothing is due any more.
    Tally work(bool untilEmpty);

private:
    bool launchOne(RoomWait& room, Tally& tally);
    void runOne(const RunClaim& claim, Tally& tally);

    TaskHost m_host;
    Listener m_listener;
    const std::atomic<bool>& m_interrupted;
    WorkerHelpers m_helpers;
};

} // namespace zn::arkin
