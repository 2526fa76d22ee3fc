#include "automation/Channel.h"

#include "automation/Wire.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zn::automation {

namespace {

/// A message that has begun must go on within this time.
constexpr Milliseconds stallLimit{30'000};

[[noreturn]] void raiseDisconnected()
{
    throw StatusError(RPC_E_DISCONNECTED, "The other process has ended or closed the connection.");
}

ucred peerOf(int socket)
{
    ucred peer{};
    socklen_t size = sizeof peer;
    if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0)
        throw StatusError(E_ACCESSDENIED, "The connection's peer cannot be told.");
    return peer;
}

} // namespace

Channel::Channel(FileDescriptor socket)
    : m_socket(std::move(socket))
    , m_cancelled(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    const ucred peer = peerOf(m_socket.number());
    if (peer.uid != geteuid())
        throw StatusError(E_ACCESSDENIED, "The connection's peer is a process of another user.");
    m_peerProcess = FileDescriptor(static_cast<int>(syscall(SYS_pidfd_open, peer.pid, 0)));
}

void Channel::waitFor(short events, std::optional<Milliseconds> limit)
{
    const auto start = std::chrono::steady_clock::now();
    for (;;) {
        pollfd watched[]
            = {{m_socket.number(), events, 0}, {m_cancelled.number(), POLLIN, 0}, {m_peerProcess.number(), POLLIN, 0}};
        int timeout = -1;
        if (limit) {
            const auto elapsed = std::chrono::duration_cast<Milliseconds>(std::chrono::steady_clock::now() - start);
            timeout = static_cast<int>(std::clamp<std::int64_t>((*limit - elapsed).count(), 0, 1'000'000'000));
        }
        const int ready = poll(watched, std::size(watched), timeout);
        if (ready < 0 && errno == EINTR)
            continue;
        if (watched[1].revents != 0)
            throw StatusError(E_ABORT, "The call was cancelled.");
        if (watched[0].revents != 0)
            return;
        if (watched[2].revents != 0)
            raiseDisconnected();
        if (ready == 0)
            throw StatusError(RPC_E_TIMEOUT, "The other process did not answer in time.");
    }
}

void Channel::send(const std::string& line)
{
    if (line.size() >= maximumMessage)
        throw StatusError(E_INVALIDARG, "The data of one call is too big to be sent to another process.");
    const std::string framed = line + '\n';
    std::size_t sent = 0;
    while (sent < framed.size()) {
        const ssize_t count
            = ::send(m_socket.number(), framed.data() + sent, framed.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count >= 0)
            sent += static_cast<std::size_t>(count);
        else if (errno == EAGAIN)
            waitFor(POLLOUT, stallLimit);
        else if (errno != EINTR)
            raiseDisconnected();
    }
}

std::string Channel::receive(std::optional<Milliseconds> limit)
{
    for (;;) {
        if (auto line = takeLine())
            return std::move(*line);
        if (m_buffer.size() >= maximumMessage)
            throw ProtocolError("a message is too big");
        try {
            waitFor(POLLIN, m_buffer.empty() ? limit : stallLimit);
        } catch (const StatusError& error) {
            if (error.status() == RPC_E_TIMEOUT && !m_buffer.empty())
                throw ProtocolError("a message did not come to its end");
            throw;
        }
        readSome();
    }
}

void Channel::readSome()
{
    char chunk[65536];
    const ssize_t count = recv(m_socket.number(), chunk, sizeof chunk, MSG_DONTWAIT);
    if (count > 0)
        m_buffer.append(chunk, static_cast<std::size_t>(count));
    else if (count == 0 || (errno != EAGAIN && errno != EINTR))
        raiseDisconnected();
}

std::optional<std::string> Channel::takeLine()
{
    const std::size_t end = m_buffer.find('\n', m_scanned);
    if (end == std::string::npos) {
        m_scanned = m_buffer.size();
        return {};
    }
    std::string line = m_buffer.substr(0, end);
    m_buffer.erase(0, end + 1);
    m_scanned = 0;
    return line;
}

bool Channel::peerGone() const
{
    pollfd watched[] = {{m_socket.number(), POLLRDHUP, 0}, {m_peerProcess.number(), POLLIN, 0}};
    return poll(watched, std::size(watched), 0) > 0;
}

void Channel::close()
{
    // Fails only if the peer has gone already.
    ::shutdown(m_socket.number(), SHUT_RDWR);
}

void Channel::cancel()
{
    const std::uint64_t one = 1;
    // Only a full counter could fail, and that means cancelled as well.
    [[maybe_unused]] const ssize_t written = write(m_cancelled.number(), &one, sizeof one);
}

} // namespace zn::automation
