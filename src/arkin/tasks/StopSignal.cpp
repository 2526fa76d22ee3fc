#include "arkin/tasks/StopSignal.h"

#include <utility>

namespace zn::arkin {

void StopSignal::setHandler(std::function<void()> handler)
{
    const std::lock_guard guard(m_mutex);
    m_handler = std::move(handler);
    if (m_given && m_handler)
        m_handler();
}

void StopSignal::give()
{
    const std::lock_guard guard(m_mutex);
    if (!std::exchange(m_given, true) && m_handler)
        m_handler();
}

} // namespace zn::arkin
