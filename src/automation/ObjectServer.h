#pragma once

#include "automation/Connection.h"
#include "base/Dispatch.h"

#include <atomic>
#include <filesystem>
#include <memory>

namespace zn::automation {

class ServerSession;

/// How serving has ended.
enum class ServeEnd {
    NoClient,   ///< nobody came in time
    ClientGone, ///< the client closed its connection or died, or broke the protocol
    Stopped,    ///< `stop` was called
};

/// A published object: listens on a socket and serves one client on the calling thread.
///
/// One client is enough, as a process serves whoever has started it. The name vanishes from the table when the client
/// has introduced itself, so that nobody else waits for a server that will never look at him.
class ObjectServer {
public:
    /// Publishes `root` under `name`. Raises `StatusError` if the folder isn't private or the socket can't be made.
    ObjectServer(std::filesystem::path runtimeFolder, const std::string& name, DispatchRef root, Log log);
    ObjectServer(const ObjectServer&) = delete;
    ObjectServer& operator=(const ObjectServer&) = delete;
    ~ObjectServer();

    /// Serves a client to its end, waiting `firstClient` at most for it to come.
    ServeEnd serve(Milliseconds firstClient);

    /// Lets `serve` return when the call that is being served has been answered. To be called from inside a call.
    void stop() { m_stopped = true; }

    /// Whether there was a client and it has gone, or wants the end of the call that is being served. Never waits: long
    /// work asks now and then.
    bool stopRequested() const;

private:
    /// Serves one connection. False if the peer never introduced itself.
    bool serveClient(FileDescriptor socket);
    void withdraw();

    std::filesystem::path m_folder;
    std::string m_fileName;
    DispatchRef m_root;
    Log m_log;
    FileDescriptor m_listener;
    std::unique_ptr<ServerSession> m_session;
    bool m_stopped = false;
};

} // namespace zn::automation
