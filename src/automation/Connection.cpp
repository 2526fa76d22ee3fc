#include "automation/Connection.h"

#include "base/JsonShape.h"

#include <fmt/format.h>
#include <limits>
#include <nlohmann/json.hpp>

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

/// Raises `ProtocolError` for a message of too many brackets inside one another, before it is read.
void requireShallow(const std::string& line)
{
    constexpr int anyNumber = std::numeric_limits<int>::max(); // of values: a list of files may be long
    if (jsonShapeOf(line, maximumBrackets, anyNumber) == JsonShape::TooDeep)
        throw ProtocolError("a message that is nested too deep");
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

Json Connection::call(const char* method, Json parameters, std::optional<Milliseconds> limit)
{
    const std::int64_t id = ++m_lastId;
    send({{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", std::move(parameters)}});
    for (;;) {
        Json message = receive(limit);
        if (message.contains("method")) {
            answer(message);
            continue;
        }
        try {
            if (member(message, "id") != id)
                throw ProtocolError("an answer to no call");
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

void Connection::serveOne(std::optional<Milliseconds> limit)
{
    const Json message = receive(limit);
    answer(message);
}

Json Connection::receive(std::optional<Milliseconds> limit)
{
    if (!m_open)
        throw StatusError(RPC_E_DISCONNECTED, "The connection to the other process is closed.");
    try {
        const std::string line = m_channel.receive(limit);
        requireShallow(line);
        Json message = Json::parse(line);
        if (!message.is_object())
            throw ProtocolError("a message that is no JSON object");
        return message;
    } catch (...) {
        closeAndRaise();
    }
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
