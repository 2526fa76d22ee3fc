#include "automation/Channel.h"

#include "automation/Wire.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace zn::automation {

namespace {

/// A message that has begun must be over within this time.
constexpr Milliseconds messageLimit{30'000};

std::optional<Moment> earlier(std::optional<Moment> deadline, Moment other)
{
    return deadline ? std::min(*deadline, other) : other;
}

bool hasPassed(std::optional<Moment> deadline) { return deadline && std::chrono::steady_clock::now() >= *deadline; }

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

void Channel::waitFor(short events, std::optional<Moment> deadline)
{
    for (;;) {
        pollfd watched[]
            = {{m_socket.number(), events, 0}, {m_cancelled.number(), POLLIN, 0}, {m_peerProcess.number(), POLLIN, 0}};
        int timeout = -1;
        if (deadline) {
            const auto left = std::chrono::ceil<Milliseconds>(*deadline - std::chrono::steady_clock::now());
            timeout = static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 1'000'000'000));
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

void Channel::requireNotCancelled() const
{
    pollfd watched{m_cancelled.number(), POLLIN, 0};
    if (poll(&watched, 1, 0) > 0)
        throw StatusError(E_ABORT, "The call was cancelled.");
}

void Channel::send(const std::string& line)
{
    if (line.size() >= maximumMessage)
        throw StatusError(E_INVALIDARG, "The data of one call is too big to be sent to another process.");
    const std::lock_guard turn(m_sending);
    const std::string framed = line + '\n';
    const Moment deadline = std::chrono::steady_clock::now() + messageLimit;
    std::size_t sent = 0;
    while (sent < framed.size()) {
        const ssize_t count
            = ::send(m_socket.number(), framed.data() + sent, framed.size() - sent, MSG_NOSIGNAL | MSG_DONTWAIT);
        if (count >= 0)
            sent += static_cast<std::size_t>(count);
        else if (errno != EAGAIN && errno != EINTR)
            raiseDisconnected();
        // A peer that takes a little now and then is never waited for, but its time is over some day.
        else if (hasPassed(deadline))
            throw StatusError(RPC_E_TIMEOUT, "The other process did not take the call in time.");
        else if (errno == EAGAIN)
            waitFor(POLLOUT, deadline);
    }
}

bool Channel::sendAtOnce(const std::string& line)
{
    // Whoever sends a call may hold it for a moment longer than the peer needs to begin with it.
    constexpr std::chrono::seconds longestTurn{1};
    const Moment deadline = std::chrono::steady_clock::now() + longestTurn;
    std::unique_lock turn(m_sending, std::defer_lock);
    while (!turn.try_lock()) {
        if (hasPassed(deadline))
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    // So few bytes go out whole or not at all.
    const std::string framed = line + '\n';
    return ::send(m_socket.number(), framed.data(), framed.size(), MSG_NOSIGNAL | MSG_DONTWAIT)
        == static_cast<ssize_t>(framed.size());
}

std::string Channel::receive(std::optional<Moment> deadline)
{
    // What has come by the deadline counts, also for a caller who was late to look.
    for (bool isLastLook = false;;) {
        requireNotCancelled();
        if (auto line = takeLine())
            return std::move(*line);
        if (m_buffer.size() - m_taken >= maximumMessage)
            throw ProtocolError("a message is too big");
        const bool begun = m_buffer.size() > m_taken;
        const Moment messageEnd = m_begun + messageLimit;
        if (begun && hasPassed(messageEnd))
            throw ProtocolError("a message did not come to its end");
        if (isLastLook)
            throw StatusError(RPC_E_TIMEOUT, "The other process did not answer in time.");
        isLastLook = hasPassed(deadline);
        try {
            waitFor(POLLIN, begun ? earlier(deadline, messageEnd) : deadline);
        } catch (const StatusError& error) {
            if (error.status() == RPC_E_TIMEOUT && begun && hasPassed(messageEnd))
                throw ProtocolError("a message did not come to its end");
            throw;
        }
        readSome();
    }
}

std::optional<std::string> Channel::receiveAtOnce()
{
    auto line = takeLine();
    while (!line && m_buffer.size() - m_taken < maximumMessage && readSome())
        line = takeLine();
    return line;
}

/// True if there was anything to read.
bool Channel::readSome()
{
    char chunk[65536];
    const ssize_t count = recv(m_socket.number(), chunk, sizeof chunk, MSG_DONTWAIT);
    if (count < 0 && (errno == EAGAIN || errno == EINTR))
        return false;
    if (count <= 0)
        raiseDisconnected();
    if (m_taken == m_buffer.size())
        m_begun = std::chrono::steady_clock::now();
    // Only what was given out moves the rest, and then no more than a chunk of it is left.
    m_buffer.erase(0, std::exchange(m_taken, 0));
    m_buffer.append(chunk, static_cast<std::size_t>(count));
    return true;
}

std::optional<std::string> Channel::takeLine()
{
    const std::size_t end = m_buffer.find('\n', m_taken + m_scanned);
    if (end == std::string::npos) {
        m_scanned = m_buffer.size() - m_taken;
        return {};
    }
    std::string line = m_buffer.substr(m_taken, end - m_taken);
    m_taken = end + 1;
    m_scanned = 0;
    m_begun = std::chrono::steady_clock::now();
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
