#include "arkin/tasks/RoomWait.h"

#include "arkin/store/Codes.h"

#include <cstdio>

namespace zn::arkin {

namespace {

constexpr std::chrono::seconds tryInterval{2};

} // namespace

bool RoomWait::await(const std::string& sentence)
{
    if (m_interrupted && *m_interrupted)
        return false;
    if (!m_waiting)
        std::fprintf(stderr, "arkin: %s Waits until there is room; Ctrl-C gives up.\n", sentence.c_str());
    m_waiting = true;
    m_clock.sleep(tryInterval);
    return true;
}

void RoomWait::patiently(const std::function<void()>& work)
{
    for (;;) {
        try {
            work();
            if (m_waiting)
                std::fprintf(stderr, "arkin: There is room again.\n");
            m_waiting = false;
            return;
        } catch (...) {
            const Failure failure = currentFailure();
            if (failure.status != E_ARK_DISK_FULL || !await(failure.sentence))
                throw;
        }
    }
}

} // namespace zn::arkin
