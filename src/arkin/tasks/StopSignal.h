#pragma once

#include <functional>
#include <mutex>

namespace zn::arkin {

/// The way from whoever notices that a run shall end to the add-in that carries it out, between threads.
class StopSignal {
public:
    /// Takes the place of the handler before; an empty one waits until a call that is under way has returned. A signal
    /// that was given already calls the new handler at once.
    void setHandler(std::function<void()> handler);
    /// Calls the handler, the first time only.
    void give();

private:
    std::mutex m_mutex;
    std::function<void()> m_handler;
    bool m_given = false;
};

} // namespace zn::arkin
