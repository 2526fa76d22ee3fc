#include "language/functions/Intrinsic.h"
#include "language/run/Evaluator.h"
#include "language/values/Record.h"

namespace zn::language {

namespace {

/// Makes a frame the running one for as long as it lives.
class FrameScope {
public:
    FrameScope(Frame*& current, Frame& frame)
        : m_current(current)
        , m_outer(current)
    {
        m_current = &frame;
    }
    FrameScope(const FrameScope&) = delete;
    FrameScope& operator=(const FrameScope&) = delete;
    ~FrameScope() { m_current = m_outer; }

private:
    Frame*& m_current;
    Frame* m_outer;
};

bool isRecord(const Value& value)
{
    const auto* held = value.get<ObjectRef>();
    return held && *held && query<Record>(*held);
}

bool sameType(const Type& a, const Type& b)
{
    return a.base == b.base && a.array == b.array && a.record == b.record && a.fixedLength == b.fixedLength;
}

} // namespace

void Evaluator::prepareLocals(Frame& frame, std::size_t first)
{
    const auto& locals = frame.procedure.locals;
    for (std::size_t i = 0; i < locals.size(); ++i) {
        Slot& slot = frame.slots[i];
        if (!slot.at)
            slot.at = &slot.own;
        if (!slot.type)
            slot.type = &locals[i].type;
        const bool needsValue = i >= first && locals[i].staticSlot < 0
            && (locals[i].type.base != ValueType::Variant || locals[i].type.array);
        if (needsValue)
            slot.own = initialValue(locals[i]);
    }
}

Value Evaluator::finishCall(Frame& frame)
{
    checkStack();
    {
        const FrameScope scope(m_frame, frame);
        if (m_watching)
            m_watching->enter(frame);
        execute(frame);
        if (m_watching)
            m_watching->leave(frame);
    }
    if (frame.handler.active)
        m_context.err->clear();
    return frame.procedure.resultSlot >= 0 ? std::move(frame.slot(frame.procedure.resultSlot).own) : Value();
}

void Evaluator::bindParameter(
    Frame& frame, std::size_t index, const ExprRef& argument, std::vector<Operand>& copiedBack)
{
    const Parameter& parameter = frame.procedure.parameters[index];
    const Type& type = frame.procedure.locals[index].type;
    Slot& slot = frame.slots[index];
    if (!argument) {
        if (parameter.defaultExpr)
            slot.own = std::get_if<Literal>(&parameter.defaultExpr->node)->value;
        else
            slot.own = type.isVariant() ? missingArgument() : initialValue(frame.procedure.locals[index]);
        return;
    }
    Operand given = operand(*argument);
    m_position = argument->position;
    const bool byPlace = parameter.byRef && given.isPlace();
    const bool arrayInVariant = type.array && given.isPlace() && given.value().isArray();
    if (byPlace && (type.isVariant() || sameType(*given.type, type) || arrayInVariant)) {
        slot.at = given.at;
        slot.type = given.type;
        slot.keeper = std::move(given.keeper);
        return;
    }
    Value value = given.take();
    if (isObject(value) && !type.isObject() && !type.isVariant() && type.record < 0)
        value = plainValue(value);
    slot.own = initialValue(frame.procedure.locals[index]);
    assign(slot.own, type, std::move(value));
    if (byPlace) {
        given.temporary = std::int32_t(static_cast<std::int32_t>(index));
        copiedBack.push_back(std::move(given));
    }
}

Value Evaluator::callProcedure(const ProcedureCall& call)
{
    const Procedure& procedure = m_module.procedures[static_cast<std::size_t>(call.procedure)];
    const Position position = m_position;
    Frame frame(procedure);
    std::vector<Operand> copiedBack;
    for (std::size_t i = 0; i < call.arguments.size(); ++i)
        bindParameter(frame, i, call.arguments[i], copiedBack);
    if (procedure.takesRest()) {
        std::vector<Value> rest;
        for (const ExprRef& argument : call.rest)
            rest.push_back(argument ? ownedValue(evaluate(*argument)) : missingArgument());
        frame.slots[call.arguments.size()].own = Value::arrayOf(std::move(rest));
    }
    prepareLocals(frame, procedure.parameters.size());
    m_position = position;
    Value result = finishCall(frame);
    for (Operand& place : copiedBack)
        assign(*place.at, *place.type, frame.slot(longOf(place.temporary)).own);
    return result;
}

Value Evaluator::callFromOutside(const Procedure& procedure, std::vector<Value> arguments)
{
    const auto required = static_cast<std::size_t>(procedure.requiredParameters());
    const std::size_t named = procedure.parameters.size() - (procedure.takesRest() ? 1 : 0);
    if (arguments.size() < required || (arguments.size() > named && !procedure.takesRest())) {
        RuntimeFault fault(FaultKind::ParameterCount, error::argumentCount, Text(errorText(error::argumentCount)));
        fault.procedure = procedure.name;
        throw fault;
    }
    Frame frame(procedure);
    std::vector<Operand> none;
    m_position = procedure.position;
    for (std::size_t i = 0; i < named; ++i) {
        if (i >= arguments.size()) {
            bindParameter(frame, i, nullptr, none);
            continue;
        }
        frame.slots[i].own = initialValue(procedure.locals[i]);
        assign(frame.slots[i].own, procedure.locals[i].type, std::move(arguments[i]));
    }
    if (procedure.takesRest()) {
        const std::size_t taken = std::min(named, arguments.size());
        std::vector<Value> rest(arguments.begin() + static_cast<std::ptrdiff_t>(taken), arguments.end());
        frame.slots[named].own = Value::arrayOf(std::move(rest));
    }
    prepareLocals(frame, procedure.parameters.size());
    return finishCall(frame);
}

Value Evaluator::callIntrinsic(const IntrinsicCall& call)
{
    constexpr std::size_t few = 6;
    Value fixed[few];
    Given::Entry fixedEntries[few];
    std::vector<Value> many;
    std::vector<Given::Entry> manyEntries;
    const std::size_t count = call.arguments.size();
    if (count > few) {
        many.resize(count);
        manyEntries.resize(count);
    }
    Value* const values = count > few ? many.data() : fixed;
    Given::Entry* const entries = count > few ? manyEntries.data() : fixedEntries;
    Position position;
    for (std::size_t i = 0; i < count; ++i) {
        const ExprRef& argument = call.arguments[i];
        entries[i] = {&values[i], &values[i]};
        if (!argument)
            values[i] = missingArgument();
        else if (!call.lends)
            values[i] = evaluate(*argument);
        else if (const Value& value = peek(*argument, values[i]); &value != &values[i])
            entries[i] = {&value, nullptr};
        position = i == 0 && argument ? argument->position : position;
    }
    if (position.line > 0)
        m_position = position;
    return call.intrinsic->run(m_context, Given({entries, count}));
}

Value Evaluator::callDeclared(const DeclaredFunctionCall& call)
{
    const DeclaredFunction& function = m_module.functions[static_cast<std::size_t>(call.function)];
    const Position position = m_position;
    DeclaredCall out{function.library, function.entry, {}, m_context.pointers};
    std::vector<Operand> places(call.arguments.size());
    for (std::size_t i = 0; i < call.arguments.size(); ++i) {
        if (!call.arguments[i]) {
            out.arguments.push_back(missingArgument());
            continue;
        }
        places[i] = operand(*call.arguments[i]);
        const Type& type = function.parameterVariables[i].type;
        const bool asItIs = function.parameters[i].any || type.array || type.base == ValueType::Dispatch;
        out.arguments.push_back(asItIs ? ownCopy(places[i].value()) : coerce(places[i].value(), type.base));
        if (!function.parameters[i].byRef)
            places[i].at = nullptr;
    }
    m_position = position;
    Value result = m_context.host.callDeclared(out);
    copyBack(out.arguments, places);
    return coerce(result, function.result.base);
}

void Evaluator::addArguments(MemberCall& call, const Arguments& arguments, std::vector<Operand>& places)
{
    call.arguments.reserve(arguments.size() + 1);
    places.reserve(arguments.size());
    for (const Argument& argument : arguments) {
        Operand given;
        if (argument.value)
            given = operand(*argument.value);
        else
            given.temporary = missingArgument();
        if (isRecord(given.value()))
            raise(error::typeMismatch, u"A value of a user-defined type can't be passed to an object");
        call.arguments.push_back(given.isPlace() ? ownCopy(given.value()) : std::move(given.temporary));
        if (!argument.name.empty())
            call.argumentNames.push_back(argument.name);
        places.push_back(std::move(given));
    }
}

void Evaluator::copyBack(std::vector<Value>& results, std::vector<Operand>& places)
{
    for (std::size_t i = 0; i < places.size(); ++i) {
        Operand& place = places[i];
        if (place.isPlace() && !(results[i] == *place.at))
            assign(*place.at, *place.type, std::move(results[i]));
    }
}

Value Evaluator::invoke(DispatchObject& object, MemberCall& call)
{
    try {
        return object.invoke(call);
    } catch (const StatusError& failure) {
        ScriptError out = errorOfStatus(failure);
        if (out.source.empty())
            out.source = object.typeName();
        throw out;
    }
}

DispatchRef Evaluator::objectOfMember(const ExprRef& object)
{
    Value scratch;
    DispatchRef out = objectOf(peek(*object, scratch));
    if (!out) {
        m_position = object->position;
        raise(error::objectNotSet);
    }
    return out;
}

Value Evaluator::callMember(const Member& member)
{
    const Position position = m_position;
    const DispatchRef object = objectOfMember(member.object);
    MemberCall call{member.name, MemberUse::Call, {}, {}};
    std::vector<Operand> places;
    if (!member.arguments.empty())
        addArguments(call, member.arguments, places);
    m_position = position;
    try {
        Value result = object->invoke(call);
        copyBack(call.arguments, places);
        return result;
    } catch (const StatusError& failure) {
        // A property without parameters may be followed by subscripts or a key of what it gives.
        const bool subscripted
            = failure.status() == DISP_E_BADPARAMCOUNT && !member.arguments.empty() && call.argumentNames.empty();
        if (!subscripted) {
            ScriptError out = errorOfStatus(failure);
            out.source = object->typeName();
            throw out;
        }
    }
    MemberCall plain{member.name, MemberUse::Call, {}, {}};
    const Value held = invoke(*object, plain);
    if (isObject(held))
        return callDefault(objectOf(held), member.arguments);
    const auto* array = held.get<ArrayRef>();
    if (!array || !*array)
        raise(error::argumentCount);
    std::vector<std::int32_t> subscripts;
    for (const Value& argument : call.arguments)
        subscripts.push_back(longOf(argument));
    return (*array)->elements[elementIndex(**array, subscripts)];
}

Value Evaluator::callDefault(const DispatchRef& object, const Arguments& arguments)
{
    if (!object)
        raise(error::objectNotSet);
    const Position position = m_position;
    MemberCall call;
    std::vector<Operand> places;
    addArguments(call, arguments, places);
    m_position = position;
    Value result = invoke(*object, call);
    copyBack(call.arguments, places);
    return result;
}

Value Evaluator::callHost(const HostCall& global)
{
    const Position position = m_position;
    MemberCall call{global.name, MemberUse::Call, {}, {}};
    std::vector<Operand> places;
    addArguments(call, global.arguments, places);
    m_position = position;
    Value result = m_context.host.global(call);
    copyBack(call.arguments, places);
    return result;
}

} // namespace zn::language
