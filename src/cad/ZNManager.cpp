#include "cad/ZNManager.h"

#include "addin/TaskVariables.h"
#include "base/Format.h"
#include "cad/SessionTexts.h"
#include "platform/Processes.h"

#include <algorithm>

namespace zn {

namespace {

constexpr std::int32_t usesBeforeRestart = 100;
/// Smaller sessions are never replaced for their size.
constexpr std::uint64_t leastLargeWorkingSet = 256ULL * 1024 * 1024 + 1;

class ApplicationSink : public EventSink {
public:
    explicit ApplicationSink(std::function<void()> onDocuments)
        : m_onDocuments(std::move(onDocuments))
    {
    }

    Status onEvent(std::int32_t number, const std::vector<Value>&) override
    {
        constexpr std::int32_t documentEvents[] = {22, 12, 7};
        try {
            if (std::find(std::begin(documentEvents), std::end(documentEvents), number) != std::end(documentEvents))
                m_onDocuments();
            return S_OK;
        } catch (...) {
            return currentExceptionStatus();
        }
    }

private:
    std::function<void()> m_onDocuments;
};

void readGrouping(const ObjectRef& task, const char16_t* files, const char16_t* outputs, const char16_t* name,
    OutputGrouping& grouping)
{
    grouping.files = readInteger(task, files).value_or(grouping.files);
    grouping.outputs = readInteger(task, outputs).value_or(grouping.outputs);
    grouping.name = readText(task, name).value_or(grouping.name);
}

} // namespace

ZNManager::ZNManager(const Platform& platform)
    : m_platform(platform)
    , m_startup(platform)
    , m_watcher(platform, m_processId, [this] { Stop(true, S_OK); })
{
}

ZNManager::~ZNManager() = default;

void ZNManager::Configure(
    SavedFileNotes& notes, TaskKind taskKind, const ObjectRef& taskInstance, std::int32_t requestedYear)
{
    m_notes = &notes;
    m_taskKind = taskKind;
    m_requestedYear = requestedYear;
    m_documents.clear();
    if (taskKind != TaskKind::Conversion)
        return;
    readGrouping(taskInstance, u"FileSheets", u"OutputSheets", u"NamedSheet", m_sheets);
    readGrouping(taskInstance, u"FileConfs", u"OutputConfs", u"NamedConf", m_configurations);
}

Status ZNManager::Restart(Status status)
{
    ++m_restartCount;
    if (m_watcher.taskSchedulerDialogSeen()) {
        m_forceRegression = true;
        m_restartCount = 0;
    }
    if (const Status stopped = Stop(true, status); failed(stopped))
        return stopped;
    return Start();
}

void ZNManager::AfterMacro()
{
    const Status status = RestartIfWornOut();
    ++m_useCount;
    m_baselinePending = false;
    checkStatus(status, "The CAD application could not be restarted.");
}

Status ZNManager::RestartIfWornOut()
{
    if (m_useCount >= usesBeforeRestart || IsTooLarge())
        return Restart(S_OK);
    return m_app ? S_OK : Start();
}

bool ZNManager::IsTooLarge()
{
    const auto workingSet = m_platform.processes.workingSet(m_processId);
    if (!workingSet)
        return false;
    if (m_baselinePending) {
        m_baselineWorkingSet = *workingSet;
        return false;
    }
    return *workingSet > 2 * m_baselineWorkingSet && *workingSet >= leastLargeWorkingSet;
}

Text ZNManager::GetLastError() const
{
    Text text = m_lastError;
    replaceAll(text, u" 0", u"");
    return text;
}

void ZNManager::ManageStartup(bool restore)
{
    if (restore)
        m_startup.restore();
    else
        m_startup.switchOff();
}

bool ZNManager::isOlderThan(std::uint16_t major, std::uint16_t minor) const
{
    return m_revisionMajor < major || (m_revisionMajor == major && m_revisionMinor < minor);
}

Status ZNManager::AttachEvents()
{
    if (m_cookie != notConnected)
        throw StatusError(E_FAIL, "The application's events are connected already.");
    try {
        m_cookie = m_app.object()->advise(
            u"ApplicationEvents", std::make_shared<ApplicationSink>([this] { OnDocumentEvent(); }));
        return S_OK;
    } catch (const StatusError& error) {
        m_lastError = sessiontext::attachFailed;
        return error.status();
    }
}

void ZNManager::DetachEvents()
{
    if (m_app && m_cookie != notConnected) {
        try {
            m_app.object()->unadvise(m_cookie);
        } catch (const StatusError&) {
            // the application has gone, and its connections with it
        }
    }
    m_cookie = notConnected;
}

/// Takes on each document that isn't known yet. The first failure ends the walk.
void ZNManager::OnDocumentEvent()
{
    DispatchRef model = m_app.FirstDocument();
    for (; model; model = asDispatch(model->call(u"GetNext"))) {
        if (m_documents.contains(model))
            continue;
        const auto type = static_cast<ZnDocumentType>(model->call(u"GetType").toInt32());
        auto document = std::make_shared<CZNDocument>(*this, model, type);
        checkStatus(document->Connect());
        m_documents.emplace(model, std::move(document));
    }
}

void ZNManager::ForgetDocument(const CZNDocument& document)
{
    for (auto entry = m_documents.begin(); entry != m_documents.end(); ++entry) {
        if (entry->second.get() != &document)
            continue;
        const auto kept = entry->second; // the caller is one of its event handlers
        m_documents.erase(entry);
        kept->Disconnect();
        m_closed.push_back(kept);
        return;
    }
}

} // namespace zn
