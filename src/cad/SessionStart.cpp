#include "base/Format.h"
#include "cad/SessionTexts.h"
#include "cad/ZNManager.h"
#include "platform/Clock.h"
#include "platform/Processes.h"
#include "platform/RunningObjects.h"
#include "platform/TopWindows.h"

#include <cstdio>

namespace zn {

namespace {

constexpr const char16_t* applicationId = u"Zentrel.Application";
constexpr int firstYear = 1992; // the program identifier's number is the year minus this
constexpr int looksForApplication = 120;
constexpr std::uint32_t forcedExitCode = 255;

// Each prescribed wait of a second is cut into slices, so that an answer that comes early costs no whole second.
constexpr std::chrono::milliseconds slice{20};
constexpr int slicesPerSecond = 50;

// Application preferences and switches. Their meaning is the application's; a task needs these values, in this order.
constexpr std::int32_t quietToggles[] = {290, 291};
constexpr std::int32_t quietInteger = 253;
constexpr std::int32_t desktopSwitch = 30;

/// The status of a call into the application.
template <class Call> Status statusOf(Call&& call)
{
    try {
        call();
        return S_OK;
    } catch (const StatusError& error) {
        return error.status();
    }
}

} // namespace

Text ZNManager::NotInstalledText() const { return formatText(sessiontext::notInstalled, m_requestedYear); }

Status ZNManager::ResolveClass(Text& classId)
{
    const Text plain = applicationId;
    auto resolved = resolveProgId(
        m_platform, m_requestedYear == 0 ? plain : formatText("%s.%d", plain, m_requestedYear - firstYear));
    if (!resolved && m_requestedYear != 0) {
        resolved = resolveProgId(m_platform, plain);
        if (resolved)
            m_requestedYear = 0;
    }
    if (!resolved) {
        m_lastError = NotInstalledText();
        return REGDB_E_CLASSNOTREG;
    }
    classId = *resolved;
    return S_OK;
}

Status ZNManager::Start()
{
    m_lastError.clear();
    m_app = {};
    Text classId;
    if (const Status status = ResolveClass(classId); failed(status))
        return status;

    m_watcher.start();
    bool launched = false;
    try {
        launched = Launch(classId);
    } catch (...) {
        launched = false; // whatever it was, the application isn't there
    }
    m_watcher.stop();
    if (!launched) {
        m_lastError = formatText(sessiontext::startFailed, m_requestedYear);
        return E_FAIL;
    }
    const Status status = SetUp();
    m_baselinePending = true;
    m_useCount = 0;
    return status;
}

bool ZNManager::Launch(const Text& classId)
{
    m_processId = 0;
    ExecutableSearch search{m_requestedYear, m_forceRegression};
    const Text commandLine = findExecutable(m_platform, classId, search);
    m_requestedYear = search.requestedYear;
    m_regressionMode = search.regressionMode;
    m_revisionMajor = search.revisionMajor;
    m_revisionMinor = search.revisionMinor;
    if (commandLine.empty())
        return false;
    const auto process = m_platform.processes.launch(commandLine, static_cast<int>(ShowState::Minimized));
    if (!process)
        return false;
    m_processId = *process;
    const DispatchRef application = WaitForApplication();
    if (!application) {
        m_platform.processes.terminate(m_processId, forcedExitCode);
        return false;
    }
    m_app = ZnApplication(application);
    return true;
}

/// Null if the process doesn't publish itself in two minutes, has ended, or the table can't be reached.
DispatchRef ZNManager::WaitForApplication()
{
    const Text name = formatText("Zentrel_PID_%d", m_processId.load());
    if (!m_platform.runningObjects.available())
        return nullptr;
    for (int look = 0; look < looksForApplication * slicesPerSecond; ++look) {
        if (const DispatchRef application = m_platform.runningObjects.lookup(name))
            return application;
        if (m_platform.processes.exitCode(m_processId) != stillActive)
            return nullptr;
        m_platform.clock.sleep(slice);
    }
    return m_platform.runningObjects.lookup(name);
}

Status ZNManager::SetUp()
{
    Text revision;
    Status status = statusOf([&] { revision = m_app.RevisionNumber(); });
    if (failed(status)) {
        m_lastError = sessiontext::revisionFailed;
        return status;
    }
    std::sscanf(toUtf8(revision).c_str(), "%hu.%hu", &m_revisionMajor, &m_revisionMinor);
    status = statusOf([&] {
        for (const std::int32_t toggle : quietToggles)
            m_app.SetToggle(toggle, true);
        m_app.SetInteger(quietInteger, 0);
    });
    if (!failed(status))
        status = AttachEvents();
    return failed(status) ? status : HideWindow();
}

Status ZNManager::HideWindow()
{
    statusOf([&] { m_app.SetUserControl(false); });
    Status status = statusOf([&] {
        m_app.SetMainWindowHidden(true);
        // A window that was never shown large would come up small in the middle of a macro.
        if (const auto window = static_cast<WindowHandle>(m_app.FrameWindow())) {
            m_platform.windows.show(window, ShowState::Maximized);
            m_platform.windows.show(window, ShowState::Hide);
        }
    });
    if (!failed(status)) {
        statusOf([&] { m_app.SetSwitch(desktopSwitch, false); });
        status = statusOf([&] { m_app.SetVisible(false); });
    }
    if (failed(status))
        m_lastError = sessiontext::hidingFailed;
    return status;
}

Status ZNManager::AskToLeave()
{
    return statusOf([&] {
        m_app.SetMainWindowHidden(false);
        m_app.SetSwitch(desktopSwitch, true);
        m_app.SetVisible(false);
        m_app.CloseAllDocuments(true);
        m_app.Exit();
    });
}

bool ZNManager::WaitForEnd(int seconds)
{
    for (int waited = 0; waited < seconds * slicesPerSecond; ++waited) {
        m_platform.clock.sleep(slice);
        if (m_platform.processes.exitCode(m_processId) != stillActive)
            return true;
    }
    return false;
}

Status ZNManager::Stop(bool force, Status status)
{
    constexpr int politeSeconds = 11;
    constexpr int forcedSeconds = 46;
    DetachEvents();
    for (const auto& [model, document] : m_documents)
        document->Disconnect();
    m_documents.clear();
    m_closed.clear();

    Processes& processes = m_platform.processes;
    const bool opened = m_processId != 0 && processes.open(m_processId);
    Status result = m_app ? status : E_POINTER;
    if (m_app && !failed(status))
        result = AskToLeave();
    if (!opened) {
        m_lastError.clear();
        m_app = {};
        return S_OK;
    }
    const bool left = !failed(result) && WaitForEnd(force ? politeSeconds : 1);
    if (!left) {
        const bool terminated = processes.terminate(m_processId, forcedExitCode);
        // Without force the sense of the test is the reverse, and has always been.
        const bool stuck = force ? !WaitForEnd(forcedSeconds) : terminated;
        if (stuck) {
            m_lastError = sessiontext::closeFailed;
            result = failed(result) ? result : E_FAIL;
        }
    }
    m_app = {};
    return m_lastError.empty() ? S_OK : result;
}

void ZNManager::StopAfterFailedStart(Status status)
{
    const Text text = m_lastError;
    Stop(true, status);
    m_lastError = text;
}

} // namespace zn
