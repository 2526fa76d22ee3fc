#include "addin/session/CallGuard.h"

namespace zn {

namespace {

/// A macro that can end does so within a few hundred statements; one that is in the midst of a big file's conversion
/// doesn't.
constexpr int graceSeconds = 10;

} // namespace

CallGuard::CallGuard(Clock& clock, std::function<void()> askMacro, std::function<void()> endProcess)
    : m_clock(clock)
    , m_askMacro(std::move(askMacro))
    , m_endProcess(std::move(endProcess))
{
}

CallGuard::Scope::Scope(CallGuard& guard, std::chrono::seconds limit)
    : m_guard(guard)
{
    m_guard.begin(limit);
}

CallGuard::Scope::~Scope() { m_guard.end(); }

void CallGuard::requestStop()
{
    m_stopRequested = true;
    m_changed.set();
}

void CallGuard::begin(std::chrono::seconds limit)
{
    if (m_scopes++ > 0)
        return;
    m_limitHit = false;
    m_endedProcess = false;
    m_scopeEnded = false;
    m_changed.waitFor(std::chrono::milliseconds(0)); // the last scope's end
    m_thread = std::thread([this, limit] { watch(limit); });
}

void CallGuard::end()
{
    if (--m_scopes > 0)
        return;
    m_scopeEnded = true;
    m_changed.set();
    m_thread.join();
}

void CallGuard::watch(std::chrono::seconds limit)
{
    constexpr std::chrono::hours always{24};
    while (!m_scopeEnded && !m_stopRequested && !m_limitHit) {
        if (limit.count() == 0)
            m_changed.waitFor(always); // for nobody's sake but that of an event, so that no clock is asked
        else if (!m_clock.wait(m_changed, limit))
            m_limitHit = true;
    }
    if (m_scopeEnded)
        return;
    for (int waited = 0; waited < graceSeconds && !m_scopeEnded;) {
        // Again each second, since the macro's call may have been on its way only.
        m_askMacro();
        waited += m_clock.wait(m_changed, std::chrono::seconds(1)) ? 0 : 1;
    }
    if (m_scopeEnded)
        return;
    m_endedProcess = true;
    m_endProcess();
}

} // namespace zn
