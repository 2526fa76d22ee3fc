#include "language/Machine.h"

#include "base/Dates.h"
#include "language/Host.h"
#include "language/run/Evaluator.h"

#include <ctime>

namespace zn::language {

namespace {

// A macro's calls may take this much of the thread's stack, which is far below what a thread gets.
constexpr std::ptrdiff_t stackBytes = std::ptrdiff_t{3} * 1024 * 1024;

/// Where the stack is now. A local variable's address won't do: a sanitizer may keep it elsewhere.
const char* frame() { return static_cast<const char*>(__builtin_frame_address(0)); }

/// Where the stack of the outermost running macro begins: one macro may run another through its host.
thread_local const char* stackBegin = nullptr;

class StackScope {
public:
    explicit StackScope(const char* here)
        : m_outermost(stackBegin == nullptr)
    {
        if (m_outermost)
            stackBegin = here;
    }
    StackScope(const StackScope&) = delete;
    StackScope& operator=(const StackScope&) = delete;
    ~StackScope()
    {
        if (m_outermost)
            stackBegin = nullptr;
    }

private:
    bool m_outermost;
};

} // namespace

RuntimeFault::RuntimeFault(FaultKind theKind, std::int32_t theNumber, Text theDescription)
    : std::runtime_error(toUtf8(theDescription))
    , kind(theKind)
    , number(theNumber)
    , description(std::move(theDescription))
{
}

std::optional<Text> DeclaredCall::text(std::size_t index) const
{
    if (index >= arguments.size())
        throw StatusError(DISP_E_BADPARAMCOUNT);
    const Value& argument = arguments[index];
    if (const auto* given = argument.get<Text>())
        return *given;
    const std::int64_t pointer = *argument.changedTo(ValueType::Int64).get<std::int64_t>();
    if (pointer == 0)
        return std::nullopt;
    const Text* pointed = pointers.textAt(pointer);
    if (!pointed)
        throw StatusError(E_INVALIDARG, "The pointer points to no text.");
    return *pointed;
}

double Host::now()
{
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    std::tm local{};
    localtime_r(&time.tv_sec, &local);
    const double seconds = local.tm_hour * 3600 + local.tm_min * 60 + std::min(local.tm_sec, 59)
        + static_cast<double>(time.tv_nsec) / 1e9;
    return dayCount({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, 0, 0, 0}) + seconds / 86400.0;
}

Text Host::environment(const Text&) { return {}; }

Evaluator::Evaluator(Program program, Host& host, FileAccess& files)
    : m_program(std::move(program))
    , m_module(m_program.module())
    , m_context(host, files, m_module.compareText, m_module.arrayBase)
{
    m_globals.reserve(m_module.globals.size());
    for (const Variable& variable : m_module.globals)
        m_globals.push_back(initialValue(variable));
    if (LineWatcher* watcher = host.watcher())
        m_watching.emplace(*watcher, m_module, m_globals);
}

void Evaluator::checkStack() const
{
    const std::ptrdiff_t used = stackBegin - frame();
    if (used > stackBytes || used < -stackBytes)
        raise(error::outOfStack);
}

RuntimeFault Evaluator::faultOf(const ScriptError& error) const
{
    RuntimeFault fault(FaultKind::RuntimeError, error.number, error.description);
    if (m_origin) {
        fault.line = m_origin->position.line;
        fault.column = m_origin->position.column;
        fault.procedure = m_origin->procedure;
        const auto line = static_cast<std::size_t>(fault.line);
        if (line >= 1 && line <= m_module.lines.size())
            fault.sourceLine = m_module.lines[line - 1];
    }
    return fault;
}

Value Evaluator::run(TextView name, std::vector<Value> arguments)
{
    const StackScope stack(frame());
    const int index = indexOf(m_module.procedureNames, name);
    if (index < 0)
        throw RuntimeFault(FaultKind::MissingProcedure, error::procedureMissing,
            Text(errorText(error::procedureMissing)) + u": " + Text(name));
    m_origin.reset();
    m_context.err->clear();
    Value result;
    try {
        result = callFromOutside(m_module.procedures[static_cast<std::size_t>(index)], std::move(arguments));
    } catch (const ScriptError& error) {
        const RuntimeFault fault = faultOf(error);
        finishQuietly();
        throw fault;
    } catch (const Interruption&) {
        RuntimeFault fault(FaultKind::Interrupted, error::interrupted, Text(errorText(error::interrupted)));
        fault.line = m_position.line;
        fault.column = m_position.column;
        finishQuietly();
        throw fault;
    } catch (const EndOfMacro&) {
        // A macro may end itself anywhere.
    }
    finish();
    return result;
}

void Evaluator::finish()
{
    if (!m_printed.empty())
        printLines(u"\r\n");
    try {
        m_context.opened.closeAll();
    } catch (const ScriptError& error) {
        m_origin.reset();
        throw faultOf(error);
    }
}

/// For a macro that has failed already: its own error is the one to tell of.
void Evaluator::finishQuietly()
{
    try {
        finish();
    } catch (const RuntimeFault&) {
        return; // the files' failure came second
    }
}

Machine::Machine(Program program, Host& host, FileAccess& files)
    : m_evaluator(std::make_unique<Evaluator>(std::move(program), host, files))
{
}

Machine::~Machine() = default;

Value Machine::run(TextView procedure, std::vector<Value> arguments)
{
    return m_evaluator->run(procedure, std::move(arguments));
}

} // namespace zn::language
