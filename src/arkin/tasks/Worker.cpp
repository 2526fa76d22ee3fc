#include "arkin/tasks/Worker.h"

#include "arkin/store/Codes.h"

#include "arkin/tasks/RoomWait.h"
#include "arkin/tasks/WorkerStore.h"

namespace zn::arkin {

namespace {

constexpr std::chrono::milliseconds lookInterval{1000};

/// The worker's row in the database, while it has no run. A worker that ends by a failure leaves it behind.
class Presence {
public:
    Presence(const TaskHost& host, RoomWait& room)
        : m_host(host)
        , m_room(room)
        , m_store(host.database, host.vaultId)
    {
        enter();
    }

    /// Whether it is to go on. Gives a sign of life when it is time for one.
    bool isWanted()
    {
        const auto now = m_host.clock.now();
        if (now - m_beatAt >= waitingBeat)
            m_room.patiently([&] { beat(now); });
        return !m_store.isStopWanted(m_id);
    }
    /// A run has ended.
    void beginToWait()
    {
        m_since = m_host.clock.now();
        m_room.patiently([&] { beat(m_since); });
    }
    void leave()
    {
        m_room.patiently([&] { m_store.leave(m_id); });
    }

private:
    void enter()
    {
        m_since = m_beatAt = m_host.clock.now();
        m_room.patiently([&] { m_id = m_store.enter(m_host.userName, thisProcess(), m_since); });
    }
    void beat(std::int64_t now)
    {
        m_beatAt = now;
        if (!m_store.beat(m_id, m_since, now))
            enter();
    }

    const TaskHost& m_host;
    RoomWait& m_room;
    WorkerStore m_store;
    std::int32_t m_id = 0;
    std::int64_t m_since = 0;
    std::int64_t m_beatAt = 0;
};

} // namespace

Worker::Worker(TaskHost host, Listener listener, const std::atomic<bool>& interrupted, WorkerHelpers helpers)
    : m_host(std::move(host))
    , m_listener(std::move(listener))
    , m_interrupted(interrupted)
    , m_helpers(std::move(helpers))
{
}

Worker::Tally Worker::work(bool untilEmpty)
{
    Tally tally;
    RunStore store(m_host.database, m_host.vaultId);
    RoomWait room(m_host.clock, &m_interrupted);
    Presence presence(m_host, room);
    while (!m_interrupted) {
        tally.asked = !presence.isWanted();
        if (tally.asked)
            break;
        // What ended without a worker, such as a run that was cancelled in the queue, is told of here, too.
        if (m_helpers.tell)
            room.patiently([&] { sendNotices(m_host, m_helpers.tell); });
        if (m_helpers.launch && launchOne(room, tally))
            continue;
        std::optional<RunClaim> claim;
        room.patiently([&] { claim = RunClaim::takeNext(store, thisProcess(), m_host.clock.now()); });
        if (claim) {
            runOne(*claim, tally);
            presence.beginToWait();
        } else if (untilEmpty) {
            break;
        } else {
            m_host.clock.sleep(lookInterval);
        }
    }
    presence.leave();
    return tally;
}

/// What is due goes into the queue behind what waits there. Whether there may be more.
bool Worker::launchOne(RoomWait& room, Tally& tally)
{
    std::optional<ScheduledRun> launched;
    room.patiently([&] { launched = launchWhatIsDue(m_host, m_helpers.launch); });
    if (!launched)
        return false;
    tally.others += launched->run.ended() ? 1 : 0;
    m_listener.scheduled(*launched);
    return true;
}

void Worker::runOne(const RunClaim& claim, Tally& tally)
{
    m_listener.started(claim.run());
    try {
        TaskRunner runner(m_host, m_listener.progress, &m_interrupted);
        const auto run = runner.run(claim);
        (run.wentWell() ? tally.finished : run.wentWellInPart() ? tally.inPart : tally.others)++;
        m_listener.ended(run);
    } catch (const zn::StatusError& error) {
        if (error.status() != E_ARK_RUN_TAKEN_OVER)
            throw;
        ++tally.others;
        m_listener.lost(claim.run(), error.what());
    }
}

} // namespace zn::arkin
