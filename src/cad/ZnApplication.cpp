#include "cad/ZnApplication.h"

namespace zn {

DispatchRef asDispatch(const Value& value)
{
    const auto* object = value.get<ObjectRef>();
    return object ? query<DispatchObject>(*object) : nullptr;
}

Text ZnApplication::RevisionNumber() const { return m_object->call(u"RevisionNumber").toText(); }

void ZnApplication::SetToggle(std::int32_t preference, bool value) const
{
    m_object->call(u"SetUserPreferenceToggle", {preference, value});
}

bool ZnApplication::GetToggle(std::int32_t preference) const
{
    return m_object->call(u"GetUserPreferenceToggle", {preference}).toBool();
}

void ZnApplication::SetInteger(std::int32_t preference, std::int32_t value) const
{
    m_object->call(u"SetUserPreferenceIntegerValue", {preference, value});
}

void ZnApplication::SetMainWindowHidden(bool hidden) const { m_object->put(u"UserControlHidden", hidden); }

void ZnApplication::SetSwitch(std::int32_t number, bool value) const { m_object->call(u"SetSwitch", {number, value}); }

void ZnApplication::SetVisible(bool visible) const { m_object->put(u"Visible", visible); }

void ZnApplication::SetUserControl(bool value) const { m_object->put(u"UserControl", value); }

std::int32_t ZnApplication::FrameWindow() const
{
    const DispatchRef frame = asDispatch(m_object->call(u"Frame"));
    if (!frame)
        throw StatusError(E_POINTER, "The CAD application has no frame.");
    return frame->call(u"GetHWnd").toInt32();
}

void ZnApplication::CloseAllDocuments(bool includeUnsaved) const
{
    m_object->call(u"CloseAllDocuments", {includeUnsaved});
}

void ZnApplication::Exit() const { m_object->call(u"ExitApp"); }

Text ZnApplication::BuildText() const
{
    MemberCall call{u"GetBuildNumbers2", MemberUse::Call, {Text(), Text(), Text()}, {}};
    m_object->invoke(call);
    return call.arguments.front().toText();
}

DispatchRef ZnApplication::FirstDocument() const { return asDispatch(m_object->call(u"GetFirstDocument")); }

ZnApplication::MacroResult ZnApplication::RunMacro(const Text& file, const Text& module, const Text& procedure) const
{
    return {m_object->call(u"RunMacro", {file, module, procedure}).toBool(), 0};
}

ZnApplication::MacroResult ZnApplication::RunMacro2(const Text& file, const Text& module, const Text& procedure) const
{
    constexpr std::int32_t noOptions = 0;
    MemberCall call{u"RunMacro2", MemberUse::Call, {file, module, procedure, noOptions, std::int32_t(0)}, {}};
    const bool success = m_object->invoke(call).toBool();
    return {success, call.arguments.back().toInt32()};
}

} // namespace zn
