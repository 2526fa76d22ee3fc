#include "zentrel/formats/KernelGuard.h"

#include "contracts/documents/DocumentError.h"
#include "platform/FileDescriptor.h"
#include "platform/KernelConfinement.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zn::zentrel {

namespace {

/// First byte of a child's answer: it succeeded, or 'a' plus the kind of its error. Behind it stands the
/// result or the sentence.
constexpr char succeeded = '+';

std::string readAll(const zn::FileDescriptor& pipe)
{
    std::string bytes;
    std::array<char, 65536> block;
    for (;;) {
        const ssize_t count = read(pipe.number(), block.data(), block.size());
        if (count > 0)
            bytes.append(block.data(), static_cast<std::size_t>(count));
        else if (count == 0 || errno != EINTR)
            return bytes;
    }
}

/// The address space of this process, in bytes.
rlim_t memoryInUse()
{
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

rlim_t largestGrowth()
{
    return static_cast<rlim_t>(sysconf(_SC_PHYS_PAGES)) / 2 * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

/// A child neither outlives its parent nor leaves a core file, and handles no signal as the parent does. It writes
/// beside the file that it works on, if anywhere, also when a foreign file has taken it over; a kernel that can't keep
/// it there leaves it what the process may.
void limitChild(pid_t parent, const std::filesystem::path& file, std::chrono::seconds limit)
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(1);
    for (const int signal : {SIGABRT, SIGTERM, SIGINT, SIGXCPU})
        std::signal(signal, SIG_DFL);
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    const rlim_t memory = memoryInUse() + largestGrowth();
    const rlimit space{memory, memory};
    setrlimit(RLIMIT_AS, &space);
    const auto seconds = static_cast<rlim_t>(limit.count());
    const rlimit time{seconds, seconds + 60};
    setrlimit(RLIMIT_CPU, &time);
    zn::confineWritesOfThisThread({std::filesystem::absolute(file).parent_path()});
}

std::string answerOf(
    const std::string& doing, const std::filesystem::path& file, const std::function<std::string()>& work)
{
    try {
        std::string result;
        runGuarded(doing, file, [&] { result = work(); });
        return succeeded + result;
    } catch (const DocumentError& error) {
        return static_cast<char>('a' + static_cast<int>(error.kind())) + std::string(error.what());
    } catch (const std::exception& error) {
        return static_cast<char>('a' + static_cast<int>(ErrorKind::Kernel))
            + ("The file " + quoted(file) + " can't be worked on: " + error.what() + ".");
    }
}

std::string endText(int status, std::chrono::seconds limit)
{
    if (!WIFSIGNALED(status))
        return "ended without an answer";
    if (WTERMSIG(status) == SIGXCPU)
        return "came to no end within " + std::to_string(limit.count()) + " seconds of computing";
    if (WTERMSIG(status) == SIGKILL)
        return "was stopped by the system, which may be out of memory,";
    return std::string("crashed (") + strsignal(WTERMSIG(status)) + ")";
}

} // namespace

std::string runInChild(const std::string& doing, const std::filesystem::path& file,
    const std::function<std::string()>& work, std::chrono::seconds limit)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        throw DocumentError(ErrorKind::Kernel, std::string("No process can be started: ") + std::strerror(errno) + ".");
    zn::FileDescriptor reader(ends[0]);
    zn::FileDescriptor writer(ends[1]);
    // What waits in the output buffers would be written by both processes.
    std::fflush(stdout);
    std::cout.flush();
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child < 0)
        throw DocumentError(ErrorKind::Kernel, std::string("No process can be started: ") + std::strerror(errno) + ".");
    if (child == 0) {
        limitChild(parent, file, limit);
        // Fails when the parent has gone, and then nobody waits.
        [[maybe_unused]] const bool written = writer.writeAll(answerOf(doing, file, work));
        _exit(0);
    }
    writer.close();
    std::string answer = readAll(reader);
    reader.close();
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) { }
    if (WIFSIGNALED(status) || answer.empty())
        throw DocumentError(ErrorKind::Kernel,
            "The geometry kernel " + endText(status, limit) + " while " + doing + " the file " + quoted(file) + ".");
    if (answer.front() != succeeded)
        throw DocumentError(static_cast<ErrorKind>(answer.front() - 'a'), answer.substr(1));
    answer.erase(0, 1);
    return answer;
}

} // namespace zn::zentrel
