#include "platform/linux/RunProgram.h"

#include "platform/FileDescriptor.h"
#include "platform/linux/ChildStart.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <optional>
#include <sys/mman.h>
#include <sys/wait.h>

namespace zn {

namespace {

constexpr std::chrono::milliseconds lookInterval{20};

/// The exit code; none at the limit, when nothing is left of the program.
std::optional<int> awaitEnd(const StartedChild& child, std::chrono::milliseconds limit, Clock& clock)
{
    int status = 0;
    for (std::chrono::milliseconds waited{0}; waited < limit; waited += lookInterval) {
        if (::waitpid(child.guard, &status, WNOHANG) != 0)
            return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        clock.sleep(lookInterval);
    }
    ::kill(child.guard, SIGTERM);
    ::waitpid(child.guard, &status, 0);
    return {};
}

/// Of the last 400 bytes.
std::string lastLine(const FileDescriptor& output)
{
    char bytes[400];
    const auto size = ::lseek(output.number(), 0, SEEK_END);
    const auto from = size > static_cast<off_t>(sizeof bytes) ? size - static_cast<off_t>(sizeof bytes) : 0;
    const ssize_t got = ::pread(output.number(), bytes, sizeof bytes, from);
    std::string text(bytes, got > 0 ? static_cast<std::size_t>(got) : 0);
    text.erase(text.find_last_not_of(" \r\n\t") + 1);
    return text.substr(text.find_last_of('\n') + 1);
}

} // namespace

std::string runProgram(const ProgramRun& run, Clock& clock)
{
    const auto& program = run.arguments.front();
    // Files in memory: neither side waits for the other.
    const FileDescriptor input(::memfd_create("input", MFD_CLOEXEC));
    const FileDescriptor output(::memfd_create("output", MFD_CLOEXEC));
    if (!input || !output || !input.writeAll(run.input) || ::lseek(input.number(), 0, SEEK_SET) != 0)
        return program + " can't be started: " + std::strerror(errno) + ".";
    const auto child = startChild(run.arguments, run.environment, {input.number(), output.number()});
    if (!child)
        return program + " can't be started: " + std::strerror(errno) + ".";
    const auto code = awaitEnd(*child, run.limit, clock);
    if (code == 0)
        return {};
    const auto said = lastLine(output);
    return program
        + (code ? " ended with " + std::to_string(*code)
                : " took longer than " + std::to_string(run.limit.count()) + " seconds and was ended")
        + (said.empty() ? "." : ": " + said);
}

} // namespace zn
