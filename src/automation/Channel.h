#pragma once

#include "base/Status.h"
#include "platform/FileDescriptor.h"

#include <chrono>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string>
#include <sys/types.h>

namespace zn::automation {

/// A call was not answered in its time.
inline constexpr Status RPC_E_TIMEOUT = statusCode(0x8001011F);

using Milliseconds = std::chrono::milliseconds;
using Moment = std::chrono::steady_clock::time_point;

/// One end of a connected local socket that carries messages, one line each.
///
/// Plain poll() instead of an event loop: calls are synchronous and nest (a call causes an event, whose handler
/// calls back), so each wait is for exactly one thing on the caller's own stack.
class Channel {
public:
    /// Messages above this size are refused on both sides. Honest ones have a few hundred bytes, a list of a big
    /// drawing's views some hundred thousand.
    static constexpr std::size_t maximumMessage = std::size_t{16} << 20;

    /// Takes a connected socket over. Raises `StatusError` (`E_ACCESSDENIED`) if the peer is another user's process.
    explicit Channel(FileDescriptor socket);

    /// Sends one message; `line` has no line feed. Raises `StatusError`: `RPC_E_DISCONNECTED` if the peer has gone,
    /// `E_ABORT` after `cancel`, `RPC_E_TIMEOUT` if the peer doesn't take it in 30 seconds, `E_INVALIDARG` if the
    /// message is too big.
    void send(const std::string& line);

    /// Sends one short message unless the peer takes none now, or another message has been going out for a second;
    /// false then. May be called from another thread.
    bool sendAtOnce(const std::string& line);

    /// Waits for a message until `deadline`, without limit if there is none. Raises as `send` does, `RPC_E_TIMEOUT`
    /// when the time has run out, and `ProtocolError` for a message that is too big or doesn't come to its end
    /// within 30 seconds of its begin.
    std::string receive(std::optional<Moment> deadline);

    /// A message that has come whole, if there is one. Never waits. Raises `RPC_E_DISCONNECTED`.
    std::optional<std::string> receiveAtOnce();

    /// Whether the peer has closed its end or died. Never waits.
    bool peerGone() const;

    /// Ends the wait that is under way and every later one. May be called from another thread.
    void cancel();

    /// Ends the conversation; the peer sees it at once. The descriptor stays, since another thread may be asking
    /// `peerGone`.
    void close();

private:
    void waitFor(short events, std::optional<Moment> deadline);
    void requireNotCancelled() const;
    bool readSome();
    std::optional<std::string> takeLine();

    FileDescriptor m_socket;
    /// Signals the peer's death even if one of its children still holds the socket.
    FileDescriptor m_peerProcess;
    FileDescriptor m_cancelled;
    std::mutex m_sending; ///< held while a message goes out
    std::string m_buffer;
    std::size_t m_taken = 0;   ///< bytes of the buffer that were given out
    std::size_t m_scanned = 0; ///< bytes without a line feed behind those
    Moment m_begun{};          ///< when the message came that has no end yet
};

/// Makes the folder, for this user only, if it is missing. Raises `StatusError` if it is another user's or open to
/// others.
void requirePrivateFolder(const std::filesystem::path& folder);

/// The socket file that an item name stands for.
std::string socketFileName(const std::string& itemName);

/// A listening socket in `folder`; a socket file of the same name, left by a dead process, is replaced.
/// Raises `StatusError`.
FileDescriptor listenIn(const std::filesystem::path& folder, const std::string& fileName);

/// A connection to the socket file; an empty descriptor if nobody listens there, or whoever does takes nobody more at
/// present. Never waits.
FileDescriptor connectTo(const std::filesystem::path& folder, const std::string& fileName);

/// Waits for a connection; an empty descriptor when the time has run out.
FileDescriptor acceptFrom(const FileDescriptor& listener, Milliseconds limit);

} // namespace zn::automation
