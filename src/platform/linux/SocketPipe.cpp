#include "platform/linux/SocketPipe.h"

#include "base/Paths.h"
#include "platform/FileDescriptor.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>

namespace zn {

namespace {

constexpr time_t replySeconds = 10;
constexpr std::size_t longestReply = 256;

FileDescriptor connectTo(const std::filesystem::path& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string name = path.string();
    if (name.size() >= sizeof address.sun_path)
        return FileDescriptor();
    std::memcpy(address.sun_path, name.data(), name.size());
    FileDescriptor socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    const timeval limit{replySeconds, 0};
    ::setsockopt(socket.number(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    ::setsockopt(socket.number(), SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    if (::connect(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return FileDescriptor();
    return socket;
}

} // namespace

SocketPipe::SocketPipe(std::filesystem::path folder)
    : m_folder(std::move(folder))
{
}

bool SocketPipe::send(TextView mutexName, TextView pipeName, const std::string& message)
{
    const auto lockPath = m_folder / (toUtf8(mutexName) + ".lock");
    // The lock ends with the descriptor.
    const FileDescriptor mutex(::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    while (mutex && ::flock(mutex.number(), LOCK_EX) != 0 && errno == EINTR) { }

    const FileDescriptor pipe = connectTo(m_folder / toUtf8(pathFileName(pipeName)));
    if (!pipe)
        return false;
    if (::send(pipe.number(), message.data(), message.size(), MSG_NOSIGNAL) >= 0) {
        char reply[longestReply];
        [[maybe_unused]] const ssize_t dropped = ::recv(pipe.number(), reply, sizeof reply, 0);
    }
    return true;
}

} // namespace zn
