#pragma once

#include "arkin/tasks/TaskHost.h"
#include "arkin/tasks/WorkerStore.h"

namespace zn::arkin {

enum class StopWhen {
    AfterRun,  ///< it takes no other run
    AfterFile, ///< its run is cancelled, too
    AtOnce,    ///< its process is ended; the next worker begins the run anew
};

/// Stops a worker of any machine; at once only one of this machine. Forgets one that is gone. Raises `StatusError` with
/// a sentence.
void stopWorker(const TaskHost& host, std::int32_t id, StopWhen when);

} // namespace zn::arkin
