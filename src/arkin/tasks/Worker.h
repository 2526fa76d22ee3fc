#pragma once

#include "arkin/tasks/TaskRunner.h"

namespace zn::arkin {

/// Takes waiting runs of a vault, one after the other.
class Worker {
public:
    /// What a worker tells whoever started it.
    struct Listener {
        std::function<void(const RunInfo&)> started;
        RunWatcher progress;
        std::function<void(const RunInfo&)> ended;
        /// A run that this worker could not bring to its end: it was taken over.
        std::function<void(const RunInfo&, const std::string& sentence)> lost;
    };
    struct Tally {
        int finished = 0; ///< without errors and missing outputs
        int inPart = 0;   ///< with some of their outputs missing
        int others = 0;   ///< with all of them missing or with errors, cancelled, or lost
    };

    /// `interrupted` cancels the current run and ends the worker.
    Worker(TaskHost host, Listener listener, const std::atomic<bool>& interrupted);

    /// Works until it is interrupted; with `untilEmpty` until nothing waits any more.
    Tally work(bool untilEmpty);

private:
    void runOne(const RunClaim& claim, Tally& tally);

    TaskHost m_host;
    Listener m_listener;
    const std::atomic<bool>& m_interrupted;
};

} // namespace zn::arkin
