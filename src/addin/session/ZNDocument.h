#pragma once

#include "addin/session/EventConnection.h"
#include "addin/session/ZnApplication.h"
#include "addin/session/ZNView.h"
#include "contracts/host/Codes.h"

#include <map>

namespace zn {

class ZNManager;

/// One document that is open in the CAD application: listens to its events and tells the file logic each file that is
/// saved, before it is written, with the configuration or sheet that it shows. The events come on the run's thread
/// while it waits in a call into the application.
class CZNDocument : public EventSink, public std::enable_shared_from_this<CZNDocument> {
public:
    /// `manager` outlives the connection.
    CZNDocument(ZNManager& manager, DispatchRef model, ZnDocumentType type, TaskKind taskKind);

    /// Connects the views if the task prints, then the document. `E_UNEXPECTED` for a document of another type. Raises
    /// `E_FAIL` if it is connected already.
    Status Connect();
    /// Ends all connections and lets the document go. Harmless a second time; failures of the application, which may
    /// have gone, are passed over.
    void Disconnect();

    Status onEvent(std::int32_t number, const std::vector<Value>& arguments) override;
    /// A view has been printed.
    void OnPrinted();

private:
    void OnSaveFiltered(const Text& path);
    void OnSave(const Text& path);
    void OnDestroy();
    void RecordSave(const Text& path, bool isPrint);
    Text sheetLabel();
    Text configurationLabel();
    Status connectViews();

    ZNManager& m_manager;
    DispatchRef m_model;
    ZnDocumentType m_type;
    TaskKind m_taskKind;
    bool m_disconnected = false;
    EventConnection m_events;
    std::map<DispatchRef, std::shared_ptr<CZNView>> m_views;
};

} // namespace zn
