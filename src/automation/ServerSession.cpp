#include "automation/ServerSession.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace zn::automation {

namespace {

/// A client's sink as the server's objects see it.
class RemoteSink : public EventSink {
public:
    RemoteSink(std::weak_ptr<Connection> connection, Json id, ObjectCodec& objects)
        : m_connection(std::move(connection))
        , m_id(std::move(id))
        , m_objects(objects)
    {
    }

    Status onEvent(std::int32_t number, const std::vector<Value>& arguments) override
    {
        const auto connection = m_connection.lock();
        if (!connection)
            return RPC_E_DISCONNECTED;
        try {
            Json forms = Json::array();
            for (const Value& argument : arguments)
                forms.push_back(encodeValue(argument, m_objects));
            return integer<Status>(
                connection->call("event", {{"sink", m_id}, {"number", number}, {"arguments", forms}}, {}));
        } catch (...) {
            return currentExceptionStatus();
        }
    }

private:
    std::weak_ptr<Connection> m_connection;
    Json m_id;
    /// The session; it holds the connection, so while that lives so does the session.
    ObjectCodec& m_objects;
};

/// Counts calls inside one another; a request to stop ends with the outermost.
class Invoking {
public:
    Invoking(int& count, bool& stopRequested)
        : m_count(++count)
        , m_stopRequested(stopRequested)
    {
    }
    Invoking(const Invoking&) = delete;
    Invoking& operator=(const Invoking&) = delete;
    ~Invoking() { m_stopRequested = --m_count > 0 && m_stopRequested; }

private:
    int& m_count;
    bool& m_stopRequested;
};

MemberUse memberUse(const Json& form)
{
    static constexpr std::pair<const char*, MemberUse> uses[]
        = {{"call", MemberUse::Call}, {"put", MemberUse::Put}, {"putref", MemberUse::PutObject}};
    for (const auto& [name, use] : uses)
        if (form == name)
            return use;
    throw ProtocolError("an unknown use of a member");
}

} // namespace

ServerSession::ServerSession(FileDescriptor socket, DispatchRef root, Log log)
    : m_root(std::move(root))
    , m_connection(std::make_shared<Connection>(
          std::move(socket),
          [this](const std::string& method, const Json& parameters) { return serve(method, parameters); },
          std::move(log)))
{
}

ServerSession::~ServerSession()
{
    for (auto& [id, entry] : m_exports)
        for (const std::uint32_t cookie : entry.cookies)
            entry.object->unadvise(cookie);
}

void ServerSession::serveOne(std::optional<Milliseconds> limit) { m_connection->serveOne(limit); }

Json ServerSession::encodeObject(const ObjectRef& object)
{
    const auto dispatch = query<DispatchObject>(object);
    if (!dispatch)
        throw StatusError(E_NOINTERFACE, "This object cannot be used from another process.");
    const auto [known, added] = m_ids.try_emplace(dispatch.get(), m_lastId + 1);
    if (added)
        ++m_lastId;
    Export& entry = m_exports[known->second];
    entry.object = dispatch;
    ++entry.references;
    Json form = {{"obj", known->second}, {"type", encodeText(dispatch->typeName())}};
    for (const Text& facility : dispatch->facilities())
        form["offers"].push_back(encodeText(facility));
    return form;
}

ObjectRef ServerSession::decodeObject(const Json& form)
{
    const auto found = m_exports.find(integer<std::uint64_t>(member(form, "obj")));
    if (found == m_exports.end())
        throw ProtocolError("an object that it does not hold");
    return found->second.object;
}

ServerSession::Export& ServerSession::exported(const Json& parameters)
{
    const auto found = m_exports.find(integer<std::uint64_t>(member(parameters, "object")));
    if (found == m_exports.end())
        throw ProtocolError("a call of an object that it does not hold");
    return found->second;
}

