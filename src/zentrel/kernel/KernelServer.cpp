#include "contracts/documents/DocumentError.h"
#include "zentrel/kernel/ChildProcess.h"
#include "zentrel/kernel/KernelLimits.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <mutex>
#include <optional>
#include <sys/socket.h>

namespace zn::zentrel {

namespace {

/// What calls may leave taken before their process is replaced.
constexpr std::size_t mostLeftTaken = std::size_t{512} << 20;

struct RequestHead {
    KernelCall call = nullptr;
    std::chrono::seconds limit{};
    std::size_t doing = 0; ///< bytes, as the next two
    std::size_t file = 0;
    std::size_t request = 0;
};

bool sendAll(const zn::FileDescriptor& socket, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = send(socket.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count < 0 && errno != EINTR)
            return false;
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return true;
}

bool receiveAll(const zn::FileDescriptor& socket, char* bytes, std::size_t count)
{
    while (count > 0) {
        const ssize_t got = read(socket.number(), bytes, count);
        if (got == 0 || (got < 0 && errno != EINTR))
            return false;
        if (got < 0)
            continue;
        bytes += got;
        count -= static_cast<std::size_t>(got);
    }
    return true;
}

std::string received(const zn::FileDescriptor& socket, std::size_t count)
{
    std::string bytes(count, '\0');
    if (!receiveAll(socket, bytes.data(), count))
        _exit(1);
    return bytes;
}

/// The program's files and sockets end when the program closes them, not when this process ends.
void keepOnly(const zn::FileDescriptor& socket)
{
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    dup2(nothing, STDOUT_FILENO);
    const auto kept = static_cast<unsigned>(socket.number());
    if (kept > STDERR_FILENO + 1)
        close_range(STDERR_FILENO + 1, kept - 1, 0);
    close_range(kept + 1, ~0U, 0);
}

/// Answers until the other end is gone.
void serve(const zn::FileDescriptor& socket)
{
    keepOnly(socket);
    RequestHead head;
    while (receiveAll(socket, reinterpret_cast<char*>(&head), sizeof head)) {
        const KernelTask task{received(socket, head.doing), received(socket, head.file), head.limit};
        const std::string request = received(socket, head.request);
        limitComputing(task.limit);
        sendAnswer(socket, task, [&] { return head.call(request); });
    }
}

std::unique_ptr<ChildProcess> server;
std::mutex serverInUse;

/// Whoever calls has `serverInUse`.
void requireServer()
{
    if (!server || !server->isAlive())
        server = std::make_unique<ChildProcess>(std::vector<std::filesystem::path>(), serve);
}

} // namespace

void startKernelServer()
{
    const std::lock_guard turn(serverInUse);
    requireServer();
}

void leaveKernelServer() { server.reset(); }

namespace {

/// Whoever calls has `serverInUse`.
std::string askServer(const KernelTask& task, KernelCall call, const std::string& request)
{
    requireServer();
    const std::string file = task.file.string();
    const RequestHead head{call, task.limit, task.doing.size(), file.size(), request.size()};
    // A process that ends before it has read all of it is told of by what it leaves.
    for (const std::string_view part : {std::string_view(reinterpret_cast<const char*>(&head), sizeof head),
             std::string_view(task.doing), std::string_view(file), std::string_view(request)})
        if (!sendAll(server->socket(), part))
            break;
    std::string answer = server->receiveAnswer(task);
    if (server->leftTaken() > mostLeftTaken)
        server.reset();
    return answer;
}

/// The server's answer; none where it failed and another process may do better, if that is wanted.
std::optional<std::string> askOnce(const KernelTask& task, KernelCall call, const std::string& request, bool askAgain)
{
    const std::lock_guard turn(serverInUse);
    try {
        return askServer(task, call, request);
    } catch (const DocumentError& error) {
        if (error.kind() != ErrorKind::Kernel)
            throw;
        const bool mayDoBetter = askAgain && server && server->wasAbleToEnd();
        server.reset(); // nobody knows what state the kernel is in after a failure
        if (!mayDoBetter)
            throw;
        return std::nullopt;
    }
}

} // namespace

std::string askKernel(const KernelTask& task, KernelCall call, const std::string& request)
{
    return isKernelProcess() ? call(request) : askOnce(task, call, request, false).value();
}

std::string askKernelOrChild(const KernelTask& task, KernelCall call, const std::string& request)
{
    if (isKernelProcess())
        return call(request);
    auto answer = askOnce(task, call, request, true);
    return answer ? *std::move(answer) : runInChild(task, [&] { return call(request); });
}

} // namespace zn::zentrel
