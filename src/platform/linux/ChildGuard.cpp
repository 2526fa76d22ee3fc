#include "platform/linux/ChildGuard.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zn {

namespace {

/// Killed processes are gone within a moment; one that hangs in the kernel isn't waited for longer than this.
constexpr int endLooks = 5000;
constexpr timespec endPause{0, 1'000'000};

sigset_t watchedSignals()
{
    sigset_t watched;
    ::sigemptyset(&watched);
    ::sigaddset(&watched, SIGCHLD);
    ::sigaddset(&watched, SIGTERM);
    return watched;
}

/// Kills whoever is a child at this moment; their own children become ours thereby. The kernel's list may leave one out
/// that ends meanwhile, which the next look finds. A kernel without the list leaves the program's group.
void killChildren(pid_t program)
{
    const int list = ::open("/proc/thread-self/children", O_RDONLY | O_CLOEXEC);
    if (list < 0) {
        ::kill(-program, SIGKILL);
        return;
    }
    char chunk[4096];
    pid_t number = 0;
    for (ssize_t got = 0; (got = ::read(list, chunk, sizeof chunk)) > 0;) {
        for (ssize_t i = 0; i < got; ++i) {
            if (chunk[i] >= '0' && chunk[i] <= '9') {
                number = number * 10 + (chunk[i] - '0');
            } else if (number > 0) {
                ::kill(number, SIGKILL);
                number = 0;
            }
        }
    }
    ::close(list);
}

/// Takes the ends of children; that of the program goes to `code`. False when no child is left.
bool reap(pid_t program, int& code)
{
    for (;;) {
        int status = 0;
        const pid_t ended = ::waitpid(-1, &status, WNOHANG);
        if (ended == 0)
            return true;
        if (ended < 0)
            return errno == EINTR;
        if (ended == program)
            code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
}

} // namespace

bool prepareGuard(pid_t parent)
{
    sigset_t all;
    ::sigfillset(&all);
    ::signal(SIGCHLD, SIG_DFL);
    ::setpgid(0, 0); // a terminal's Ctrl+C isn't for it
    return ::sigprocmask(SIG_SETMASK, &all, nullptr) == 0 && ::prctl(PR_SET_CHILD_SUBREAPER, 1) == 0
        && ::prctl(PR_SET_PDEATHSIG, SIGTERM) == 0 && ::getppid() == parent;
}

void guardProgram(pid_t program)
{
    ::prctl(PR_SET_NAME, "zn-guard");
    const sigset_t watched = watchedSignals();
    constexpr int running = -1;
    int code = running;
    bool asked = false;
    while (code == running && !asked) {
        // An end that came before the first wait has left its signal pending.
        asked = ::sigwaitinfo(&watched, nullptr) == SIGTERM;
        reap(program, code);
    }
    const bool byItself = code != running;
    for (int look = 0; look < endLooks; ++look) {
        killChildren(program);
        if (!reap(program, code))
            break;
        ::nanosleep(&endPause, nullptr);
    }
    if (byItself)
        ::_exit(code);
    ::kill(::getpid(), SIGKILL);
    ::_exit(code);
}

} // namespace zn
