#include "addin/session/ZNManager.h"

#include "addin/session/DrawingFixUp.h"
#include "addin/session/MacroFile.h"
#include "addin/session/ZNDocument.h"
#include "base/Format.h"
#include "platform/Processes.h"
#include "platform/RunningObjects.h"

namespace zn {

namespace {

constexpr std::int32_t usesBeforeRestart = 100;
constexpr std::uint64_t alwaysFineBelow = 268435457;
constexpr std::uint32_t forcedExitCode = 255;
/// The application's events that tell of a document opened, made or made active.
constexpr std::int32_t documentEvents[] = {22, 12, 7};

} // namespace

/// Receives the application's events as long as its manager lives.
class ZNManager::ApplicationSink : public EventSink {
public:
    explicit ApplicationSink(ZNManager& manager)
        : m_manager(&manager)
    {
    }
    void forgetManager() { m_manager = nullptr; }

    Status onEvent(std::int32_t number, const std::vector<Value>&) override
    {
        for (const std::int32_t known : documentEvents)
            if (number == known && m_manager)
                return m_manager->connectNewDocuments();
        return S_OK;
    }

private:
    ZNManager* m_manager;
};

ZNManager::ZNManager(const Platform& platform)
    : m_platform(platform)
    , m_sink(std::make_shared<ApplicationSink>(*this))
    , m_startup(m_platform)
    , m_guard(
          m_platform.clock, [this] { m_platform.runningObjects.requestStop(itemName()); },
          [this] { m_platform.processes.terminate(m_processId, forcedExitCode); })
    , m_watcher(m_platform, [this] { Stop(true, S_OK); })
{
}

ZNManager::~ZNManager()
{
    m_watcher.stop();
    m_sink->forgetManager();
    if (m_processId != 0)
        m_platform.processes.terminate(m_processId, forcedExitCode);
    // After the process, so that nothing here waits for it. Sinks and the objects that they listen to hold each other.
    disconnectEvents();
}

void ZNManager::Configure(
    SavedFileNotes& fileLogic, TaskKind taskKind, const ObjectRef& taskInstance, std::int32_t requestedYear)
{
    m_fileLogic = &fileLogic;
    m_taskKind = taskKind;
    m_requestedYear = requestedYear;
    m_reach.reset();
    m_cannotConfine = false;
    disconnectDocuments();
    if (taskKind == TaskKind::Conversion)
        m_labels.read(taskInstance);
}

Status ZNManager::Restart(Status status)
{
    ++m_restartCount;
    if (m_watcher.taskSchedulerDialogSeen()) {
        m_forceRegression = true;
        m_restartCount = 0;
    }
    // Closing fails for a reason of its own only, not for what this restart is the answer to.
    m_lastError.clear();
    const Status stopped = Stop(true, status);
    return failed(stopped) ? stopped : Start();
}

void ZNManager::AfterMacro()
{
    Status status = S_OK;
    if (m_useCount >= usesBeforeRestart || measureMemory() == MemoryUse::TooLarge)
        status = Restart(S_OK);
    else if (!m_app)
        status = Start();
    ++m_useCount;
    m_baselinePending = false;
    checkStatus(status);
}

ZNManager::MemoryUse ZNManager::measureMemory()
{
    const auto size = m_platform.processes.workingSet(m_processId);
    if (!size)
        return MemoryUse::Unknown;
    if (m_baselinePending) {
        m_baselineWorkingSet = *size;
        return MemoryUse::Baseline;
    }
    const bool fine = *size <= 2 * m_baselineWorkingSet || *size < alwaysFineBelow;
    return fine ? MemoryUse::Fine : MemoryUse::TooLarge;
}

Text ZNManager::itemName() const { return formatText("Zentrel_PID_%d", m_processId.load()); }

std::shared_ptr<EventSink> ZNManager::applicationSink() const { return m_sink; }

Status ZNManager::connectNewDocuments()
{
    try {
        DispatchRef model = m_app ? ZnApplication(m_app).GetFirstDocument() : nullptr;
        for (; model; model = ZnModel(model).GetNext()) {
            if (m_documents.contains(model))
                continue;
            const auto document = std::make_shared<CZNDocument>(*this, model, ZnModel(model).GetType(), m_taskKind);
            checkStatus(document->Connect());
            m_documents.emplace(model, document);
        }
        return S_OK;
    } catch (...) {
        return currentExceptionStatus();
    }
}

void ZNManager::ManageStartup(bool restore)
{
    if (restore)
        return m_startup.restore();
    removeLeftOverMacros(m_platform.files, m_platform.processes);
    m_startup.switchOff();
}

std::vector<Text> ZNManager::TakeMessages() const
{
    const CallGuard::Scope guarded(m_guard);
    try {
        return m_app ? ZnApplication(m_app).GetErrorMessages() : std::vector<Text>();
    } catch (const StatusError&) {
        return {}; // it has gone, or knows no such list; the macro's own words remain
    }
}

std::vector<Text> ZNManager::GetRefusals() const
{
    const CallGuard::Scope guarded(m_guard);
    try {
        return m_app && m_reach && !m_cannotConfine ? ZnApplication(m_app).GetRefusals() : std::vector<Text>();
    } catch (const StatusError&) {
        return {}; // it has gone, which its macro's failure tells
    }
}

Text ZNManager::GetRevisionText() const
{
    if (!m_app)
        throw StatusError(E_POINTER, "The CAD application has not been started.");
    const CallGuard::Scope guarded(m_guard);
    return ZnApplication(m_app).GetBuildNumbers()[0];
}

ArkApplication ZNManager::DescribeApplication() const
{
    if (!m_app)
        throw StatusError(E_POINTER, "The CAD application has not been started.");
    const CallGuard::Scope guarded(m_guard);
    const ZnApplication application(m_app);
    Text build;
    for (const Text& number : application.GetBuildNumbers())
        build += (build.empty() || number.empty() ? u"" : u" ") + number;
    return {u"ZENTREL", application.RevisionNumber(), build};
}

Text ZNManager::textOf(const NumberedText& text) const
{
    return productText(m_platform.registry, m_platform.files, text);
}

Text ZNManager::GetLastError() const
{
    Text text = m_lastError;
    replaceAll(text, u" 0", u"");
    return text;
}

bool ZNManager::isOlderThan(std::uint16_t major, std::uint16_t minor) const
{
    return m_revisionMajor < major || (m_revisionMajor == major && m_revisionMinor < minor);
}

void ZNManager::FixUpDrawing(const ZnModel& drawing)
{
    if (m_app)
        fixUpDrawing(ZnApplication(m_app), drawing, m_regressionMode);
}

void ZNManager::NoteResult(const Text& path, const Text& label, bool isPrint)
{
    ++m_useCount;
    if (!m_fileLogic)
        return;
    if (isPrint)
        m_fileLogic->NotePrintedItem(path, label);
    else
        m_fileLogic->NoteSavedFile(path, label, false);
}

void ZNManager::ForgetDocument(CZNDocument& document)
{
    for (auto entry = m_documents.begin(); entry != m_documents.end(); ++entry) {
        if (entry->second.get() != &document)
            continue;
        const std::shared_ptr<CZNDocument> kept = entry->second;
        m_documents.erase(entry);
        kept->Disconnect();
        return;
    }
}

} // namespace zn
