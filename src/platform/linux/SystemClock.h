#pragma once

#include "platform/Clock.h"

namespace zn {

/// The machine's clock: real time, real waits.
class SystemClock : public Clock {
public:
    std::int64_t now() override;
    void sleep(std::chrono::milliseconds duration) override;
    bool wait(WaitEvent& event, std::chrono::milliseconds duration) override;
};

} // namespace zn
