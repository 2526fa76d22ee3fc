#include "arkin/tasks/RunMonitor.h"

#include "arkin/store/Codes.h"
#include "arkin/tasks/RunRequests.h"

#include <cstdio>

namespace zn::arkin {

namespace {

constexpr std::chrono::milliseconds lookInterval{100};
constexpr std::chrono::seconds beatInterval{5};

} // namespace

RunMonitor::RunMonitor(
    const RunClaim& claim, zn::Clock& clock, const std::atomic<bool>* interrupted, StopSignal& cancelled)
    : m_claim(claim)
    , m_clock(clock)
    , m_interrupted(interrupted)
    , m_cancelled(cancelled)
    , m_thread([this] { watch(); })
{
}

RunMonitor::~RunMonitor()
{
    m_stopping = true;
    m_stop.set();
    m_thread.join();
}

void RunMonitor::requestCancelOnce(RunStore& store)
{
    if (m_cancelRequested || !m_interrupted || !*m_interrupted)
        return;
    m_cancelRequested = true;
    const auto run = store.get(m_claim.run().id);
    if (run.claim == m_claim.run().claim && !run.ended())
        requestCancel(store, run.id, m_clock.now());
}

/// A beat that fails says so, and the run goes on: the next one may succeed, and the report's own writes tell for
/// sure whether the run is still this worker's.
void RunMonitor::watch()
{
    auto lastBeat = std::chrono::steady_clock::now();
    bool told = false;
    while (!m_stopping) {
        try {
            Database database(m_claim.store().database().connection());
            RunStore store(database, m_claim.store().vaultId());
            while (!m_stopping) {
                requestCancelOnce(store);
                if (m_claim.cancelRequested(database))
                    m_cancelled.give();
                if (std::chrono::steady_clock::now() - lastBeat >= beatInterval) {
                    lastBeat = std::chrono::steady_clock::now();
                    if (!m_claim.beat(database, m_clock.now())) {
                        m_cancelled.give(); // another worker has the run, and must not meet this one's CAD process
                        return;
                    }
                }
                m_stop.waitFor(lookInterval);
            }
        } catch (...) {
            if (!told)
                std::fprintf(
                    stderr, "arkin: The worker's sign of life failed: %s\n", currentFailure().sentence.c_str());
            told = true;
            m_stop.waitFor(beatInterval);
        }
    }
}

} // namespace zn::arkin
