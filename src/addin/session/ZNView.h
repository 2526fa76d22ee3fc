#pragma once

#include "addin/session/EventConnection.h"

namespace zn {

class CZNDocument;

/// One view of a document in a task that prints: tells the document when it has been printed.
class CZNView : public EventSink, public std::enable_shared_from_this<CZNView> {
public:
    CZNView(std::weak_ptr<CZNDocument> document, DispatchRef view);

    /// Raises `E_FAIL` if it is connected already, otherwise what the application raises.
    void Connect();
    /// Harmless a second time.
    void Disconnect();

    Status onEvent(std::int32_t number, const std::vector<Value>& arguments) override;

private:
    std::weak_ptr<CZNDocument> m_document;
    DispatchRef m_view;
    bool m_disconnected = false;
    EventConnection m_events;
};

} // namespace zn
