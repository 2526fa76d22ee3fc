#include "platform/linux/SystemClock.h"

#include <thread>

namespace zn {

std::int64_t SystemClock::now()
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(sinceEpoch).count();
}

void SystemClock::sleep(std::chrono::milliseconds duration) { std::this_thread::sleep_for(duration); }

bool SystemClock::wait(WaitEvent& event, std::chrono::milliseconds duration) { return event.waitFor(duration); }

} // namespace zn
