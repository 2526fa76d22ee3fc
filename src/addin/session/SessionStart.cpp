// How a session begins: the release is chosen and launched, and the application is made to work unseen.

#include "addin/session/FindExecutable.h"
#include "addin/session/ZNManager.h"
#include "base/Format.h"
#include "platform/Processes.h"
#include "platform/RunningObjects.h"

#include <charconv>

namespace zn {

namespace {

constexpr int showMinimized = 6;
constexpr std::uint32_t forcedExitCode = 255;

constexpr int publishRounds = 120;
constexpr std::chrono::milliseconds publishSlice{25};
constexpr int slicesPerRound = 40;

// What these settings mean is the application's own business; a session needs them written, in this order.
constexpr std::int32_t startToggles[] = {290, 291};
constexpr std::int32_t startInteger = 253;
constexpr std::int32_t applicationSwitch = 30;

template <class Work> Status statusOf(const Work& work)
{
    try {
        work();
        return S_OK;
    } catch (...) {
        return currentExceptionStatus();
    }
}

} // namespace

Status ZNManager::fail(const NumberedText& text, Status status)
{
    m_lastError = formatText(toUtf8(textOf(text)).c_str(), m_requestedYear);
    return status;
}

Status ZNManager::Start()
{
    const CallGuard::Scope guarded(m_guard);
    m_lastError.clear();
    m_app.reset();

    Text classId;
    const Status resolved = statusOf([&] { classId = resolveClass(); });
    if (failed(resolved))
        return fail(SessionTexts::notInstalled, resolved);

    // Before the process exists, so that dialogs of the start itself are answered. Windows of an older process, whose
    // number may belong to somebody else by now, are none of its business.
    m_processId = 0;
    m_watcher.setProcessId(0);
    m_watcher.start();
    bool launched = false;
    const Status launching = statusOf([&] { launched = launch(classId) && waitForApplication(); });
    m_watcher.stop();
    if (failed(launching) || !launched)
        return fail(SessionTexts::notStarted, E_FAIL);
    return prepareApplication();
}

Text ZNManager::resolveClass()
{
    if (m_requestedYear == 0)
        return resolveProgId(m_platform, plainProgId);
    try {
        return resolveProgId(m_platform, releaseProgId(m_requestedYear));
    } catch (const StatusError&) {
        Text classId = resolveProgId(m_platform, plainProgId);
        m_requestedYear = 0;
        return classId;
    }
}

bool ZNManager::launch(const Text& classId)
{
    const ExecutableChoice choice = findExecutable(m_platform, classId, m_requestedYear, m_forceRegression);
    m_requestedYear = choice.year;
    if (choice.commandLine.empty())
        return false;
    m_regressionMode = choice.regressionMode;
    if (choice.version) {
        m_revisionMajor = choice.version->major;
        m_revisionMinor = choice.version->minor;
    }
    m_processId = m_platform.processes.launch(choice.commandLine, showMinimized).value_or(0);
    m_watcher.setProcessId(m_processId);
    // From here on the guard knows whom to end; what it did before was for nobody.
    if (m_guard.hasFired())
        m_platform.processes.terminate(m_processId, forcedExitCode);
    return m_processId != 0 && !m_guard.hasFired();
}

/// Two minutes in rounds of a second. Within a round the table is looked at in short slices, so that a quick start
/// costs what it takes; and a process that has ended is not waited for. One that has published itself and doesn't
/// greet keeps a look waiting, which counts as the rounds that it takes.
bool ZNManager::waitForApplication()
{
    const Text name = itemName();
    const auto isRunning = [this] { return m_platform.processes.open(m_processId); };
    // A table that can't be reached costs no wait; a table that is never there must not keep the run for ever.
    for (int round = 0; round < publishRounds && !m_guard.hasFired(); ++round) {
        for (int slice = 0; slice < slicesPerRound && !m_guard.hasFired(); ++slice) {
            if (!m_platform.runningObjects.available() || !isRunning())
                break;
            const auto begun = std::chrono::steady_clock::now();
            m_app = m_platform.runningObjects.lookup(name);
            if (m_app)
                return true;
            const auto looked = std::chrono::steady_clock::now() - begun;
            round += static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(looked).count());
            m_platform.clock.sleep(publishSlice);
        }
    }
    m_platform.processes.terminate(m_processId, forcedExitCode);
    return false;
}

Status ZNManager::prepareApplication()
{
    const ZnApplication application(m_app);
    Text revision;
    Status status = statusOf([&] { revision = application.RevisionNumber(); });
    if (failed(status))
        return fail(SessionTexts::noRevision, status);
    // The running release overrides what the file said.
    const std::string numbers = toUtf8(revision);
    const char* const end = numbers.data() + numbers.size();
    const auto [afterMajor, error] = std::from_chars(numbers.data(), end, m_revisionMajor);
    if (error == std::errc() && afterMajor != end && *afterMajor == '.')
        std::from_chars(afterMajor + 1, end, m_revisionMinor);

    status = statusOf([&] {
        for (const std::int32_t toggle : startToggles)
            application.SetUserPreferenceToggle(toggle, true);
        application.SetUserPreferenceIntegerValue(startInteger, 0);
    });
    if (failed(status))
        return status;

    if (m_events.isConnected())
        throw StatusError(E_FAIL, "The events of an earlier CAD session are still connected.");
    status = statusOf([&] { m_events.attach(m_app, ZnEvents::application, applicationSink()); });
    if (failed(status))
        return fail(SessionTexts::eventsNotAttached, status);

    statusOf([&] { application.SetUserControl(false); });
    status = hideApplication(application);
    if (failed(status))
        return fail(SessionTexts::windowNotHidden, status);
    m_baselinePending = true;
    m_useCount = 0;
    return status;
}

Status ZNManager::hideApplication(const ZnApplication& application)
{
    const Status hidden = statusOf([&] {
        application.SetMainWindowHidden(true);
        const WindowHandle frame = application.FrameWindow();
        m_platform.windows.show(frame, ShowState::Maximized);
        m_platform.windows.show(frame, ShowState::Hide);
    });
    if (failed(hidden))
        return hidden;
    statusOf([&] { application.SetSwitch(applicationSwitch, false); });
    return statusOf([&] { application.SetVisible(false); });
}

} // namespace zn
