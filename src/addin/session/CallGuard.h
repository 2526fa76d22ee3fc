#pragma once

#include "platform/Clock.h"

#include <atomic>
#include <functional>
#include <thread>

namespace zn {

/// Gets calls back from a CAD process that doesn't answer: when somebody wants the run stopped, or when a file takes
/// longer than its task allows. The macro that runs is asked to end first; ten seconds later the process is ended, by
/// which every call comes back.
///
/// All but `requestStop` and the questions belong to the run's thread.
class CallGuard {
public:
    /// `askMacro` and `endProcess` are called on a thread of the guard's, `endProcess` at any moment of a scope.
    CallGuard(Clock& clock, std::function<void()> askMacro, std::function<void()> endProcess);
    CallGuard(const CallGuard&) = delete;
    CallGuard& operator=(const CallGuard&) = delete;

    /// Calls of the process are made inside of scopes. Of scopes inside one another the outermost counts.
    class Scope {
    public:
        /// `limit` is for the whole scope, 0 for none.
        explicit Scope(CallGuard& guard, std::chrono::seconds limit = {});
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        ~Scope();

    private:
        CallGuard& m_guard;
    };

    /// A new run begins, which nobody has asked to stop.
    void forgetStop() { m_stopRequested = false; }
    /// Never waits. May be called from any thread.
    void requestStop();

    bool stopRequested() const { return m_stopRequested; }
    /// Whether the time of the present scope, or else of the last, has run out.
    bool limitHit() const { return m_limitHit; }
    /// Whether the macro didn't end when it was asked to, so that its process was ended.
    bool endedProcess() const { return m_endedProcess; }
    /// The process is being ended, and no other may be started in this scope.
    bool hasFired() const { return m_stopRequested || m_limitHit; }

private:
    void begin(std::chrono::seconds limit);
    void end();
    void watch(std::chrono::seconds limit);

    Clock& m_clock;
    std::function<void()> m_askMacro;
    std::function<void()> m_endProcess;
    std::atomic<bool> m_stopRequested = false;
    std::atomic<bool> m_limitHit = false;
    std::atomic<bool> m_endedProcess = false;
    std::atomic<bool> m_scopeEnded = true;
    int m_scopes = 0;
    /// Set when the scope ends or a stop is requested.
    WaitEvent m_changed;
    std::thread m_thread;
};

} // namespace zn
