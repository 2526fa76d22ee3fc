#pragma once

#include "automation/Connection.h"
#include "base/Dispatch.h"

#include <map>
#include <memory>
#include <set>

namespace zn::automation {

/// The protocol's version; both sides must have the same.
inline constexpr int protocolVersion = 1;

/// The server's side of one client's connection: the objects that the client holds, and the calls that it makes.
class ServerSession : private ObjectCodec {
public:
    ServerSession(FileDescriptor socket, DispatchRef root, Log log);
    ~ServerSession() override;

    /// Serves one call. Raises `StatusError` when the connection has ended.
    void serveOne(std::optional<Milliseconds> limit);

    /// Whether the client has introduced itself.
    bool greeted() const { return m_greeted; }
    bool clientGone() const { return m_connection->peerGone(); }
    /// Whether the client has asked for the end of the call that is being served, or has gone. Never waits.
    bool stopRequested();

private:
    struct Export {
        DispatchRef object;
        /// How often the object was sent; the client gives that many back.
        std::uint64_t references = 0;
        /// Connections of sinks that the client made and hasn't ended.
        std::set<std::uint32_t> cookies;
    };

    Json encodeObject(const ObjectRef& object) override;
    ObjectRef decodeObject(const Json& form) override;

    Json serve(const std::string& method, const Json& parameters);
    Json hello(const Json& parameters);
    Json invoke(const Json& parameters);
    Json advise(const Json& parameters);
    Json unadvise(const Json& parameters);
    Json release(const Json& parameters);
    Json stop(const Json& parameters);
    Export& exported(const Json& parameters);

    DispatchRef m_root;
    std::map<std::uint64_t, Export> m_exports;
    std::map<const Object*, std::uint64_t> m_ids;
    std::uint64_t m_lastId = 0;
    bool m_greeted = false;
    int m_invoking = 0; ///< calls inside one another
    bool m_stopRequested = false;
    /// Shared with the sinks, which may outlive the session.
    std::shared_ptr<Connection> m_connection;
};

} // namespace zn::automation
