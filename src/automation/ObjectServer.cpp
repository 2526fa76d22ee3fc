#include "automation/ObjectServer.h"

#include "automation/ServerSession.h"

#include <fmt/format.h>
#include <unistd.h>

namespace zn::automation {

namespace {

/// Who connects must introduce himself within this time.
constexpr Milliseconds helloLimit{5'000};

} // namespace

ObjectServer::ObjectServer(std::filesystem::path runtimeFolder, const std::string& name, DispatchRef root, Log log)
    : m_folder(std::move(runtimeFolder))
    , m_fileName(socketFileName(name))
    , m_root(std::move(root))
    , m_log(std::move(log))
{
    requirePrivateFolder(m_folder);
    m_listener = listenIn(m_folder, m_fileName);
}

ObjectServer::~ObjectServer() { withdraw(); }

void ObjectServer::withdraw()
{
    if (!m_listener)
        return;
    m_listener = FileDescriptor();
    std::error_code ignored;
    std::filesystem::remove(m_folder / m_fileName, ignored);
}

ServeEnd ObjectServer::serve(Milliseconds firstClient)
{
    const auto deadline = std::chrono::steady_clock::now() + firstClient;
    for (;;) {
        const auto left = std::chrono::duration_cast<Milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0)
            return ServeEnd::NoClient;
        FileDescriptor socket = acceptFrom(m_listener, left);
        if (socket && serveClient(std::move(socket)))
            return m_stopped ? ServeEnd::Stopped : ServeEnd::ClientGone;
    }
}

bool ObjectServer::serveClient(FileDescriptor socket)
{
    try {
        m_session = std::make_unique<ServerSession>(std::move(socket), m_root, m_log);
        m_session->serveOne(helloLimit);
        if (m_session->greeted())
            withdraw();
        while (!m_stopped)
            m_session->serveOne(m_session->greeted() ? std::nullopt : std::optional(helloLimit));
    } catch (const StatusError& error) {
        if (error.status() != RPC_E_DISCONNECTED && m_log)
            m_log(fmt::format("Client refused: {}", error.what()));
    }
    return m_session && m_session->greeted();
}

bool ObjectServer::stopRequested() const { return m_session && m_session->greeted() && m_session->stopRequested(); }

} // namespace zn::automation
