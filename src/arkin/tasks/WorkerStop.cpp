#include "arkin/tasks/WorkerStop.h"

#include "arkin/tasks/RunRequests.h"

#include <cerrno>
#include <csignal>
#include <cstring>

namespace zn::arkin {

namespace {

constexpr std::chrono::milliseconds lookInterval{50};
constexpr int looks = 20;

std::string nameOf(const WorkerInfo& worker)
{
    return "Worker " + std::to_string(worker.id) + " (process " + std::to_string(worker.process.process) + " on "
        + zn::toUtf8(worker.process.host) + ")";
}

/// Whether it is gone within a second.
bool sendAndAwait(const WorkerInfo& worker, int signal, zn::Clock& clock)
{
    if (kill(worker.process.process, signal) != 0 && errno != ESRCH)
        throw zn::StatusError(zn::E_ACCESSDENIED,
            nameOf(worker) + " can't be ended: " + std::strerror(errno) + ". It belongs to the user "
                + zn::toUtf8(worker.userName) + "; let it stop after its file instead.");
    for (int look = 0; look < looks && mayBeAlive(worker.process); ++look)
        clock.sleep(lookInterval);
    return !mayBeAlive(worker.process);
}

void endProcess(const WorkerInfo& worker, zn::Clock& clock)
{
    if (!isHere(worker.process))
        throw zn::StatusError(zn::E_INVALIDARG,
            nameOf(worker)
                + " runs on another machine: it can be ended at once only there. Let it stop after its file "
                  "instead.");
    // A service that dies by this signal has ended as it should, and isn't started anew.
    if (!sendAndAwait(worker, SIGHUP, clock) && !sendAndAwait(worker, SIGKILL, clock))
        throw zn::StatusError(zn::E_FAIL,
            nameOf(worker) + " doesn't end: the system can't stop it as long as it waits for a disk or the network.");
}

} // namespace

void stopWorker(const TaskHost& host, std::int32_t id, StopWhen when)
{
    WorkerStore workers(host.database, host.vaultId);
    const WorkerInfo worker = workers.get(id);
    const auto now = host.clock.now();
    if (isGone(worker, now))
        return workers.leave(id);
    workers.wantStop(id);
    if (when == StopWhen::AtOnce) {
        endProcess(worker, host.clock);
        workers.leave(id);
    } else if (when == StopWhen::AfterFile && worker.run) {
        RunStore runs(host.database, host.vaultId);
        requestCancel(runs, worker.run->id, now);
    }
}

} // namespace zn::arkin
