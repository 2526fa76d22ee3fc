#include "addin/session/ZnApplication.h"

#include <algorithm>

namespace zn {

namespace {

/// Null for nothing; an object that takes no calls by name is a type mismatch.
DispatchRef dispatchOf(const Value& value)
{
    if (value.isEmpty() || value.type() == ValueType::Null)
        return nullptr;
    const ObjectRef object = value.toObject();
    DispatchRef result = query<DispatchObject>(object);
    if (object && !result)
        throw StatusError(DISP_E_TYPEMISMATCH, "The CAD application gave an object that can't be called.");
    return result;
}

/// The object that a member gives; one that is missing where the next call needs it is a null-pointer failure.
DispatchRef memberObject(const DispatchRef& object, const char16_t* member)
{
    DispatchRef result = dispatchOf(object->call(member));
    if (!result)
        throw StatusError(E_POINTER, "The CAD application gave no object for '" + toUtf8(member) + "'.");
    return result;
}

/// The elements of an array; nothing instead of an array is an empty one.
std::vector<Value> elementsOf(const Value& value)
{
    const ArrayRef* array = value.get<ArrayRef>();
    if (array && *array)
        return (*array)->elements;
    if (value.isEmpty() || value.type() == ValueType::Null)
        return {};
    throw StatusError(DISP_E_TYPEMISMATCH, "The CAD application gave no list where one was expected.");
}

std::vector<DispatchRef> objectsOf(const Value& value)
{
    std::vector<DispatchRef> objects;
    for (const Value& element : elementsOf(value))
        objects.push_back(dispatchOf(element));
    return objects;
}

} // namespace

ZnDocumentType ZnModel::GetType() const { return static_cast<ZnDocumentType>(m_object->call(u"GetType").toInt32()); }

Text ZnModel::GetPathName() const { return m_object->call(u"GetPathName").toText(); }

DispatchRef ZnModel::GetNext() const { return dispatchOf(m_object->call(u"GetNext")); }

Text ZnModel::ActiveConfigurationName() const
{
    const DispatchRef manager = memberObject(m_object, u"ConfigurationManager");
    return memberObject(manager, u"ActiveConfiguration")->call(u"Name").toText();
}

Text ZnModel::CurrentSheetName() const { return memberObject(m_object, u"GetCurrentSheet")->call(u"GetName").toText(); }

DispatchRef ZnModel::GetFirstModelView() const { return dispatchOf(m_object->call(u"GetFirstModelView")); }

std::vector<std::vector<DispatchRef>> ZnModel::GetViews() const
{
    std::vector<std::vector<DispatchRef>> sheets;
    for (const Value& sheet : elementsOf(m_object->call(u"GetViews")))
        sheets.push_back(objectsOf(sheet));
    return sheets;
}

DispatchRef ZnModelView::GetNext() const { return dispatchOf(m_object->call(u"GetNext")); }

std::vector<DispatchRef> ZnModelView::GetMembers() const { return objectsOf(m_object->call(u"GetMembers")); }

Text ZnViewMember::GetText1() const { return m_object->call(u"GetText1").toText(); }

Text ZnViewMember::GetText2() const { return m_object->call(u"GetText2").toText(); }

void ZnViewMember::Update() const { m_object->call(u"Update"); }

Text ZnApplication::RevisionNumber() const { return m_object->call(u"RevisionNumber").toText(); }

bool ZnApplication::GetUserPreferenceToggle(std::int32_t number) const
{
    return m_object->call(u"GetUserPreferenceToggle", {number}).toBool();
}

void ZnApplication::SetUserPreferenceToggle(std::int32_t number, bool value) const
{
    m_object->call(u"SetUserPreferenceToggle", {number, value});
}

bool ZnApplication::SetUserPreferenceIntegerValue(std::int32_t number, std::int32_t value) const
{
    return m_object->call(u"SetUserPreferenceIntegerValue", {number, value}).toBool();
}

void ZnApplication::SetMainWindowHidden(bool hidden) const { m_object->put(u"UserControlHidden", hidden); }

void ZnApplication::SetSwitch(std::int32_t number, bool value) const { m_object->call(u"SetSwitch", {number, value}); }

void ZnApplication::SetVisible(bool visible) const { m_object->put(u"Visible", visible); }

void ZnApplication::SetUserControl(bool control) const { m_object->put(u"UserControl", control); }

std::uint32_t ZnApplication::FrameWindow() const
{
    return static_cast<std::uint32_t>(memberObject(m_object, u"Frame")->call(u"GetHWnd").toInt32());
}

bool ZnApplication::CloseAllDocuments(bool includeUnsaved) const
{
    return m_object->call(u"CloseAllDocuments", {includeUnsaved}).toBool();
}

void ZnApplication::ExitApp() const { m_object->call(u"ExitApp"); }

std::array<Text, 3> ZnApplication::GetBuildNumbers() const
{
    MemberCall call{u"GetBuildNumbers2", MemberUse::Call, {Text(), Text(), Text()}, {}};
    m_object->invoke(call);
    return {call.arguments.at(0).toText(), call.arguments.at(1).toText(), call.arguments.at(2).toText()};
}

std::vector<Text> ZnApplication::GetErrorMessages() const
{
    MemberCall call{u"GetErrorMessages", MemberUse::Call, {Value(), Value(), Value()}, {}};
    m_object->invoke(call);
    std::vector<Text> messages;
    for (const Value& message : elementsOf(call.arguments.at(0)))
        messages.push_back(message.toText());
    return messages;
}

DispatchRef ZnApplication::GetFirstDocument() const { return dispatchOf(m_object->call(u"GetFirstDocument")); }

bool ZnApplication::OffersReadAhead() const
{
    const std::vector<Text> offered = m_object->facilities();
    return std::find(offered.begin(), offered.end(), u"ReadAhead") != offered.end();
}

void ZnApplication::ReadAhead(const std::vector<Text>& files) const
{
    m_object->call(u"ReadAhead", {Value::arrayOf(std::vector<Value>(files.begin(), files.end()))});
}

bool ZnApplication::ConfineMacros(const std::vector<Text>& folders) const
{
    try {
        m_object->call(u"ConfineMacros", {Value::arrayOf(std::vector<Value>(folders.begin(), folders.end()))});
        return true;
    } catch (const StatusError& failure) {
        if (failure.status() != DISP_E_MEMBERNOTFOUND)
            throw;
        return false;
    }
}

std::vector<Text> ZnApplication::GetRefusals() const
{
    std::vector<Text> sentences;
    for (const Value& sentence : elementsOf(m_object->call(u"GetRefusals")))
        sentences.push_back(sentence.toText());
    return sentences;
}

ZnApplication::MacroResult ZnApplication::RunMacro(const Text& file, const Text& module, const Text& procedure) const
{
    return {m_object->call(u"RunMacro", {file, module, procedure}).toBool(), 0};
}

ZnApplication::MacroResult ZnApplication::RunMacro2(
    const Text& file, const Text& module, const Text& procedure, std::int32_t options) const
{
    MemberCall call{u"RunMacro2", MemberUse::Call, {file, module, procedure, options, std::int32_t{0}}, {}};
    const bool success = m_object->invoke(call).toBool();
    return {success, call.arguments.at(4).toInt32()};
}

} // namespace zn
