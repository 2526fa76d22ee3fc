#include "automation/SocketRunningObjects.h"

namespace zn::automation {

SocketRunningObjects::SocketRunningObjects(std::filesystem::path runtimeFolder, ClientSession::Limits limits, Log log)
    : m_folder(std::move(runtimeFolder))
    , m_limits(limits)
    , m_log(std::move(log))
{
}

bool SocketRunningObjects::available()
{
    try {
        requirePrivateFolder(m_folder);
        return true;
    } catch (const StatusError& error) {
        if (m_log)
            m_log(error.what());
        return false;
    }
}

DispatchRef SocketRunningObjects::lookup(TextView name)
{
    const std::string fileName = socketFileName(toUtf8(name));
    {
        const std::lock_guard guard(m_guard);
        std::erase_if(m_known, [](const auto& entry) { return !entry.second.session->isOpen(); });
        if (const auto found = m_known.find(fileName); found != m_known.end())
            return found->second.root;
    }
    if (!available())
        return nullptr;
    FileDescriptor socket = connectTo(m_folder, fileName);
    return socket ? greet(fileName, std::move(socket)) : nullptr;
}

/// Whoever listens but doesn't answer as a published object does is no such object to the caller. The table isn't held
/// meanwhile, so that `cancel` reaches this wait, too.
DispatchRef SocketRunningObjects::greet(const std::string& fileName, FileDescriptor socket)
{
    try {
        const auto session = ClientSession::open(std::move(socket), m_limits, m_log);
        {
            const std::lock_guard guard(m_guard);
            m_known[fileName] = {session, nullptr};
        }
        DispatchRef root = session->root();
        const std::lock_guard guard(m_guard);
        m_known[fileName].root = root;
        return root;
    } catch (const std::exception& error) {
        if (m_log)
            m_log(error.what());
        const std::lock_guard guard(m_guard);
        m_known.erase(fileName);
        return nullptr;
    }
}

void SocketRunningObjects::requestStop(TextView name)
{
    const std::lock_guard guard(m_guard);
    if (const auto found = m_known.find(socketFileName(toUtf8(name))); found != m_known.end())
        found->second.session->requestStop();
}

std::unique_ptr<ObjectServer> SocketRunningObjects::publish(TextView name, DispatchRef root)
{
    return std::make_unique<ObjectServer>(m_folder, toUtf8(name), std::move(root), m_log);
}

void SocketRunningObjects::cancel()
{
    const std::lock_guard guard(m_guard);
    for (auto& [name, known] : m_known)
        known.session->cancel();
}

} // namespace zn::automation
