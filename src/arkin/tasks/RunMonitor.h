#pragma once

#include "arkin/tasks/RunClaim.h"
#include "arkin/tasks/StopSignal.h"
#include "platform/Clock.h"

#include <atomic>
#include <thread>

namespace zn::arkin {

/// A thread beside a run, on a connection of its own: it tells the database that the worker lives, turns a person's
/// interruption of this process into a cancel request for the run, and tells the run's add-in of such a request.
class RunMonitor {
public:
    /// `interrupted` may be set by a signal handler; null for none. `cancelled` is given when the run is to be
    /// cancelled. Both outlive the monitor.
    RunMonitor(const RunClaim& claim, zn::Clock& clock, const std::atomic<bool>* interrupted, StopSignal& cancelled);
    RunMonitor(const RunMonitor&) = delete;
    RunMonitor& operator=(const RunMonitor&) = delete;
    ~RunMonitor();

private:
    void watch();
    void requestCancelOnce(RunStore& store);

    RunClaim m_claim;
    zn::Clock& m_clock;
    const std::atomic<bool>* m_interrupted;
    StopSignal& m_cancelled;
    bool m_cancelRequested = false;
    zn::WaitEvent m_stop;
    std::atomic<bool> m_stopping = false;
    std::thread m_thread;
};

} // namespace zn::arkin
