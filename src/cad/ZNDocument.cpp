#include "cad/ZNDocument.h"

#include "base/Paths.h"
#include "cad/SessionTexts.h"
#include "cad/ZnApplication.h"
#include "cad/ZNManager.h"

namespace zn {

namespace {

using Handler = void (CZNDocument::*)(const Text&);
using Notice = void (CZNDocument::*)();

struct EventRow {
    ZnDocumentType type;
    std::int32_t number;
    Handler onPath;  ///< takes the path of the saved file
    Notice onNotice; ///< or nothing
};

constexpr EventRow eventTable[] = {
    {ZnDocumentType::Part, 7, &CZNDocument::OnSaveFiltered, nullptr},
    {ZnDocumentType::Part, 76, &CZNDocument::OnSaveFiltered, nullptr},
    {ZnDocumentType::Part, 26, &CZNDocument::OnSave, nullptr},
    {ZnDocumentType::Part, 2, nullptr, &CZNDocument::OnDestroy},
    {ZnDocumentType::Assembly, 7, &CZNDocument::OnSaveFiltered, nullptr},
    {ZnDocumentType::Assembly, 94, &CZNDocument::OnSaveFiltered, nullptr},
    {ZnDocumentType::Assembly, 31, &CZNDocument::OnSave, nullptr},
    {ZnDocumentType::Assembly, 2, nullptr, &CZNDocument::OnDestroy},
    {ZnDocumentType::Drawing, 7, &CZNDocument::OnSaveFiltered, nullptr},
    {ZnDocumentType::Drawing, 23, &CZNDocument::OnSave, nullptr},
    {ZnDocumentType::Drawing, 2, nullptr, &CZNDocument::OnDestroy},
};

constexpr std::int32_t viewPrintEvent = 10;

const char16_t* eventInterface(ZnDocumentType type)
{
    switch (type) {
    case ZnDocumentType::Part:
        return u"PartDocEvents";
    case ZnDocumentType::Assembly:
        return u"AssemblyDocEvents";
    case ZnDocumentType::Drawing:
        return u"DrawingDocEvents";
    default:
        return nullptr;
    }
}

class DocumentSink : public EventSink {
public:
    DocumentSink(CZNDocument& document, ZnDocumentType type)
        : m_document(document)
        , m_type(type)
    {
    }

    Status onEvent(std::int32_t number, const std::vector<Value>& arguments) override
    {
        try {
            for (const EventRow& row : eventTable) {
                if (row.type != m_type || row.number != number)
                    continue;
                if (row.onNotice)
                    (m_document.*row.onNotice)();
                else if (!arguments.empty())
                    (m_document.*row.onPath)(arguments.front().toText());
                return S_OK;
            }
            return S_OK;
        } catch (...) {
            return currentExceptionStatus();
        }
    }

private:
    CZNDocument& m_document;
    ZnDocumentType m_type;
};

class ViewSink : public EventSink {
public:
    explicit ViewSink(CZNDocument& document)
        : m_document(document)
    {
    }

