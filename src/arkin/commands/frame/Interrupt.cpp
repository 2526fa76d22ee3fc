#include "arkin/commands/frame/Interrupt.h"

#include <csignal>
#include <cstdint>
#include <ctime>
#include <unistd.h>

namespace zn::arkin {

namespace {

/// Shells and wrappers often deliver one Ctrl-C twice, to the process and to its group.
constexpr std::int64_t sameInterrupt = 500; // milliseconds

std::atomic<bool> working = false;
std::atomic<bool> interrupted = false;
std::atomic<std::int64_t> interruptedAt = 0;
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<std::int64_t>::is_always_lock_free);

std::int64_t milliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000;
}

extern "C" void onInterrupt(int signal)
{
    static const char message[] = "\narkin: Stopping after the file at hand; once more stops at once.\n";
    if (interrupted) {
        if (milliseconds() - interruptedAt >= sameInterrupt) {
            std::signal(signal, SIG_DFL);
            std::raise(signal);
        }
        return;
    }
    interruptedAt = milliseconds();
    interrupted = true;
    if (!working)
        return;
    // A failed write leaves nothing to do: the message is a courtesy.
    [[maybe_unused]] const auto written = write(STDERR_FILENO, message, sizeof message - 1);
}

} // namespace

Interrupt::Interrupt()
{
    interrupted = false;
    working = true;
    std::signal(SIGINT, onInterrupt);
    std::signal(SIGTERM, onInterrupt);
}

Interrupt::~Interrupt() { working = false; }

const std::atomic<bool>& Interrupt::flag() const { return interrupted; }

} // namespace zn::arkin
