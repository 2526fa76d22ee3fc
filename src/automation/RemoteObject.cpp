#include "automation/RemoteObject.h"

#include "automation/ServerSession.h"

#include <nlohmann/json.hpp>

namespace zn::automation {

namespace {

const char* useName(MemberUse use)
{
    switch (use) {
    case MemberUse::Put:
        return "put";
    case MemberUse::PutObject:
        return "putref";
    default:
        return "call";
    }
}

bool runsMacro(TextView member) { return equalNoCase(member, u"RunMacro") || equalNoCase(member, u"RunMacro2"); }

} // namespace

std::shared_ptr<ClientSession> ClientSession::open(FileDescriptor socket, Limits limits, Log log)
{
    return std::shared_ptr<ClientSession>(new ClientSession(std::move(socket), limits, std::move(log)));
}

ClientSession::ClientSession(FileDescriptor socket, Limits limits, Log log)
    : m_limits(limits)
    , m_connection(std::make_unique<Connection>(
          std::move(socket),
          [this](const std::string& method, const Json& parameters) { return serve(method, parameters); },
          std::move(log)))
{
}

DispatchRef ClientSession::root()
{
    const std::lock_guard turn(m_turn);
    const Json form = call("hello", {{"version", protocolVersion}}, m_limits.hello);
    auto object = query<DispatchObject>(decodeObject(form));
    if (!object)
        throw StatusError(E_NOINTERFACE, "The other process published nothing that can be called.");
    return object;
}

Json ClientSession::encodeObject(const ObjectRef& object)
{
    const auto remote = query<RemoteObject>(object);
    if (!remote || remote->session() != this)
        throw StatusError(DISP_E_TYPEMISMATCH, "An object of this process cannot be passed to another one.");
    return {{"obj", remote->id()}};
}

ObjectRef ClientSession::decodeObject(const Json& form)
{
    const auto id = integer<std::uint64_t>(member(form, "obj"));
    auto& known = m_objects[id];
    auto object = known.lock();
    if (!object) {
        std::vector<Text> facilities;
        if (form.contains("offers"))
            for (const Json& facility : form["offers"])
                facilities.push_back(decodeText(facility));
        object = std::make_shared<RemoteObject>(
            shared_from_this(), id, decodeText(member(form, "type")), std::move(facilities));
        known = object;
    }
    object->received();
    return object;
}

Json ClientSession::call(const char* method, Json parameters, std::optional<Milliseconds> limit)
{
    sendReleases();
    return m_connection->call(method, std::move(parameters), limit);
}

Value ClientSession::invoke(const RemoteObject& object, MemberCall& memberCall)
{
    const std::lock_guard turn(m_turn);
    Json arguments = Json::array();
    for (const Value& argument : memberCall.arguments)
        arguments.push_back(encodeValue(argument, *this));
    Json parameters = {{"object", object.id()}, {"name", encodeText(memberCall.name)}, {"use", useName(memberCall.use)},
        {"arguments", std::move(arguments)}};
    for (const Text& name : memberCall.argumentNames)
        parameters["names"].push_back(encodeText(name));
    const auto limit = runsMacro(memberCall.name) ? std::nullopt : std::optional(m_limits.call);
    try {
        const Json reply = call("invoke", std::move(parameters), limit);
        if (const auto changed = reply.find("changed"); changed != reply.end())
            for (const Json& pair : *changed)
                memberCall.arguments.at(integer<std::size_t>(pair.at(0))) = decodeValue(pair.at(1), *this);
        return decodeValue(member(reply, "value"), *this);
    } catch (const StatusError&) {
        throw;
    } catch (const std::exception&) {
        throw StatusError(RPC_E_DISCONNECTED, "The other process sent an answer that cannot be read.");
    }
}

std::uint32_t ClientSession::advise(const RemoteObject& object, const Text& events, std::shared_ptr<EventSink> sink)
{
    const std::lock_guard turn(m_turn);
    // Known before the call, as connecting may already cause an event.
    const std::uint64_t number = ++m_lastSink;
    m_sinks[number] = std::move(sink);
    try {
        const auto cookie = integer<std::uint32_t>(
            call("advise", {{"object", object.id()}, {"events", encodeText(events)}, {"sink", number}}, m_limits.call));
        m_connections[{object.id(), cookie}] = number;
        return cookie;
    } catch (const std::exception&) {
        m_sinks.erase(number);
        throw;
    }
}

void ClientSession::unadvise(const RemoteObject& object, std::uint32_t cookie)
{
    const std::lock_guard turn(m_turn);
    const auto found = m_connections.find({object.id(), cookie});
    if (found == m_connections.end())
        return;
    m_sinks.erase(found->second);
    m_connections.erase(found);
    if (isOpen())
        call("unadvise", {{"object", object.id()}, {"cookie", cookie}}, m_limits.call);
}

Json ClientSession::serve(const std::string& method, const Json& parameters)
{
    if (method != "event")
        throw ProtocolError("a call of the unknown method '" + method + "'");
    const auto found = m_sinks.find(integer<std::uint64_t>(member(parameters, "sink")));
    if (found == m_sinks.end())
        return S_OK;
    // A copy: the handler may end its own connection.
    const std::shared_ptr<EventSink> sink = found->second;
    std::vector<Value> arguments;
    for (const Json& argument : member(parameters, "arguments"))
        arguments.push_back(decodeValue(argument, *this));
    return sink->onEvent(integer<std::int32_t>(member(parameters, "number")), arguments);
}

void ClientSession::release(std::uint64_t id, std::uint64_t references)
{
    const std::lock_guard guard(m_releaseGuard);
    m_releases[id] += references;
}

void ClientSession::sendReleases()
{
    std::map<std::uint64_t, std::uint64_t> releases;
    {
        const std::lock_guard guard(m_releaseGuard);
        releases.swap(m_releases);
    }
    if (releases.empty())
        return;
    Json objects = Json::array();
    for (const auto& [id, references] : releases) {
        objects.push_back({id, references});
        if (const auto found = m_objects.find(id); found != m_objects.end() && found->second.expired())
            m_objects.erase(found);
    }
    m_connection->notify("release", {{"objects", std::move(objects)}});
}

RemoteObject::RemoteObject(
    std::shared_ptr<ClientSession> session, std::uint64_t id, Text typeName, std::vector<Text> facilities)
    : m_session(std::move(session))
    , m_id(id)
    , m_typeName(std::move(typeName))
    , m_facilities(std::move(facilities))
{
}

RemoteObject::~RemoteObject() { m_session->release(m_id, m_references); }

} // namespace zn::automation
