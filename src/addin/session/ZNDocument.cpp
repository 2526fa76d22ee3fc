#include "addin/session/ZNDocument.h"

#include "addin/session/SessionTexts.h"
#include "addin/session/ZNManager.h"
#include "base/Paths.h"

namespace zn {

namespace {

enum class DocumentEvent { SaveFiltered, Save, Destroy };

struct EventRow {
    ZnDocumentType type;
    std::int32_t number;
    DocumentEvent event;
};

constexpr EventRow events[] = {
    {ZnDocumentType::Part, 7, DocumentEvent::SaveFiltered},
    {ZnDocumentType::Part, 76, DocumentEvent::SaveFiltered},
    {ZnDocumentType::Part, 26, DocumentEvent::Save},
    {ZnDocumentType::Part, 2, DocumentEvent::Destroy},
    {ZnDocumentType::Assembly, 7, DocumentEvent::SaveFiltered},
    {ZnDocumentType::Assembly, 94, DocumentEvent::SaveFiltered},
    {ZnDocumentType::Assembly, 31, DocumentEvent::Save},
    {ZnDocumentType::Assembly, 2, DocumentEvent::Destroy},
    {ZnDocumentType::Drawing, 7, DocumentEvent::SaveFiltered},
    {ZnDocumentType::Drawing, 23, DocumentEvent::Save},
    {ZnDocumentType::Drawing, 2, DocumentEvent::Destroy},
};

TextView eventInterface(ZnDocumentType type)
{
    switch (type) {
    case ZnDocumentType::Part:
        return ZnEvents::part;
    case ZnDocumentType::Assembly:
        return ZnEvents::assembly;
    case ZnDocumentType::Drawing:
        return ZnEvents::drawing;
    case ZnDocumentType::None:
        break;
    }
    return {};
}

Text pathArgument(const std::vector<Value>& arguments) { return arguments.empty() ? Text() : arguments[0].toText(); }

} // namespace

CZNDocument::CZNDocument(ZNManager& manager, DispatchRef model, ZnDocumentType type, TaskKind taskKind)
    : m_manager(manager)
    , m_model(std::move(model))
    , m_type(type)
    , m_taskKind(taskKind)
{
}

Status CZNDocument::connectViews()
{
    try {
        for (DispatchRef view = ZnModel(m_model).GetFirstModelView(); view; view = ZnModelView(view).GetNext()) {
            if (m_views.contains(view))
                continue;
            const auto entry = std::make_shared<CZNView>(weak_from_this(), view);
            entry->Connect();
            m_views.emplace(view, entry);
        }
        return S_OK;
    } catch (...) {
        return currentExceptionStatus();
    }
}

Status CZNDocument::Connect()
{
    // A document whose views can't be listened to still tells what it saves.
    const Status walked = m_taskKind == TaskKind::Printing ? connectViews() : E_UNEXPECTED;
    const TextView interface = eventInterface(m_type);
    if (interface.empty())
        return walked;
    m_events.attach(m_model, interface, shared_from_this());
    return S_OK;
}

void CZNDocument::Disconnect()
{
    if (m_disconnected)
        return;
    m_events.detach();
    for (const auto& [object, view] : m_views)
        view->Disconnect();
    m_model.reset();
    m_disconnected = true;
}

Status CZNDocument::onEvent(std::int32_t number, const std::vector<Value>& arguments)
{
    try {
        for (const EventRow& row : events) {
            if (row.type != m_type || row.number != number)
                continue;
            switch (row.event) {
            case DocumentEvent::SaveFiltered:
                OnSaveFiltered(pathArgument(arguments));
                break;
            case DocumentEvent::Save:
                OnSave(pathArgument(arguments));
                break;
            case DocumentEvent::Destroy:
                OnDestroy();
                break;
            }
        }
        return S_OK;
    } catch (...) {
        return currentExceptionStatus();
    }
}

void CZNDocument::OnSaveFiltered(const Text& path)
{
    // The application announces these two formats a second time, by the event that isn't filtered.
    const Text extension = pathExtension(path);
    if (!equalNoCase(extension, u".dxf") && !equalNoCase(extension, u".dwg"))
        RecordSave(path, false);
}

void CZNDocument::OnSave(const Text& path) { RecordSave(path, false); }

void CZNDocument::OnDestroy() { m_manager.ForgetDocument(*this); }

void CZNDocument::OnPrinted() { RecordSave(ZnModel(m_model).GetPathName(), true); }

void CZNDocument::RecordSave(const Text& path, bool isPrint)
{
    Text label;
    if (m_type == ZnDocumentType::Drawing)
        label = sheetLabel();
    else if (m_type == ZnDocumentType::Part || m_type == ZnDocumentType::Assembly)
        label = configurationLabel();
    m_manager.NoteResult(path, label, isPrint);
}

Text CZNDocument::sheetLabel()
{
    Text label;
    try {
        label = ZnModel(m_model).CurrentSheetName();
    } catch (const StatusError&) {
        // A save without a sheet's name is still a save.
    }
    if (m_taskKind != TaskKind::Conversion)
        return label;
    label = m_manager.labels().sheets.labelOf(label, m_manager.textOf(SessionTexts::allSheets));
    if (m_manager.isOlderThan(21, 3))
        m_manager.FixUpDrawing(ZnModel(m_model));
    return label;
}

Text CZNDocument::configurationLabel()
{
    Text label;
    try {
        label = ZnModel(m_model).ActiveConfigurationName();
    } catch (const StatusError&) {
        // A save without a configuration's name is still a save.
    }
    if (m_taskKind != TaskKind::Conversion)
        return label;
    return m_manager.labels().configurations.labelOf(label, m_manager.textOf(SessionTexts::allConfigurations));
}

} // namespace zn
