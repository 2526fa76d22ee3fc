#include "platform/linux/LinuxProcesses.h"

#include "platform/FileSystem.h"
#include "platform/linux/ChildStart.h"
#include "platform/linux/FileVersion.h"

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <fstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace zn {

namespace {

constexpr int endLooks = 250;

/// The arguments behind the program: parted by blanks, double quotes hold blanks together.
void appendArguments(TextView line, std::vector<std::string>& arguments)
{
    Text current;
    bool quoted = false;
    bool started = false;
    const auto finish = [&] {
        if (started)
            arguments.push_back(toUtf8(current));
        current.clear();
        started = false;
    };
    for (const char16_t unit : line) {
        if (unit == u' ' && !quoted) {
            finish();
            continue;
        }
        started = true;
        if (unit == u'"')
            quoted = !quoted;
        else
            current += unit;
    }
    finish();
}

std::uint32_t exitCodeOf(int status)
{
    return static_cast<std::uint32_t>(WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status));
}

/// 'Z' for a process that has ended and waits to be looked at, 0 if there is none of that id.
char stateLetter(std::int32_t processId)
{
    std::ifstream status("/proc/" + std::to_string(processId) + "/stat");
    std::string line;
    std::getline(status, line);
    // The program's name stands in brackets before the state and may hold anything.
    const std::size_t bracket = line.rfind(')');
    return bracket == std::string::npos || bracket + 2 >= line.size() ? '\0' : line[bracket + 2];
}

} // namespace

/// The thread on which all children are started. A child's bond to its parent is one to the thread that started it, so
/// a run on a passing thread must not start it itself.
class LinuxProcesses::Launcher {
public:
    Launcher()
        : m_thread([this] { serve(); })
    {
    }
    Launcher(const Launcher&) = delete;
    Launcher& operator=(const Launcher&) = delete;
    ~Launcher()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_closing = true;
        }
        m_changed.notify_all();
        m_thread.join();
    }

    /// One caller at a time.
    std::optional<StartedChild> start(
        const std::vector<std::string>& arguments, const std::vector<std::string>& environment)
    {
        std::unique_lock lock(m_mutex);
        m_arguments = &arguments;
        m_environment = &environment;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return !m_arguments; });
        return m_started;
    }

private:
    void serve()
    {
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_changed.wait(lock, [this] { return m_closing || m_arguments; });
            if (m_closing)
                return;
            m_started = startChild(*m_arguments, *m_environment);
            m_arguments = nullptr;
            m_changed.notify_all();
        }
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
    const std::vector<std::string>* m_arguments = nullptr;
    const std::vector<std::string>* m_environment = nullptr;
    std::optional<StartedChild> m_started;
    bool m_closing = false;
    std::thread m_thread;
};

LinuxProcesses::LinuxProcesses(FileSystem& files)
    : m_files(files)
{
}

LinuxProcesses::~LinuxProcesses()
{
    for (const auto& [processId, child] : m_children)
        if (!child.ended && ::kill(child.guard, SIGTERM) == 0)
            ::waitpid(child.guard, nullptr, 0);
    m_launcher.reset();
}

std::vector<std::string> LinuxProcesses::programAndArguments(TextView commandLine)
{
    const auto withArguments = [&](TextView program, TextView rest) {
        std::vector<std::string> result = {m_files.toMachine(program).string()};
        appendArguments(rest, result);
        return result;
    };
    if (commandLine.starts_with(u'"')) {
        const TextView program = commandLine.substr(1, commandLine.find(u'"', 1) - 1);
        if (program.size() + 2 > commandLine.size() || !m_files.fileExists(program))
            return {};
        return withArguments(program, commandLine.substr(program.size() + 2));
    }
    for (std::size_t blank = 0; blank != TextView::npos;) {
        blank = commandLine.find(u' ', blank + 1);
        const TextView program = commandLine.substr(0, blank);
        if (!program.empty() && m_files.fileExists(program))
            return withArguments(program, commandLine.substr(program.size()));
    }
    return {};
}

std::optional<std::int32_t> LinuxProcesses::launch(TextView commandLine, int showState)
{
    const std::lock_guard lock(m_mutex);
    const std::vector<std::string> arguments = programAndArguments(commandLine);
    if (arguments.empty())
        return std::nullopt;
    if (!m_launcher)
        m_launcher = std::make_unique<Launcher>();
    const auto child = m_launcher->start(arguments, {"ZN_SHOW_STATE=" + std::to_string(showState)});
    if (!child)
        return std::nullopt;
    m_children[child->program] = {child->guard, {}, {}};
    return child->program;
}

LinuxProcesses::Child* LinuxProcesses::refreshed(std::int32_t processId)
{
    const auto found = m_children.find(processId);
    if (found == m_children.end())
        return nullptr;
    Child& child = found->second;
    if (child.ended)
        return &child;
    // The guard ends when the program and all that it has started have gone.
    int status = 0;
    const pid_t ended = ::waitpid(child.guard, &status, WNOHANG);
    if (ended == child.guard)
        child.ended = child.asked && WIFSIGNALED(status) ? *child.asked : exitCodeOf(status);
    else if (ended < 0 && errno == ECHILD)
        // Somebody else in this process took the guard's end and with it the code.
        child.ended = child.asked.value_or(1);
    return &child;
}

bool LinuxProcesses::open(std::int32_t processId) { return exitCode(processId) == stillActive; }

std::optional<std::uint32_t> LinuxProcesses::exitCode(std::int32_t processId)
{
    if (processId <= 0)
        return std::nullopt;
    const std::lock_guard lock(m_mutex);
    if (const Child* child = refreshed(processId))
        return child->ended.value_or(stillActive);
    const char state = stateLetter(processId);
    return state == '\0' || state == 'Z' || state == 'X' ? std::nullopt : std::optional(stillActive);
}

bool LinuxProcesses::terminate(std::int32_t processId, std::uint32_t exitCode)
{
    const std::lock_guard lock(m_mutex);
    Child* child = refreshed(processId);
    if (!child || child->ended)
        return false;
    child->asked = exitCode;
    if (::kill(child->guard, SIGTERM) != 0)
        return false;
    // A killed child is gone within a moment; seeing it gone keeps what follows from depending on that moment.
    for (int look = 0; look < endLooks && !refreshed(processId)->ended; ++look)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return true;
}

std::optional<std::uint64_t> LinuxProcesses::workingSet(std::int32_t processId)
{
    std::ifstream memory("/proc/" + std::to_string(processId) + "/statm");
    std::uint64_t total = 0;
    std::uint64_t resident = 0;
    if (!(memory >> total >> resident) || total == 0)
        return std::nullopt;
    return resident * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

std::optional<FileVersion> LinuxProcesses::fileVersion(TextView path)
{
    try {
        return readFileVersion(m_files.toMachine(path));
    } catch (const StatusError&) {
        return std::nullopt;
    }
}

} // namespace zn
