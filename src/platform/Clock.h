#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace zn {

/// A flag that one thread sets and another waits for; a wait that sees it takes it back.
class WaitEvent {
public:
    void set()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_set = true;
        }
        m_changed.notify_all();
    }

    /// Waits in real time. True if the flag was set.
    bool waitFor(std::chrono::milliseconds duration)
    {
        std::unique_lock lock(m_mutex);
        const bool seen = m_changed.wait_for(lock, duration, [this] { return m_set; });
        m_set = false;
        return seen;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_set = false;
};

/// Now, and waiting. Every wait that the system prescribes goes through here, so that tests don't sleep.
class Clock {
public:
    virtual ~Clock() = default;

    /// Unix time in seconds.
    virtual std::int64_t now() = 0;
    virtual void sleep(std::chrono::milliseconds duration) = 0;
    /// Waits for the event, `duration` at most. True if it was set.
    virtual bool wait(WaitEvent& event, std::chrono::milliseconds duration) = 0;
};

} // namespace zn
