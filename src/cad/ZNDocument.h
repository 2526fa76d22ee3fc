#pragma once

#include "base/Dispatch.h"
#include "host/Codes.h"

#include <map>
#include <memory>

namespace zn {

class CZNDocument;
class ZNManager;

/// A cookie that stands for no event connection.
inline constexpr std::uint32_t notConnected = 0xFEFEFEFE;

/// Document types of the CAD application.
enum class ZnDocumentType : std::int32_t { None = 0, Part = 1, Assembly = 2, Drawing = 3 };

/// One view of a document in a print task: tells its document when a print is sent.
class CZNView {
public:
    CZNView(CZNDocument& document, DispatchRef view);

    /// Attaches to the view's events. `E_FAIL` is raised if it is attached already.
    Status Connect();
    /// Harmless a second time.
    void Disconnect();

private:
    CZNDocument& m_document;
    DispatchRef m_view;
    std::uint32_t m_cookie = notConnected;
};

/// One document open in the CAD application: listens to its events and tells the session's notes the path of each file
/// that is about to be saved, with the configuration or sheet that it shows. Used on the run driver's thread, while it
/// waits in a call into the application.
class CZNDocument {
public:
    CZNDocument(ZNManager& manager, DispatchRef model, ZnDocumentType docType);

    /// Connects the views if the task prints, then the sink of the document's type.
    Status Connect();
    /// Harmless a second time.
    void Disconnect();

    void OnSaveFiltered(const Text& path);
    void OnSave(const Text& path);
    void OnDestroy();
    void OnPrinted();

private:
    Status ConnectViews();
    void RecordSave(const Text& path, bool isPrint);
    Text DrawingLabel();
    Text ConfigurationLabel();
    void FixUpDrawingMembers();

    ZNManager& m_manager;
    DispatchRef m_model;
    ZnDocumentType m_docType;
    std::uint32_t m_cookie = notConnected;
    bool m_disconnected = false;
    std::map<DispatchRef, std::unique_ptr<CZNView>> m_views;
};

} // namespace zn
