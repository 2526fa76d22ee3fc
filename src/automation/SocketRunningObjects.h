#pragma once

#include "automation/ObjectServer.h"
#include "automation/RemoteObject.h"
#include "platform/RunningObjects.h"

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>

namespace zn::automation {

/// The running object table of this user: one socket for each published object, in a folder that only he may enter.
///
/// A client's connection lives as long as this table or its server, so that who looks a name up twice gets one and
/// the same object, and a server whose object is let go for a moment doesn't take its client for gone.
class SocketRunningObjects : public RunningObjects {
public:
    explicit SocketRunningObjects(std::filesystem::path runtimeFolder, ClientSession::Limits limits = {}, Log log = {});

    /// The folder is there (it is made if it was missing) and is closed to others.
    bool available() override;
    DispatchRef lookup(TextView name) override;
    void requestStop(TextView name) override;

    /// Publishes an object; it can be looked up until the server is destroyed or has got its client.
    std::unique_ptr<ObjectServer> publish(TextView name, DispatchRef root);

    /// Ends every call under way with `E_ABORT` and its connection with it. May be called from any thread.
    void cancel();

private:
    DispatchRef greet(const std::string& fileName, FileDescriptor socket);

    std::filesystem::path m_folder;
    ClientSession::Limits m_limits;
    Log m_log;
    std::mutex m_guard;
    struct Known {
        std::shared_ptr<ClientSession> session;
        DispatchRef root; ///< null while the server hasn't introduced itself
    };
    std::map<std::string, Known> m_known;
};

} // namespace zn::automation
