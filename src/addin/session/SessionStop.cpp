// How a session ends: politely, then by force, and never with a process left behind.

#include "addin/session/ZNDocument.h"
#include "addin/session/ZNManager.h"
#include "platform/Processes.h"

namespace zn {

namespace {

constexpr std::uint32_t forcedExitCode = 255;
constexpr int politeSeconds = 11;
constexpr int forcedSeconds = 46;
constexpr std::chrono::milliseconds endSlice{20};
constexpr int slicesPerSecond = 50;
constexpr std::int32_t applicationSwitch = 30;

} // namespace

void ZNManager::disconnectEvents()
{
    m_events.detach();
    disconnectDocuments();
}

void ZNManager::disconnectDocuments()
{
    for (const auto& [model, document] : m_documents)
        document->Disconnect();
    m_documents.clear();
}

Status ZNManager::leavePolitely()
{
    try {
        const ZnApplication application(m_app);
        application.SetMainWindowHidden(false);
        application.SetSwitch(applicationSwitch, true);
        application.SetVisible(false);
        application.CloseAllDocuments(true);
        application.ExitApp();
        return S_OK;
    } catch (...) {
        return currentExceptionStatus();
    }
}

/// Looks in short slices within each second, so that a process that ends at once costs no second.
bool ZNManager::waitForEnd(int seconds)
{
    for (int slice = 0; slice < seconds * slicesPerSecond; ++slice) {
        m_platform.clock.sleep(endSlice);
        if (m_platform.processes.exitCode(m_processId) != stillActive)
            return true;
    }
    return false;
}

Status ZNManager::Stop(bool force, Status status)
{
    const CallGuard::Scope guarded(m_guard);
    disconnectEvents();
    const bool opened = m_processId != 0 && m_platform.processes.open(m_processId);
    if (!m_app)
        status = E_POINTER;
    else if (!failed(status))
        status = leavePolitely();

    if (!opened) {
        m_lastError.clear();
        m_app.reset();
        return S_OK;
    }
    if (failed(status) || !waitForEnd(force ? politeSeconds : 1)) {
        const bool terminated = m_platform.processes.terminate(m_processId, forcedExitCode);
        // Without force the success of the termination counts as the failure, which all callers avoid by forcing.
        if (force ? !waitForEnd(forcedSeconds) : terminated)
            status = fail(SessionTexts::notClosed, failed(status) ? status : E_FAIL);
    }
    m_app.reset();
    return m_lastError.empty() ? S_OK : status;
}

Status ZNManager::StopKeepingError(Status status)
{
    const Text error = m_lastError;
    const Status stopped = Stop(true, status);
    if (m_lastError.empty())
        m_lastError = error;
    return stopped;
}

} // namespace zn
