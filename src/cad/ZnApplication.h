#pragma once

#include "base/Dispatch.h"

namespace zn {

/// The CAD application's automation interface as the session uses it: the one place that knows its members' names.
/// Every operation raises the application's failure, or `RPC_E_DISCONNECTED` when its process has gone.
class ZnApplication {
public:
    ZnApplication() = default;
    explicit ZnApplication(DispatchRef object)
        : m_object(std::move(object))
    {
    }

    explicit operator bool() const { return m_object != nullptr; }
    const DispatchRef& object() const { return m_object; }

    Text RevisionNumber() const;
    void SetToggle(std::int32_t preference, bool value) const;
    bool GetToggle(std::int32_t preference) const;
    void SetInteger(std::int32_t preference, std::int32_t value) const;
    void SetMainWindowHidden(bool hidden) const;
    void SetSwitch(std::int32_t number, bool value) const;
    void SetVisible(bool visible) const;
    void SetUserControl(bool value) const;
    /// The native handle of the frame's window; 0 for none.
    std::int32_t FrameWindow() const;
    void CloseAllDocuments(bool includeUnsaved) const;
    void Exit() const;
    /// The first of the three build texts, such as "zn2018".
    Text BuildText() const;
    /// Null when there is none.
    DispatchRef FirstDocument() const;

    struct MacroResult {
        bool success = false;
        std::int32_t reason = 0;
    };
    /// The macro call of revisions below 17, which gives no reason.
    MacroResult RunMacro(const Text& file, const Text& module, const Text& procedure) const;
    /// The macro call of revisions from 17 on.
    MacroResult RunMacro2(const Text& file, const Text& module, const Text& procedure) const;

private:
    DispatchRef m_object;
};

/// The object in a value; null for nothing, or for an object without members.
DispatchRef asDispatch(const Value& value);

} // namespace zn
