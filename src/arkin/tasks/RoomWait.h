#pragma once

#include "platform/Clock.h"

#include <atomic>
#include <functional>
#include <string>

namespace zn::arkin {

/// How a worker gets over a full disk: it says so on its standard error, and does what it was about to do again every
/// few seconds until there is room, or until it is asked to stop.
class RoomWait {
public:
    /// `interrupted` may be null; both outlive the object.
    RoomWait(zn::Clock& clock, const std::atomic<bool>* interrupted)
        : m_clock(clock)
        , m_interrupted(interrupted)
    {
    }

    /// `work` must be able to begin anew after a failure. Raises its failures, a full disk only if it is asked to stop.
    void patiently(const std::function<void()>& work);
    /// Waits a while; `sentence` tells what is full. False if it is asked to stop.
    bool await(const std::string& sentence);

private:
    zn::Clock& m_clock;
    const std::atomic<bool>* m_interrupted;
    bool m_waiting = false;
};

} // namespace zn::arkin
