#include "platform/linux/ChildStart.h"

#include "platform/FileDescriptor.h"
#include "platform/linux/ChildGuard.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zn {

namespace {

std::vector<char*> pointersTo(const std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> environmentWith(const std::vector<std::string>& more)
{
    std::vector<std::string> all = more;
    for (char** entry = environ; *entry; ++entry) {
        const std::string text = *entry;
        const std::string name = text.substr(0, text.find('=') + 1);
        bool replaced = false;
        for (const std::string& other : more)
            replaced = replaced || other.starts_with(name);
        if (!replaced)
            all.push_back(text);
    }
    return all;
}

/// What the two new processes tell the starter: the program's number, and then an error if it couldn't be run.
struct Report {
    pid_t program;
    int error;
};

void tell(int report, const Report& content)
{
    [[maybe_unused]] const ssize_t written = ::write(report, &content, sizeof content);
}

/// The program's side, between fork and exec: only calls that are allowed there while other threads of the starter
/// hold locks. Reports a failure to `report`, which the exec closes.
[[noreturn]] void becomeProgram(
    char* const* arguments, char* const* environment, const ChildStreams& streams, pid_t parent, int report)
{
    const auto fail = [report] {
        tell(report, {0, errno});
        ::_exit(127);
    };
    // The parent may have died before the request was in force; then nobody would ever kill this child.
    if (::prctl(PR_SET_PDEATHSIG, SIGKILL) != 0 || ::getppid() != parent)
        fail();
    ::setpgid(0, 0);
    const int nothing = ::open("/dev/null", O_RDWR);
    if (nothing < 0 || ::dup2(streams.input < 0 ? nothing : streams.input, STDIN_FILENO) < 0
        || ::dup2(streams.output < 0 ? nothing : streams.output, STDOUT_FILENO) < 0
        || (streams.output >= 0 && ::dup2(streams.output, STDERR_FILENO) < 0))
        fail();
    // Marked instead of closed, so that the report of a failed exec still gets out.
    if (::close_range(3, ~0U, CLOSE_RANGE_CLOEXEC) != 0)
        fail();
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
    ::execve(arguments[0], arguments, environment);
    fail();
    ::_exit(127);
}

/// The guard's side: starts the program and stays with it. As restricted as `becomeProgram`.
[[noreturn]] void becomeGuard(
    char* const* arguments, char* const* environment, const ChildStreams& streams, pid_t parent, int report)
{
    if (!prepareGuard(parent))
        ::_exit(127);
    const pid_t self = ::getpid();
    const pid_t program = ::fork();
    if (program == 0)
        becomeProgram(arguments, environment, streams, self, report);
    tell(report, {program, program < 0 ? errno : 0});
    if (program < 0)
        ::_exit(127);
    ::close_range(0, ~0U, 0);
    guardProgram(program);
}

/// Reads until both processes have closed their ends. The last error counts.
Report readReport(int report)
{
    Report whole{0, 0};
    for (;;) {
        Report piece{};
        const ssize_t got = ::read(report, &piece, sizeof piece);
        if (got < 0 && errno == EINTR)
            continue;
        if (got != sizeof piece)
            return whole;
        whole.program = piece.program > 0 ? piece.program : whole.program;
        whole.error = piece.error != 0 ? piece.error : whole.error;
    }
}

} // namespace

std::optional<StartedChild> startChild(const std::vector<std::string>& arguments,
    const std::vector<std::string>& moreEnvironment, const ChildStreams& streams)
{
    const std::vector<std::string> environment = environmentWith(moreEnvironment);
    const std::vector<char*> argumentPointers = pointersTo(arguments);
    const std::vector<char*> environmentPointers = pointersTo(environment);
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        return std::nullopt;
    const FileDescriptor reader(ends[0]);
    FileDescriptor writer(ends[1]);
    const pid_t parent = ::getpid();
    const pid_t guard = ::fork();
    if (guard == 0)
        becomeGuard(argumentPointers.data(), environmentPointers.data(), streams, parent, writer.number());
    if (guard < 0)
        return std::nullopt;
    writer.close();
    const Report report = readReport(reader.number());
    if (report.error != 0 || report.program <= 0) {
        ::waitpid(guard, nullptr, 0);
        errno = report.error;
        return std::nullopt;
    }
    return StartedChild{report.program, guard};
}

} // namespace zn
