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

    /// Calls the peer and serves its calls meanwhile. `limit` is for the whole call but the time that this side's own
    /// handlers work; a call that a handler makes has no more time than the one that it serves.
    /// Raises the call's own failure, and `RPC_E_DISCONNECTED`, `RPC_E_TIMEOUT` or `E_ABORT` as `StatusError`; after
    /// any of these three the connection is closed.
    Json call(const char* method, Json parameters, std::optional<Milliseconds> limit);

    /// Tells the peer something that has no answer.
    void notify(const char* method, Json parameters);

    /// The same from another thread, and only if it can be done at once; false otherwise.
    bool notifyAtOnce(const char* method);

    /// Waits for one call of the peer and answers it. Raises as `call` does.
    void serveOne(std::optional<Milliseconds> limit);
    /// Serves what the peer has told without wanting an answer, which is all that it may send while it waits for one.
    /// Never waits. Raises as `call` does.
    void serveNotes();

    bool isOpen() const { return m_open; }
    /// Whether the peer has gone, also if nobody has waited for it since. Never waits.
    bool peerGone() const { return !m_open || m_channel.peerGone(); }
    /// Ends the wait under way with `E_ABORT`. May be called from another thread.
    void cancel() { m_channel.cancel(); }

private:
    /// The time that the peer can be held to: what passes while none of this side's handlers works.
    class PeerTime {
    public:
        /// The same moment in the time of all clocks, as long as no handler works.
        Moment onClock(Moment moment) const { return moment + m_away; }
        Moment now() const { return std::chrono::steady_clock::now() - m_away; }
        /// Stops the time or lets it go on. What it did before.
        bool run(bool running);

    private:
        Moment::duration m_away{};
        Moment m_stopped{};
        bool m_running = true;
    };
    class Running;
    class Deadline;

    Json receive(std::optional<Moment> deadline);
    static Json parsed(const std::string& line);
    void send(const Json& message);
    void answer(const Json& request);
    /// Closes after an error that the conversation can't survive, and raises what the caller shall see.
    [[noreturn]] void closeAndRaise();

    Channel m_channel;
    Handler m_handler;
    Log m_log;
    std::int64_t m_lastId = 0;
    int m_depth = 0;
    PeerTime m_peerTime;
    std::optional<Moment> m_deadline; ///< of the call that is under way, in the peer's time
    std::atomic<bool> m_open = true;  ///< other threads ask, too
};

} // namespace zn::automation
