#include "language/run/ErrorObject.h"

#include "language/objects/Arguments.h"
#include "language/values/Conversions.h"

namespace zn::language {

void ErrorObject::raiseFrom(const MemberCall& call)
{
    const ArgumentList given(call, {u"Number", u"Source", u"Description", u"HelpFile", u"HelpContext"});
    ScriptError error;
    error.number = longOf(given.required(0));
    if (error.number == 0)
        raise(error::invalidCall);
    error.source = given.has(1) ? textOf(given.required(1)) : Text();
    error.description = given.has(2) ? textOf(given.required(2)) : Text(errorText(error.number));
    throw error;
}

Value ErrorObject::invoke(MemberCall& call)
{
    const bool writes = call.use != MemberUse::Call;
    const auto is = [&](TextView name) { return equalNoCase(call.name, name); };
    if (is(u"Raise"))
        raiseFrom(call);
    if (is(u"Clear")) {
        clear();
        return {};
    }
    if (call.name.empty() || is(u"Number")) {
        if (writes)
            m_error.number = longOf(call.arguments.back());
        return m_error.number;
    }
    if (is(u"Description") || is(u"Source")) {
        Text& text = is(u"Source") ? m_error.source : m_error.description;
        if (writes)
            text = textOf(call.arguments.back());
        return text;
    }
    if (is(u"LastDllError") || is(u"HelpContext"))
        return std::int32_t(0);
    if (is(u"HelpFile"))
        return Text();
    raise(error::memberMissing);
}

} // namespace zn::language
