#include "language/functions/Given.h"
#include "language/functions/Intrinsic.h"
#include "language/Host.h"
#include "language/run/RunContext.h"

namespace zn::language {

namespace {

Value messageBox(RunContext& context, Given a)
{
    return context.host.messageBox({textOf(a[0]), textAt(a, 2), longAt(a, 1, 0)});
}

Value inputBox(RunContext& context, Given a)
{
    return context.host.inputBox({textOf(a[0]), textAt(a, 1), textAt(a, 2)});
}

Value createObject(RunContext& context, Given a) { return context.createObject(textOf(a[0])); }

/// Only what runs already could be got by name; that is the host's to say.
Value getObject(RunContext& context, Given a)
{
    if (!isGiven(a, 1) || !textAt(a, 0).empty())
        raise(error::cannotCreateObject);
    return context.createObject(textOf(a[1]));
}

Value callByName(RunContext&, Given a)
{
    constexpr std::int32_t method = 1, get = 2, let = 4, set = 8;
    const DispatchRef object = objectOf(a[0]);
    if (!object)
        raise(error::objectNotSet);
    const std::int32_t kind = longOf(a[2]);
    MemberCall call{textOf(a[1]), MemberUse::Call, {}, {}};
    if (kind == let || kind == set)
        call.use = kind == set ? MemberUse::PutObject : MemberUse::Put;
    else if ((kind & (method | get)) == 0)
        raise(error::invalidCall);
    for (std::size_t i = 3; i < a.size(); ++i)
        call.arguments.push_back(a[i]);
    return object->invoke(call);
}

Value doEvents(RunContext& context, Given)
{
    context.checkpoint();
    return std::int16_t(0);
}

Value pointerTo(RunContext& context, Given a) { return context.pointers.pointerTo(textOf(a[0])); }

Value environment(RunContext& context, Given a) { return context.host.environment(textOf(a[0])); }

Value errorMessage(RunContext& context, Given a)
{
    if (!isGiven(a, 0))
        return context.err->error().description;
    return Text(errorText(longOf(a[0])));
}

Value errorLine(RunContext& context, Given) { return context.err->line; }

Value nothing(RunContext&, Given) { return {}; }

constexpr ValueType any = ValueType::Variant;

// "Beep" does nothing: nobody hears a worker.
constexpr Intrinsic functions[] = {
    {u"MsgBox", 1, 5, ValueType::Int32, messageBox, u"Prompt Buttons Title HelpFile Context"},
    {u"InputBox", 1, 7, ValueType::String, inputBox, u"Prompt Title Default XPos YPos HelpFile Context"},
    {u"CreateObject", 1, 2, any, createObject},
    {u"GetObject", 0, 2, any, getObject, u"PathName Class"},
    {u"CallByName", 3, -1, any, callByName},
    {u"DoEvents", 0, 0, ValueType::Int16, doEvents},
    {u"StrPtr", 1, 1, ValueType::Int64, pointerTo},
    {u"Environ", 1, 1, ValueType::String, environment},
    {u"Error", 0, 1, ValueType::String, errorMessage},
    {u"Erl", 0, 0, ValueType::Int32, errorLine},
    {u"Beep", 0, 0, any, nothing},
};

} // namespace

std::span<const Intrinsic> interactionFunctions() { return functions; }

} // namespace zn::language
