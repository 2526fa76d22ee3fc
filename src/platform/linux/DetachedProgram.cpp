#include "platform/linux/DetachedProgram.h"

#include "base/Status.h"
#include "platform/FileDescriptor.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zn {

namespace {

/// What the new processes tell the starter: the program's number, then an error if it couldn't be run.
struct Report {
    pid_t program;
    int error;
};

void tell(int report, const Report& content)
{
    [[maybe_unused]] const ssize_t written = ::write(report, &content, sizeof content);
}

/// The program's side, between fork and exec: only calls that are allowed there while other threads of the starter
/// hold locks.
[[noreturn]] void becomeProgram(char* const* arguments, int log, int report)
{
    const int nothing = ::open("/dev/null", O_RDONLY);
    sigset_t none;
    ::sigemptyset(&none);
    if (nothing >= 0 && ::dup2(nothing, STDIN_FILENO) >= 0 && ::dup2(log, STDOUT_FILENO) >= 0
        && ::dup2(log, STDERR_FILENO) >= 0 && ::chdir("/") == 0 && ::close_range(3, ~0U, CLOSE_RANGE_CLOEXEC) == 0
        && ::sigprocmask(SIG_SETMASK, &none, nullptr) == 0)
        ::execv(arguments[0], arguments);
    tell(report, {0, errno});
    ::_exit(127);
}

/// The process between, which ends at once: the program then has no parent here that would have to ask for its end.
[[noreturn]] void startAndEnd(char* const* arguments, int log, int report)
{
    ::setsid();
    const pid_t program = ::fork();
    if (program == 0)
        becomeProgram(arguments, log, report);
    tell(report, {program, program < 0 ? errno : 0});
    ::_exit(0);
}

/// The order in which the two processes write is open.
Report readReports(int from)
{
    Report whole{};
    Report part{};
    while (::read(from, &part, sizeof part) == static_cast<ssize_t>(sizeof part)) {
        whole.program = std::max(whole.program, part.program);
        whole.error = std::max(whole.error, part.error);
    }
    return whole;
}

[[noreturn]] void fail(const std::string& program, int error)
{
    throw StatusError(E_FAIL, program + " can't be started: " + std::strerror(error) + ".");
}

} // namespace

std::int32_t startDetached(const std::vector<std::string>& arguments, const std::filesystem::path& log)
{
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);
    const FileDescriptor output(::open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
    if (!output)
        throw StatusError(E_FAIL, "The log '" + log.string() + "' can't be written: " + std::strerror(errno) + ".");
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC) != 0)
        fail(arguments.front(), errno);
    const FileDescriptor read(ends[0]);
    FileDescriptor write(ends[1]);
    const pid_t between = ::fork();
    if (between == 0)
        startAndEnd(pointers.data(), output.number(), write.number());
    if (between < 0)
        fail(arguments.front(), errno);
    write = FileDescriptor();
    const Report report = readReports(read.number());
    ::waitpid(between, nullptr, 0);
    if (report.error != 0)
        fail(arguments.front(), report.error);
    return report.program;
}

} // namespace zn
