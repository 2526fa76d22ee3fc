#pragma once

#include "base/Dispatch.h"

#include <array>

namespace zn {

/// Document types as the CAD application gives them.
enum class ZnDocumentType : std::int32_t { None = 0, Part = 1, Assembly = 2, Drawing = 3 };

/// Names of the CAD application's event interfaces.
namespace ZnEvents {
inline constexpr TextView application = u"ApplicationEvents";
inline constexpr TextView part = u"PartDocEvents";
inline constexpr TextView assembly = u"AssemblyDocEvents";
inline constexpr TextView drawing = u"DrawingDocEvents";
inline constexpr TextView modelView = u"ModelViewEvents";
}

/// One open document of the CAD application, called by member names. Every call raises the application's failure as a
/// `StatusError`, `RPC_E_DISCONNECTED` if its process has gone.
class ZnModel {
public:
    explicit ZnModel(DispatchRef object)
        : m_object(std::move(object))
    {
    }

    ZnDocumentType GetType() const;
    Text GetPathName() const;
    /// Null behind the last one.
    DispatchRef GetNext() const;
    Text ActiveConfigurationName() const;
    Text CurrentSheetName() const;
    DispatchRef GetFirstModelView() const;
    /// A drawing's views: for each sheet the list of its views.
    std::vector<std::vector<DispatchRef>> GetViews() const;

private:
    DispatchRef m_object;
};

/// A view of a document.
class ZnModelView {
public:
    explicit ZnModelView(DispatchRef object)
        : m_object(std::move(object))
    {
    }

    /// Null behind the last one.
    DispatchRef GetNext() const;
    /// The things in a drawing view that carry the two texts of `ZnViewMember`.
    std::vector<DispatchRef> GetMembers() const;

private:
    DispatchRef m_object;
};

class ZnViewMember {
public:
    explicit ZnViewMember(DispatchRef object)
        : m_object(std::move(object))
    {
    }

    Text GetText1() const;
    Text GetText2() const;
    void Update() const;

private:
    DispatchRef m_object;
};

/// The CAD application as the session calls it: the one place that knows the names of its members. Failures as above.
class ZnApplication {
public:
    struct MacroResult {
        bool success = false;
        std::int32_t reason = 0;
    };

    explicit ZnApplication(DispatchRef object)
        : m_object(std::move(object))
    {
    }

    Text RevisionNumber() const;
    bool GetUserPreferenceToggle(std::int32_t number) const;
    void SetUserPreferenceToggle(std::int32_t number, bool value) const;
    /// False if the application refuses the value.
    bool SetUserPreferenceIntegerValue(std::int32_t number, std::int32_t value) const;
    void SetMainWindowHidden(bool hidden) const;
    void SetSwitch(std::int32_t number, bool value) const;
    void SetVisible(bool visible) const;
    void SetUserControl(bool control) const;
    /// The native handle of the main window, 0 if it has none.
    std::uint32_t FrameWindow() const;
    bool CloseAllDocuments(bool includeUnsaved) const;
    void ExitApp() const;
    /// The release that the application's files go by, the running release, and its corrections.
    std::array<Text, 3> GetBuildNumbers() const;
    /// What the application has said since it was asked last, which it forgets.
    std::vector<Text> GetErrorMessages() const;
    /// Null if no document is open.
    DispatchRef GetFirstDocument() const;
    /// Whether it can read files ahead. No call of the application.
    bool OffersReadAhead() const;
    /// Tells it of files that macros will open later, the first one first.
    void ReadAhead(const std::vector<Text>& files) const;
    /// Names the folders that macros may reach from now on. False if the application knows nothing of that.
    bool ConfineMacros(const std::vector<Text>& folders) const;
    /// What macros were refused since then, in sentences.
    std::vector<Text> GetRefusals() const;
    /// The call of releases below 17, which tells no reason.
    MacroResult RunMacro(const Text& file, const Text& module, const Text& procedure) const;
    MacroResult RunMacro2(const Text& file, const Text& module, const Text& procedure, std::int32_t options) const;

private:
    DispatchRef m_object;
};

} // namespace zn
