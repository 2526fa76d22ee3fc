#include "zentrel/kernel/ChildProcess.h"

#include "contracts/documents/DocumentError.h"
#include "platform/KernelConfinement.h"
#include "zentrel/kernel/KernelLimits.h"
#include "zentrel/kernel/KernelReason.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <new>
#include <poll.h>
#include <Standard_OutOfMemory.hxx>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>

namespace zn::zentrel {

namespace {

/// What stands before an answer, which is a result or a sentence.
struct AnswerHead {
    char kind = succeeded; ///< or 'a' plus the kind of the error
    std::size_t length = 0;
    std::size_t memory = 0; ///< what the child has taken

    static constexpr char succeeded = '+';
};

/// How often a waiting parent looks whether its user has gone, in ms.
constexpr int lookInterval = 250;

/// A child's answer may be this part of its memory.
constexpr std::size_t answersPart = 8;

/// The address space of this process, in bytes.
std::size_t memoryInUse()
{
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

std::size_t mostMemory() { return kernelLimits().memory > 0 ? kernelLimits().memory : freeMemory() / 2; }

void limitResource(__rlimit_resource_t resource, rlim_t soft, rlim_t hard)
{
    rlimit before{};
    getrlimit(resource, &before);
    // A child of a child can't have more than its parent.
    const rlimit limit{std::min(soft, before.rlim_max), std::min(hard, before.rlim_max)};
    setrlimit(resource, &limit);
}

constexpr const char* outOfMemory = "ran out of memory";
/// The exit code of a child that couldn't even say so.
constexpr int outOfMemoryCode = 71;

/// The kernel asks for memory where nothing may be raised.
[[noreturn]] void endWithoutMemory()
{
    try {
        if (const auto raised = std::current_exception())
            std::rethrow_exception(raised);
    } catch (const Standard_OutOfMemory&) {
        _exit(outOfMemoryCode);
    } catch (const std::bad_alloc&) {
        _exit(outOfMemoryCode);
    } catch (...) {
        std::abort();
    }
    std::abort();
}

/// A child neither outlives its parent nor leaves a core file, handles no signal as the parent does, and is the first
/// to go when the machine runs out of memory.
void limitChild(pid_t parent, std::size_t growth)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(1);
    for (const int signal : {SIGABRT, SIGTERM, SIGINT, SIGXCPU, SIGSEGV, SIGBUS, SIGFPE, SIGILL})
        std::signal(signal, SIG_DFL);
    std::ofstream("/proc/self/oom_score_adj") << 1000;
    limitResource(RLIMIT_CORE, 0, 0);
    const rlim_t memory = memoryInUse() + growth;
    limitResource(RLIMIT_AS, memory, memory);
    std::set_terminate(endWithoutMemory);
    becomeKernelProcess();
    // The kernel tells its progress on the standard output, where it would get among a caller's own lines.
    Message::DefaultMessenger()->ChangePrinters().Clear();
}

std::string endText(int status, const KernelTask& task)
{
    if (WIFEXITED(status) && WEXITSTATUS(status) == outOfMemoryCode)
        return outOfMemory;
    if (!WIFSIGNALED(status))
        return "ended without an answer";
    if (WTERMSIG(status) == SIGXCPU)
        return "came to no end within " + std::to_string(task.limit.count()) + " seconds of computing";
    if (WTERMSIG(status) == SIGKILL)
        return "was stopped by the system, which may be out of memory,";
    return std::string("crashed (") + strsignal(WTERMSIG(status)) + ")";
}

std::string kernelText(const std::string& what, const KernelTask& task)
{
    return "The geometry kernel " + what + " while " + task.doing + " the file " + quoted(task.file) + ".";
}

bool isCrash(int status) { return WIFSIGNALED(status) && WTERMSIG(status) != SIGXCPU && WTERMSIG(status) != SIGKILL; }

[[noreturn]] void raiseKernel(const std::string& what, const KernelTask& task)
{
    throw DocumentError(ErrorKind::Kernel, kernelText(what, task));
}

[[noreturn]] void raiseNoProcess()
{
    throw DocumentError(ErrorKind::Kernel, std::string("No process can be started: ") + std::strerror(errno) + ".");
}

} // namespace

std::size_t mostAnswered() { return mostMemory() / answersPart; }

void limitComputing(std::chrono::seconds limit)
{
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto soft = static_cast<rlim_t>(used.ru_utime.tv_sec + used.ru_stime.tv_sec + 1 + limit.count());
    limitResource(RLIMIT_CPU, soft, RLIM_INFINITY);
}

ChildProcess::ChildProcess(const std::vector<std::filesystem::path>& folders,
    const std::function<void(const zn::FileDescriptor& socket)>& work)
    : m_owner(getpid())
    , m_thread(gettid())
    , m_mostMemory(mostMemory())
    , m_atFirst(memoryInUse())
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        raiseNoProcess();
    m_socket = zn::FileDescriptor(ends[0]);
    zn::FileDescriptor childsEnd(ends[1]);
    // What waits in the output buffers would be written by both processes.
    std::fflush(stdout);
    std::cout.flush();
    m_process = fork();
    if (m_process < 0)
        raiseNoProcess();
    if (m_process == 0) {
        m_socket.close();
        limitChild(m_owner, m_mostMemory);
        zn::confineWritesOfThisThread(folders);
        work(childsEnd);
        _exit(0);
    }
}