    Status onEvent(std::int32_t number, const std::vector<Value>&) override
    {
        try {
            if (number == viewPrintEvent)
                m_document.OnPrinted();
            return S_OK;
        } catch (...) {
            return currentExceptionStatus();
        }
    }

private:
    CZNDocument& m_document;
};

void requireFree(std::uint32_t cookie)
{
    if (cookie != notConnected)
        throw StatusError(E_FAIL, "The event sink is connected already.");
}

Status attach(const DispatchRef& source, const char16_t* events, std::shared_ptr<EventSink> sink, std::uint32_t& cookie)
{
    requireFree(cookie);
    try {
        cookie = source->advise(events, std::move(sink));
        return S_OK;
    } catch (const StatusError& error) {
        return error.status();
    }
}

/// Ends a connection. A source that has gone has ended it already.
void detach(const DispatchRef& source, std::uint32_t& cookie)
{
    if (cookie == notConnected)
        return;
    try {
        source->unadvise(cookie);
    } catch (const StatusError&) {
        // nothing is left to detach from
    }
    cookie = notConnected;
}

/// A label by the administrator's grouping: one name for several, or the name of the one that was active.
void applyGrouping(const OutputGrouping& grouping, const char16_t* allOfThem, Text& label)
{
    constexpr std::int32_t oneFileEach = 4;
    constexpr std::int32_t all = 2;
    constexpr std::int32_t named = 8;
    if (grouping.files & oneFileEach)
        return;
    if (grouping.outputs & all)
        label = allOfThem;
    else if (grouping.outputs & named)
        label = grouping.name;
}

} // namespace

CZNView::CZNView(CZNDocument& document, DispatchRef view)
    : m_document(document)
    , m_view(std::move(view))
{
}

Status CZNView::Connect()
{
    return attach(m_view, u"ModelViewEvents", std::make_shared<ViewSink>(m_document), m_cookie);
}

void CZNView::Disconnect()
{
    if (!m_view)
        return;
    detach(m_view, m_cookie);
    m_view.reset();
}

CZNDocument::CZNDocument(ZNManager& manager, DispatchRef model, ZnDocumentType docType)
    : m_manager(manager)
    , m_model(std::move(model))
    , m_docType(docType)
{
}

Status CZNDocument::Connect()
{
    Status status = E_UNEXPECTED;
    if (m_manager.taskKind() == TaskKind::Printing)
        status = ConnectViews();
    const char16_t* events = eventInterface(m_docType);
    return events ? attach(m_model, events, std::make_shared<DocumentSink>(*this, m_docType), m_cookie) : status;
}

Status CZNDocument::ConnectViews()
{
    DispatchRef view = asDispatch(m_model->call(u"GetFirstModelView"));
    for (; view; view = asDispatch(view->call(u"GetNext"))) {
        if (m_views.contains(view))
            continue;
        auto created = std::make_unique<CZNView>(*this, view);
        if (const Status status = created->Connect(); failed(status))
            return status;
        m_views.emplace(view, std::move(created));
    }
    return S_OK;
}

void CZNDocument::Disconnect()
{
    if (m_disconnected)
        return;
    detach(m_model, m_cookie);
    for (const auto& [key, view] : m_views)
        view->Disconnect();
    m_model.reset();
    m_disconnected = true;
}

void CZNDocument::OnSaveFiltered(const Text& path)
{
    const Text extension = pathExtension(path);
    if (equalNoCase(extension, u".dxf") || equalNoCase(extension, u".dwg"))
        return; // these come by the plain save event
    RecordSave(path, false);
}

void CZNDocument::OnSave(const Text& path) { RecordSave(path, false); }

void CZNDocument::OnDestroy() { m_manager.ForgetDocument(*this); }

void CZNDocument::OnPrinted() { RecordSave(m_model->call(u"GetPathName").toText(), true); }

void CZNDocument::RecordSave(const Text& path, bool isPrint)
{
    Text label;
    if (m_docType == ZnDocumentType::Drawing)
        label = DrawingLabel();
    else if (m_docType != ZnDocumentType::None)
        label = ConfigurationLabel();
    m_manager.CountUse();
    if (isPrint)
        m_manager.notes().NotePrintedItem(path, label);
    else
        m_manager.notes().NoteSavedFile(path, label, false);
}

Text CZNDocument::DrawingLabel()
{
    Text label;
    try {
        if (const DispatchRef sheet = asDispatch(m_model->call(u"GetCurrentSheet")))
            label = sheet->call(u"GetName").toText();
    } catch (const StatusError&) {
        // the save is noted without the sheet's name
    }
    if (m_manager.taskKind() != TaskKind::Conversion)
        return label;
    applyGrouping(m_manager.sheets(), sessiontext::allSheets, label);
    if (m_manager.isOlderThan(21, 3))
        FixUpDrawingMembers();
    return label;
}

Text CZNDocument::ConfigurationLabel()
{
    Text label;
    try {
        const DispatchRef configurations = asDispatch(m_model->call(u"ConfigurationManager"));
        const DispatchRef active = configurations ? asDispatch(configurations->call(u"ActiveConfiguration")) : nullptr;
        if (active)
            label = active->call(u"Name").toText();
    } catch (const StatusError&) {
        // the save is noted without the configuration's name
    }
    if (m_manager.taskKind() == TaskKind::Conversion)
        applyGrouping(m_manager.configurations(), sessiontext::allConfigurations, label);
    return label;
}

/// Before a save, versions older than 21.3 in regression mode need the members of a drawing's views corrected.
void CZNDocument::FixUpDrawingMembers()
{
    constexpr std::int32_t membersAreCurrent = 347;
    if (!m_manager.regressionMode() || m_manager.application().GetToggle(membersAreCurrent))
        return;
    const auto elements = [](const Value& value) -> std::vector<Value> {
        const auto* array = value.get<ArrayRef>();
        return array && *array ? (*array)->elements : std::vector<Value>();
    };
    for (const Value& sheet : elements(m_model->call(u"GetViews"))) {
        for (const Value& element : elements(sheet)) {
            const DispatchRef view = asDispatch(element);
            if (!view)
                throw StatusError(E_POINTER, "A drawing view is missing.");
            for (const Value& entry : elements(view->call(u"GetMembers"))) {
                const DispatchRef member = asDispatch(entry);
                if (member && member->call(u"GetText1").toText() != member->call(u"GetText2").toText())
                    member->call(u"Update");
            }
        }
    }
}

} // namespace zn
