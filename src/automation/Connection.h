#pragma once

#include "automation/Channel.h"
#include "automation/Wire.h"

#include <atomic>
#include <functional>

namespace zn::automation {

/// Takes one line for a person: faults of peers, that nobody else is told of.
using Log = std::function<void(const std::string&)>;

/// One side of a JSON-RPC 2.0 conversation over a channel. Both sides may call; calls nest like calls on one stack:
/// while a side waits for its result it serves the other side's calls, and results come back in reverse order.
class Connection {
public:
    /// Serves a call of the peer. A `StatusError` goes back as the call's failure; a `ProtocolError` ends the
    /// connection.
    using Handler = std::function<Json(const std::string& method, const Json& parameters)>;

    Connection(FileDescriptor socket, Handler handler, Log log);

    /// Calls the peer and serves its calls meanwhile. `limit` is for each silence of the peer, not for the whole call.
    /// Raises the call's own failure, and `RPC_E_DISCONNECTED`, `RPC_E_TIMEOUT` or `E_ABORT` as `StatusError`; after
    /// any of these three the connection is closed.
    Json call(const char* method, Json parameters, std::optional<Milliseconds> limit);

    /// Tells the peer something that has no answer.
    void notify(const char* method, Json parameters);

    /// Waits for one call of the peer and answers it. Raises as `call` does.
    void serveOne(std::optional<Milliseconds> limit);

    bool isOpen() const { return m_open; }
    /// Whether the peer has gone, also if nobody has waited for it since. Never waits.
    bool peerGone() const { return !m_open || m_channel.peerGone(); }
    /// Ends the wait under way with `E_ABORT`. May be called from another thread.
    void cancel() { m_channel.cancel(); }

private:
    Json receive(std::optional<Milliseconds> limit);
    void send(const Json& message);
    void answer(const Json& request);
    /// Closes after an error that the conversation can't survive, and raises what the caller shall see.
    [[noreturn]] void closeAndRaise();

    Channel m_channel;
    Handler m_handler;
    Log m_log;
    std::int64_t m_lastId = 0;
    int m_depth = 0;
    std::atomic<bool> m_open = true; ///< other threads ask, too
};

} // namespace zn::automation