ChildProcess::~ChildProcess()
{
    if (m_process < 0 || m_owner != getpid())
        return;
    kill(m_process, SIGKILL);
    while (waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) { }
}

bool ChildProcess::isAlive() const
{
    siginfo_t facts{};
    const bool stays = m_thread == m_owner || m_thread == gettid();
    return m_owner == getpid() && stays
        && waitid(P_PID, static_cast<id_t>(m_process), &facts, WEXITED | WNOHANG | WNOWAIT) == 0 && facts.si_pid == 0;
}

void ChildProcess::raiseEnd(const KernelTask& task)
{
    int status = 0;
    while (waitpid(m_process, &status, 0) < 0 && errno == EINTR) { }
    m_process = -1;
    m_wasAbleToEnd = !(WIFSIGNALED(status) && WTERMSIG(status) == SIGXCPU);
    if (isCrash(status))
        throw KernelCrash(kernelText(endText(status, task), task));
    raiseKernel(endText(status, task), task);
}

void ChildProcess::giveUp(const KernelTask& task, const std::string& reason)
{
    kill(m_process, SIGKILL);
    m_wasAbleToEnd = false;
    raiseKernel(reason, task);
}

void ChildProcess::receive(char* bytes, std::size_t count, const KernelTask& task)
{
    while (count > 0) {
        pollfd wait{m_socket.number(), POLLIN, 0};
        const int ready = poll(&wait, 1, lookInterval);
        if (ready == 0 && kernelLimits().userGone && kernelLimits().userGone())
            giveUp(task, "was stopped, since whoever asked for it has gone,");
        if (ready <= 0)
            continue;
        const ssize_t got = read(m_socket.number(), bytes, count);
        if (got == 0 || (got < 0 && errno != EINTR))
            raiseEnd(task);
        if (got < 0)
            continue;
        bytes += got;
        count -= static_cast<std::size_t>(got);
    }
}

std::string ChildProcess::receiveAnswer(const KernelTask& task)
{
    AnswerHead head;
    receive(reinterpret_cast<char*>(&head), sizeof head, task);
    if (head.length > m_mostMemory / answersPart)
        giveUp(task, "made more than " + std::to_string(m_mostMemory / answersPart / 1000000) + " MB");
    std::string answer(head.length, '\0');
    receive(answer.data(), answer.size(), task);
    m_leftTaken = head.memory > m_atFirst ? head.memory - m_atFirst : 0;
    if (head.kind != AnswerHead::succeeded)
        throw DocumentError(static_cast<ErrorKind>(head.kind - 'a'), answer);
    return answer;
}

void sendAnswer(const zn::FileDescriptor& socket, const KernelTask& task, const std::function<std::string()>& work)
{
    AnswerHead head;
    std::string answer;
    const auto fail = [&](ErrorKind kind, const std::string& sentence) {
        head.kind = static_cast<char>('a' + static_cast<int>(kind));
        answer = sentence;
    };
    try {
        answer = work();
    } catch (const DocumentError& error) {
        fail(error.kind(), error.what());
    } catch (const Standard_OutOfMemory&) {
        fail(ErrorKind::Kernel, kernelText(outOfMemory, task));
    } catch (const Standard_Failure& failure) {
        fail(ErrorKind::Kernel, kernelText("failed (" + kernelReason(failure) + ")", task));
    } catch (const std::bad_alloc&) {
        fail(ErrorKind::Kernel, kernelText(outOfMemory, task));
    } catch (const std::exception& error) {
        fail(ErrorKind::Kernel, "The file " + quoted(task.file) + " can't be worked on: " + error.what() + ".");
    }
    head.length = answer.size();
    head.memory = memoryInUse();
    // Both fail when the parent has gone.
    if (socket.writeAll({reinterpret_cast<const char*>(&head), sizeof head}))
        static_cast<void>(socket.writeAll(answer));
}

} // namespace zn::zentrel
