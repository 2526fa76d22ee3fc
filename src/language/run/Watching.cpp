#include "language/run/Watching.h"

#include "language/run/ShownValue.h"

namespace zn::language {

namespace {

/// Whether people know the slot: it isn't one of those in which statements keep what they need.
bool isNamed(const Variable& variable) { return !variable.name.empty() && variable.staticSlot < 0; }

} // namespace

Watching::Watching(LineWatcher& watcher, const Module& module, const std::vector<Value>& globals)
    : m_watcher(watcher)
    , m_module(module)
    , m_globals(globals)
{
    m_shownGlobals.reserve(globals.size());
    for (const Value& value : globals)
        m_shownGlobals.push_back(shownValue(value, module));
}

void Watching::enter(Frame& frame)
{
    const auto& locals = frame.procedure.locals;
    Call call{&frame, std::vector<Text>(locals.size())};
    for (std::size_t i = frame.procedure.parameters.size(); i < locals.size(); ++i)
        if (isNamed(locals[i]))
            call.shown[i] = shownValue(*frame.slots[i].at, m_module);
    m_calls.push_back(std::move(call));
}

void Watching::statement(Frame& frame, Position position)
{
    Call& call = callOf(frame);
    tellChanges(frame, call);
    if (position.line != call.last.line || position.column <= call.last.column)
        m_watcher.line({position.line, m_module.lines[static_cast<std::size_t>(position.line) - 1],
            frame.procedure.name, m_calls.size() - 1});
    call.last = position;
}

void Watching::leave(Frame& frame)
{
    tellChanges(frame, callOf(frame));
    m_calls.pop_back();
}

Watching::Call& Watching::callOf(const Frame& frame)
{
    while (m_calls.back().frame != &frame)
        m_calls.pop_back();
    return m_calls.back();
}

void Watching::tellChanges(Frame& frame, Call& call)
{
    const auto& locals = frame.procedure.locals;
    for (std::size_t i = 0; i < locals.size(); ++i)
        if (isNamed(locals[i]))
            compare(locals[i].name, *frame.slots[i].at, call.shown[i]);
    for (std::size_t i = 0; i < m_globals.size(); ++i)
        compare(m_module.globals[i].name, m_globals[i], m_shownGlobals[i]);
}

void Watching::compare(const Text& name, const Value& value, Text& shown)
{
    Text now = shownValue(value, m_module);
    if (now == shown)
        return;
    shown = std::move(now);
    m_watcher.changed({name, shown, m_calls.size() - 1});
}

} // namespace zn::language
