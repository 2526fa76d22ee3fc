#include "automation/Connection.h"

#include "base/JsonShape.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <utility>

namespace zn::automation {

namespace {

/// Calls of the peer served inside one another. Honest peers need two or three.
constexpr int maximumDepth = 64;
/// The number that JSON-RPC has for text that is no JSON.
constexpr int parseErrorCode = -32700;

Json failure(const Json& id, Status status, const std::string& text)
{
    return {{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", status}, {"message", text}}}};
}

[[noreturn]] void raiseFailure(const Json& error)
{
    const Json& text = member(error, "message");
    if (!text.is_string())
        throw ProtocolError("a failure without a text");
    throw StatusError(integer<Status>(member(error, "code")), text.get<std::string>());
}

/// Levels of brackets in one message. Values nest less deep by far; a message of brackets alone would take a hundred
/// times its size in memory.
constexpr int maximumBrackets = 256;
/// Values and names in one message, each of which takes some ten times its size.
constexpr int maximumValues = 1'000'000;

/// Raises `ProtocolError` for a message that would take much more memory than it has bytes, before it is read.
void requireSensible(const std::string& line)
{
    const JsonShape shape = jsonShapeOf(line, maximumBrackets, maximumValues);
    if (shape == JsonShape::TooDeep)
        throw ProtocolError("a message that is nested too deep");
    if (shape == JsonShape::TooMany)
        throw ProtocolError("a message of too many values");
}

/// Texts of failures may hold names of files that are no UTF-8; these bytes turn into U+FFFD.
std::string written(const Json& message) { return message.dump(-1, ' ', false, Json::error_handler_t::replace); }

struct Depth {
    explicit Depth(int& count)
        : m_count(++count)
    {
    }
    ~Depth() { --m_count; }
    int& m_count;
};

} // namespace

Connection::Connection(FileDescriptor socket, Handler handler, Log log)
    : m_channel(std::move(socket))
    , m_handler(std::move(handler))
    , m_log(std::move(log))
{
}

bool Connection::PeerTime::run(bool running)
{
    const auto clock = std::chrono::steady_clock::now();
    if (running && !m_running)
        m_away += clock - m_stopped;
    else if (!running && m_running)
        m_stopped = clock;
    return std::exchange(m_running, running);
}

/// Lets the peer's time run or stand still for a scope.
class Connection::Running {
public:
    Running(PeerTime& time, bool running)
        : m_time(time)
        , m_before(time.run(running))
    {
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() { m_time.run(m_before); }

private:
    PeerTime& m_time;
    bool m_before;
};

/// Sets a value for a scope.
class Connection::Deadline {
public:
    Deadline(std::optional<Moment>& deadline, std::optional<Moment> value)
        : m_deadline(deadline)
        , m_before(std::exchange(deadline, value))
    {
    }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;
    ~Deadline() { m_deadline = m_before; }

private:
    std::optional<Moment>& m_deadline;
    std::optional<Moment> m_before;
};

Json Connection::call(const char* method, Json parameters, std::optional<Milliseconds> limit)
{
    const Running running(m_peerTime, true);
    std::optional<Moment> deadline = m_deadline;
    if (limit && (!deadline || m_peerTime.now() + *limit < *deadline))
        deadline = m_peerTime.now() + *limit;
    const Deadline current(m_deadline, deadline);
    const std::int64_t id = ++m_lastId;
    send({{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", std::move(parameters)}});
    for (;;) {
        Json message = receive(deadline);
        try {
            if (message.contains("method")) {
                answer(message);
                // Whoever calls back without an end would never let the time run out in a wait.
                if (deadline && m_peerTime.now() >= *deadline)
                    throw StatusError(RPC_E_TIMEOUT, "The other process did not answer in time.");
                continue;
            }
            if (member(message, "id") != id)
                throw ProtocolError("an answer to no call");
        } catch (const ProtocolError&) {
            closeAndRaise();
        } catch (const StatusError&) {
            closeAndRaise();
        }
        try {
            if (const auto error = message.find("error"); error != message.end())
                raiseFailure(*error);
            return std::move(message["result"]);
        } catch (const ProtocolError&) {
            closeAndRaise();
        }
    }
}

void Connection::notify(const char* method, Json parameters)
{
    send({{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(parameters)}});
}

bool Connection::notifyAtOnce(const char* method)
{
    return m_open && m_channel.sendAtOnce(written({{"jsonrpc", "2.0"}, {"method", method}}));
}

void Connection::serveOne(std::optional<Milliseconds> limit)
{
    const Json message = receive(limit ? std::optional(m_peerTime.now() + *limit) : std::nullopt);
    answer(message);
}

void Connection::serveNotes()
{
    if (!m_open)
        throw StatusError(RPC_E_DISCONNECTED, "The connection to the other process is closed.");
    try {
        while (const auto line = m_channel.receiveAtOnce()) {
            const Json message = parsed(*line);
            if (message.contains("id"))
                throw ProtocolError("a call while it waits for an answer");
            answer(message);
        }
    } catch (...) {
        closeAndRaise();
    }
}

Json Connection::receive(std::optional<Moment> deadline)
{
    if (!m_open)
        throw StatusError(RPC_E_DISCONNECTED, "The connection to the other process is closed.");
    try {
        return parsed(m_channel.receive(deadline ? std::optional(m_peerTime.onClock(*deadline)) : std::nullopt));
    } catch (...) {
        closeAndRaise();
    }
}

Json Connection::parsed(const std::string& line)
{
    requireSensible(line);
    Json message = Json::parse(line);
    if (!message.is_object())
        throw ProtocolError("a message that is no JSON object");
    return message;
}

void Connection::send(const Json& message)
{
    if (!m_open)
        throw StatusError(RPC_E_DISCONNECTED, "The connection to the other process is closed.");
    try {
        m_channel.send(written(message));
    } catch (const StatusError& error) {
        if (error.status() == E_INVALIDARG)
            throw;
        closeAndRaise();
    }
}

void Connection::answer(const Json& request)
{
    const Depth depth(m_depth);
    const Json id = request.value("id", Json());
    Json reply;
    try {
        if (m_depth > maximumDepth)
            throw ProtocolError("calls are nested too deep");
        const Json& method = member(request, "method");
        if (!method.is_string())
            throw ProtocolError("a method that is no text");
        const Running own(m_peerTime, false);
        reply = {{"jsonrpc", "2.0"}, {"id", id},
            {"result", m_handler(method.get<std::string>(), request.value("params", Json::object()))}};
    } catch (const ProtocolError&) {
        closeAndRaise();
    } catch (const nlohmann::json::exception&) {
        closeAndRaise();
    } catch (const std::exception& error) {
        reply = failure(id, currentExceptionStatus(), error.what());
    }
    if (id.is_null())
        return;
    try {
        send(reply);
    } catch (const StatusError& error) {
        if (error.status() != E_INVALIDARG)
            throw;
        send(failure(id, E_INVALIDARG, error.what()));
    }
}

void Connection::closeAndRaise()
{
    m_open = false;
    try {
        throw;
    } catch (const StatusError&) {
        m_channel.close();
        throw;
    } catch (const std::exception& error) {
        if (m_log)
            m_log(fmt::format("Connection closed: the other process sent {}.", error.what()));
        try {
            m_channel.send(written(failure(nullptr, parseErrorCode, error.what())));
        } catch (const std::exception&) {
            // The peer gets told if it still listens; the fault itself is raised below.
        }
        m_channel.close();
        throw StatusError(RPC_E_DISCONNECTED, "The other process does not keep to the protocol.");
    }
}

} // namespace zn::automation
