#include "platform/linux/ChildStart.h"

#include "platform/FileDescriptor.h"

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

/// The child's side, between fork and exec: only calls that are allowed there while other threads of the parent
/// hold locks. Reports a failure to `report`, which the exec closes.
[[noreturn]] void becomeProgram(char* const* arguments, char* const* environment, pid_t parent, int report)
{
    const auto fail = [report] {
        const int error = errno;
        [[maybe_unused]] const ssize_t written = ::write(report, &error, sizeof error);
        ::_exit(127);
    };
    // The parent may have died before the request was in force; then nobody would ever kill this child.
    if (::prctl(PR_SET_PDEATHSIG, SIGKILL) != 0 || ::getppid() != parent)
        fail();
    ::setpgid(0, 0);
    const int nothing = ::open("/dev/null", O_RDWR);
    if (nothing < 0 || ::dup2(nothing, STDIN_FILENO) < 0 || ::dup2(nothing, STDOUT_FILENO) < 0)
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

int reportedError(int report)
{
    int error = 0;
    ssize_t got = 0;
    do
        got = ::read(report, &error, sizeof error);
    while (got < 0 && errno == EINTR);
    return got == sizeof error ? error : 0;
}

} // namespace

std::optional<pid_t> startChild(
    const std::vector<std::string>& arguments, const std::vector<std::string>& moreEnvironment)
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
    const pid_t child = ::fork();
    if (child == 0)
        becomeProgram(argumentPointers.data(), environmentPointers.data(), parent, writer.number());
    if (child < 0)
        return std::nullopt;
    writer.close();
    if (const int error = reportedError(reader.number()); error != 0) {
        ::waitpid(child, nullptr, 0);
        errno = error;
        return std::nullopt;
    }
    return child;
}

} // namespace zn
