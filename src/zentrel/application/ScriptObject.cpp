#include "zentrel/application/ScriptObject.h"

#include <algorithm>
#include <fmt/format.h>

namespace zn::zentrel {

namespace {

/// Marks an argument that a caller leaves out in the middle of a list.
constexpr Status parameterNotGiven = zn::statusCode(0x80020004);

MemberTable::Entry entryOf(const Member& member)
{
    MemberTable::Entry entry{&member, {}, 0};
    for (Text name : zn::split(member.parameters, u' ')) {
        if (name.empty())
            continue;
        if (name.front() == u'[')
            name = name.substr(1, name.size() - 2);
        else
            ++entry.required;
        entry.parameters.push_back(zn::foldCase(name));
    }
    return entry;
}

bool leftOut(const Value& value)
{
    const auto* error = value.get<zn::ErrorValue>();
    return error && error->status == parameterNotGiven;
}

[[noreturn]] void raiseCount(const Text& member)
{
    throw StatusError(zn::DISP_E_BADPARAMCOUNT, fmt::format("Wrong number of arguments for '{}'.", zn::toUtf8(member)));
}

/// Brings the call's arguments into the order of the parameters.
std::vector<Value*> inOrder(MemberCall& call, const MemberTable::Entry& entry)
{
    if (call.arguments.size() > entry.parameters.size())
        raiseCount(call.name);
    std::vector<Value*> values(entry.parameters.size(), nullptr);
    const std::size_t positional = call.arguments.size() - call.argumentNames.size();
    for (std::size_t i = 0; i < call.arguments.size(); ++i) {
        std::size_t place = i;
        if (i >= positional) {
            const Text& name = call.argumentNames[i - positional];
            const auto found = std::find(entry.parameters.begin(), entry.parameters.end(), zn::foldCase(name));
            place = static_cast<std::size_t>(found - entry.parameters.begin());
            if (place == entry.parameters.size() || values[place])
                throw StatusError(zn::DISP_E_MEMBERNOTFOUND,
                    fmt::format("'{}' takes no argument named '{}' here.", zn::toUtf8(call.name), zn::toUtf8(name)));
        }
        if (!leftOut(call.arguments[i]))
            values[place] = &call.arguments[i];
    }
    for (std::size_t i = 0; i < entry.required; ++i)
        if (!values[i])
            raiseCount(call.name);
    return values;
}

} // namespace

std::vector<Text> Arguments::texts(std::size_t index) const
{
    const Value given = value(index);
    const auto* array = given.get<ArrayRef>();
    if (!array)
        return given.isEmpty() ? std::vector<Text>() : std::vector<Text>{given.toText()};
    std::vector<Text> texts;
    if (*array)
        for (const Value& element : (*array)->elements)
            texts.push_back(element.toText());
    return texts;
}

MemberTable::MemberTable(std::span<const Member> own, const MemberTable* base)
{
    if (base)
        *this = *base;
    for (const Member& member : own)
        (member.use == MemberUse::Call ? m_calls : m_puts).insert_or_assign(zn::foldCase(member.name), entryOf(member));
}

const MemberTable::Entry* MemberTable::find(TextView name, MemberUse use) const
{
    const auto& entries = use == MemberUse::Call ? m_calls : m_puts;
    const auto found = entries.find(zn::foldCase(name));
    return found == entries.end() ? nullptr : &found->second;
}

bool MemberTable::hasName(TextView name) const { return find(name, MemberUse::Call) || find(name, MemberUse::Put); }

Value ScriptObject::invoke(MemberCall& call)
{
    const MemberTable::Entry* entry = members().find(call.name, call.use);
    if (!entry) {
        const char* format = members().hasName(call.name) ? "The property '{}' of '{}' cannot be used this way."
                                                          : "There is no member '{}' in '{}'.";
        throw StatusError(zn::DISP_E_MEMBERNOTFOUND,
            fmt::format(fmt::runtime(format), zn::toUtf8(call.name), zn::toUtf8(typeName())));
    }
    // The object stays until its member has ended, also if the member lets the last reference go.
    const auto self = shared_from_this();
    Arguments arguments(inOrder(call, *entry));
    return entry->member->function(*this, arguments);
}

Value textArray(const std::vector<Text>& texts)
{
    return Value::arrayOf(std::vector<Value>(texts.begin(), texts.end()));
}

} // namespace zn::zentrel
