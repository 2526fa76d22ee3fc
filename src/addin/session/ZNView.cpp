#include "addin/session/ZNView.h"

#include "addin/session/ZNDocument.h"

namespace zn {

namespace {

constexpr std::int32_t printEvent = 10;

} // namespace

CZNView::CZNView(std::weak_ptr<CZNDocument> document, DispatchRef view)
    : m_document(std::move(document))
    , m_view(std::move(view))
{
}

void CZNView::Connect() { m_events.attach(m_view, ZnEvents::modelView, shared_from_this()); }

void CZNView::Disconnect()
{
    if (m_disconnected)
        return;
    m_events.detach();
    m_view.reset();
    m_disconnected = true;
}

Status CZNView::onEvent(std::int32_t number, const std::vector<Value>&)
{
    try {
        const auto document = m_document.lock();
        if (number == printEvent && document)
            document->OnPrinted();
        return S_OK;
    } catch (...) {
        return currentExceptionStatus();
    }
}

} // namespace zn