Json ServerSession::serve(const std::string& method, const Json& parameters)
{
    static const std::map<std::string, Json (ServerSession::*)(const Json&)> methods = {
        {"hello", &ServerSession::hello},
        {"invoke", &ServerSession::invoke},
        {"advise", &ServerSession::advise},
        {"unadvise", &ServerSession::unadvise},
        {"release", &ServerSession::release},
        {"stop", &ServerSession::stop},
    };
    const auto found = methods.find(method);
    if (found == methods.end())
        throw ProtocolError("a call of the unknown method '" + method + "'");
    if (!m_greeted && method != "hello")
        throw ProtocolError("a call before it introduced itself");
    return (this->*found->second)(parameters);
}

Json ServerSession::hello(const Json& parameters)
{
    const int version = integer<int>(member(parameters, "version"));
    if (version != protocolVersion)
        throw StatusError(E_NOINTERFACE,
            fmt::format(
                "The two programs do not fit together: protocol {} and protocol {}.", version, protocolVersion));
    m_greeted = true;
    return encodeObject(m_root);
}

bool ServerSession::stopRequested()
{
    try {
        m_connection->serveNotes();
    } catch (const StatusError&) {
        return true;
    }
    return m_stopRequested || clientGone();
}

/// It is for the call that the client waits for, with all that it causes; one that comes too late is for nobody.
Json ServerSession::stop(const Json&)
{
    m_stopRequested = m_invoking > 0;
    return true;
}

Json ServerSession::invoke(const Json& parameters)
{
    const Invoking invoking(m_invoking, m_stopRequested);
    MemberCall call;
    call.name = decodeText(member(parameters, "name"));
    call.use = memberUse(member(parameters, "use"));
    for (const Json& argument : member(parameters, "arguments"))
        call.arguments.push_back(decodeValue(argument, *this));
    for (const Json& name : parameters.value("names", Json::array()))
        call.argumentNames.push_back(decodeText(name));
    if (call.argumentNames.size() > call.arguments.size())
        throw ProtocolError("more names than arguments");

    // A copy: the call may cause others that release the client's last reference.
    const DispatchRef object = exported(parameters).object;
    const std::vector<Value> before = call.arguments;
    const Value result = object->invoke(call);
    if (call.arguments.size() != before.size())
        throw StatusError(E_UNEXPECTED, "The member changed the number of its arguments.");

    Json reply = {{"value", encodeValue(result, *this)}};
    for (std::size_t i = 0; i < before.size(); ++i)
        // An array may have been changed in its place, which comparing doesn't show.
        if (call.arguments[i].isArray() || !(call.arguments[i] == before[i]))
            reply["changed"].push_back({i, encodeValue(call.arguments[i], *this)});
    return reply;
}

Json ServerSession::advise(const Json& parameters)
{
    Export& entry = exported(parameters);
    const auto sink
        = std::make_shared<RemoteSink>(m_connection, member(parameters, "sink"), static_cast<ObjectCodec&>(*this));
    const std::uint32_t cookie = entry.object->advise(decodeText(member(parameters, "events")), sink);
    entry.cookies.insert(cookie);
    return cookie;
}

Json ServerSession::unadvise(const Json& parameters)
{
    Export& entry = exported(parameters);
    const auto cookie = integer<std::uint32_t>(member(parameters, "cookie"));
    if (entry.cookies.erase(cookie) != 0)
        entry.object->unadvise(cookie);
    return true;
}

Json ServerSession::release(const Json& parameters)
{
    for (const Json& pair : member(parameters, "objects")) {
        if (!pair.is_array() || pair.size() != 2)
            throw ProtocolError("a release that cannot be read");
        const auto found = m_exports.find(integer<std::uint64_t>(pair[0]));
        const auto count = integer<std::uint64_t>(pair[1]);
        if (found == m_exports.end() || count > found->second.references)
            throw ProtocolError("a release of an object that it does not hold");
        found->second.references -= count;
        // A sink that is connected keeps its object: its connection is ended by a call to the object.
        if (found->second.references != 0 || !found->second.cookies.empty())
            continue;
        m_ids.erase(found->second.object.get());
        m_exports.erase(found);
    }
    return true;
}

} // namespace zn::automation
