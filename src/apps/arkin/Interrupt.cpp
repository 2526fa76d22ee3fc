#include "Interrupt.h"

#include <csignal>
#include <unistd.h>

namespace arkin {

namespace {

std::atomic<bool> interrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free);

extern "C" void onInterrupt(int signal)
{
    static const char message[] = "\narkin: Stopping after the file at hand; once more stops at once.\n";
    interrupted = true;
    std::signal(signal, SIG_DFL);
    // A failed write leaves nothing to do: the message is a courtesy.
    [[maybe_unused]] const auto written = write(STDERR_FILENO, message, sizeof message - 1);
}

} // namespace

Interrupt::Interrupt()
{
    interrupted = false;
    std::signal(SIGINT, onInterrupt);
    std::signal(SIGTERM, onInterrupt);
}

Interrupt::~Interrupt()
{
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
}

const std::atomic<bool>& Interrupt::flag() const { return interrupted; }

} // namespace arkin
