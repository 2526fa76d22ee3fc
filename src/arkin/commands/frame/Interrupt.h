#pragma once

#include <atomic>

namespace zn::arkin {

/// While it lives, the first Ctrl-C (or SIGTERM) sets a flag and the second, half a second later or more, ends
/// the process at once. The worker's children end with it. A Ctrl-C that comes when the work is over finds nothing to
/// stop: the process still ends with the work's exit code.
class Interrupt {
public:
    Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;
    ~Interrupt();

    const std::atomic<bool>& flag() const;
};

} // namespace zn::arkin
