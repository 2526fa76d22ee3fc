#pragma once

#include "automation/Connection.h"
#include "base/Dispatch.h"

#include <map>
#include <memory>
#include <mutex>

namespace zn::automation {

class RemoteObject;

/// The client's side of a connection: what it holds of the server's objects, and its sinks.
/// May be used from several threads; their calls take turns. Made by `open`, as it needs a shared pointer to itself.
class ClientSession : public std::enable_shared_from_this<ClientSession>, private ObjectCodec {
public:
    /// How long a whole call may take, what this side's event handlers do left out. Calls that run a macro have no
    /// limit, as nobody can tell how long one takes.
    struct Limits {
        Milliseconds hello{5'000};
        Milliseconds call{120'000};
    };

    static std::shared_ptr<ClientSession> open(FileDescriptor socket, Limits limits, Log log);

    /// The published object. Raises `StatusError`.
    DispatchRef root();

    Value invoke(const RemoteObject& object, MemberCall& call);
    std::uint32_t advise(const RemoteObject& object, const Text& events, std::shared_ptr<EventSink> sink);
    void unadvise(const RemoteObject& object, std::uint32_t cookie);
    /// Notes that an object is no longer held; the server is told ahead of the next call.
    void release(std::uint64_t id, std::uint64_t references);

    bool isOpen() const { return !m_connection->peerGone(); }
    void cancel() { m_connection->cancel(); }
    /// Asks the server to end the macro that it runs. May be called from another thread. False if the connection can't
    /// take it at once.
    bool requestStop() { return m_connection->notifyAtOnce("stop"); }

private:
    ClientSession(FileDescriptor socket, Limits limits, Log log);

    Json encodeObject(const ObjectRef& object) override;
    ObjectRef decodeObject(const Json& form) override;

    Json call(const char* method, Json parameters, std::optional<Milliseconds> limit);
    Json serve(const std::string& method, const Json& parameters);
    void sendReleases();

    Limits m_limits;
    /// Held during a whole call with the events that it causes; an event's handler calls back on the same thread.
    std::recursive_mutex m_turn;
    std::unique_ptr<Connection> m_connection;
    std::map<std::uint64_t, std::weak_ptr<RemoteObject>> m_objects;
    std::map<std::uint64_t, std::shared_ptr<EventSink>> m_sinks;
    /// The sinks' numbers by object and cookie.
    std::map<std::pair<std::uint64_t, std::uint32_t>, std::uint64_t> m_connections;
    std::uint64_t m_lastSink = 0;

    std::mutex m_releaseGuard;
    std::map<std::uint64_t, std::uint64_t> m_releases;
};

/// An object of the server as the client holds it. The same object is always the same proxy, while one is held.
class RemoteObject : public DispatchObject {
public:
    RemoteObject(std::shared_ptr<ClientSession> session, std::uint64_t id, Text typeName, std::vector<Text> facilities);
    ~RemoteObject() override;

    Value invoke(MemberCall& call) override { return m_session->invoke(*this, call); }
    Text typeName() const override { return m_typeName; }
    std::vector<Text> facilities() const override { return m_facilities; }
    std::uint32_t advise(const Text& eventInterface, std::shared_ptr<EventSink> sink) override
    {
        return m_session->advise(*this, eventInterface, std::move(sink));
    }
    void unadvise(std::uint32_t cookie) override { m_session->unadvise(*this, cookie); }

    std::uint64_t id() const { return m_id; }
    const ClientSession* session() const { return m_session.get(); }
    /// Counts that the server has sent the object once more.
    void received() { ++m_references; }

private:
    std::shared_ptr<ClientSession> m_session;
    std::uint64_t m_id;
    Text m_typeName;
    std::vector<Text> m_facilities;
    std::uint64_t m_references = 0;
};

} // namespace zn::automation
