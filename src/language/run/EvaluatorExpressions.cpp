#include "language/run/Evaluator.h"
#include "language/values/QuickOperators.h"
#include "language/values/Record.h"

#include <array>

namespace zn::language {

namespace {

constexpr std::size_t mostDimensions = 16;

/// The type of an element of an array that a Variant holds.
const Type& elementTypeOf(const ValueArray& array)
{
    static const auto types = [] {
        std::array<Type, 32> list;
        for (std::size_t i = 0; i < list.size(); ++i)
            list[i].base = static_cast<ValueType>(i);
        return list;
    }();
    return types[static_cast<std::size_t>(array.elementType) % types.size()];
}

const ArrayRef& arrayOf(const Value& value)
{
    const auto* array = value.get<ArrayRef>();
    if (!array)
        raise(error::typeMismatch);
    if (!*array)
        raise(error::subscript);
    return *array;
}

template <class Node> const Node& as(const Expr& expr) { return *std::get_if<Node>(&expr.node); }

template <class Node, std::size_t Index = 0> constexpr std::size_t indexIn()
{
    if constexpr (std::is_same_v<std::variant_alternative_t<Index, ExprNode>, Node>)
        return Index;
    else
        return indexIn<Node, Index + 1>();
}

} // namespace

void Evaluator::createIfNew(Value& value, const Type& type, const Variable& variable)
{
    const auto* held = value.get<ObjectRef>();
    if (type.createsItself && held && !*held)
        value = m_context.createObject(variable.className);
}

const Value& Evaluator::peek(const Expr& expr, Value& scratch)
{
    switch (expr.node.index()) {
    case indexIn<Literal>():
        return as<Literal>(expr).value;
    case indexIn<LocalVariable>(): {
        const int index = as<LocalVariable>(expr).slot;
        Slot& slot = localSlot(index);
        if (expr.type.createsItself)
            createIfNew(*slot.at, expr.type, m_frame->procedure.locals[static_cast<std::size_t>(index)]);
        return *slot.at;
    }
    case indexIn<GlobalVariable>(): {
        const auto index = static_cast<std::size_t>(as<GlobalVariable>(expr).slot);
        if (expr.type.createsItself)
            createIfNew(m_globals[index], expr.type, m_module.globals[index]);
        return m_globals[index];
    }
    case indexIn<WithSubject>():
        return *localSlot(as<WithSubject>(expr).slot).at;
    default:
        scratch = evaluate(expr);
        return scratch;
    }
}

Value Evaluator::evaluate(const Expr& expr)
{
    switch (expr.node.index()) {
    case indexIn<Element>():
    case indexIn<Field>():
        return operand(expr).take();
    case indexIn<Member>():
        m_position = expr.position;
        return callMember(as<Member>(expr));
    case indexIn<ProcedureCall>():
        m_position = expr.position;
        return callProcedure(as<ProcedureCall>(expr));
    case indexIn<DeclaredFunctionCall>():
        m_position = expr.position;
        return callDeclared(as<DeclaredFunctionCall>(expr));
    case indexIn<IntrinsicCall>(): {
        Value result = callIntrinsic(as<IntrinsicCall>(expr));
        return result;
    }
    case indexIn<HostCall>():
        m_position = expr.position;
        return callHost(as<HostCall>(expr));
    case indexIn<Unary>(): {
        const auto& unary = as<Unary>(expr);
        Value scratch;
        const Value& value = peek(*unary.operand, scratch);
        m_position = expr.position;
        return applyUnary(unary.op, value, {true, true, m_module.compareText});
    }
    case indexIn<Binary>():
        return evaluateBinary(expr, as<Binary>(expr));
    case indexIn<Concatenation>():
        return joined(as<Concatenation>(expr).parts);
    case indexIn<Parenthesised>():
        return letValue(*as<Parenthesised>(expr).inner);
    case indexIn<NewObject>():
        m_position = expr.position;
        return m_context.createObject(as<NewObject>(expr).className);
    case indexIn<TypeOf>():
        return evaluateTypeOf(as<TypeOf>(expr));
    case indexIn<ErrorReference>():
        return Value(m_context.err);
    default: {
        Value scratch;
        return peek(expr, scratch);
    }
    }
}

Value Evaluator::evaluateBinary(const Expr& expr, const Binary& binary)
{
    Value leftScratch;
    Value rightScratch;
    const Value& left = peek(*binary.left, leftScratch);
    const Value& right = peek(*binary.right, rightScratch);
    m_position = expr.position;
    Value result;
    if (applyQuickly(binary.op, left, right, result))
        return result;
    return applyBinary(binary.op, left, right, binary.rules);
}

/// Null if all parts are.
Value Evaluator::joined(std::span<const ExprRef> parts)
{
    Text text;
    bool allNull = true;
    for (const ExprRef& part : parts) {
        Value scratch;
        const Value& value = peek(*part, scratch);
        m_position = part->position;
        if (const auto* piece = value.get<Text>()) {
            text += *piece;
        } else {
            const Value plain = value.isArray() ? value : plainValue(value);
            if (isNull(plain))
                continue;
            text += textOf(plain);
        }
        if (text.size() > longestText)
            raise(error::outOfTextSpace);
        allNull = false;
    }
    if (allNull)
        return NullValue{};
    return text;
}

Value Evaluator::evaluateTypeOf(const TypeOf& test)
{
    const DispatchRef object = objectOf(evaluate(*test.object));
    if (!object)
        return Value(false);
    const std::size_t dot = test.className.rfind(u'.');
    const TextView name = TextView(test.className).substr(dot == Text::npos ? 0 : dot + 1);
    return Value(equalNoCase(name, u"Object") || equalNoCase(object->typeName(), name));
}

Operand Evaluator::operand(const Expr& expr)
{
    Operand out;
    if (const auto* local = std::get_if<LocalVariable>(&expr.node)) {
        peek(expr, out.temporary);
        Slot& slot = localSlot(local->slot);
        out.at = slot.at;
        out.type = slot.type;
        out.keeper = slot.keeper;
    } else if (const auto* global = std::get_if<GlobalVariable>(&expr.node)) {
        peek(expr, out.temporary);
        out.at = &m_globals[static_cast<std::size_t>(global->slot)];
        out.type = &m_module.globals[static_cast<std::size_t>(global->slot)].type;
    } else if (const auto* element = std::get_if<Element>(&expr.node)) {
        return elementOperand(expr, *element);
    } else if (const auto* field = std::get_if<Field>(&expr.node)) {
        return fieldOperand(expr, *field);
    } else {
        out.temporary = evaluate(expr);
    }
    return out;
}

Operand Evaluator::elementOperand(const Expr& expr, const Element& element)
{
    Operand base = operand(*element.array);
    m_position = expr.position;
    Operand out;
    if (isObject(base.value())) {
        out.temporary = callDefault(objectOf(base.value()), element.subscripts);
        return out;
    }
    std::array<std::int32_t, mostDimensions> subscripts; // NOLINT(*-member-init): each element that is read is set
    const std::size_t count = element.subscripts.size();
    if (count > mostDimensions || count == 0)
        raise(error::subscript);
    for (std::size_t i = 0; i < count; ++i) {
        if (!element.subscripts[i].value)
            raise(error::subscript);
        Value scratch;
        subscripts[i] = longOf(peek(*element.subscripts[i].value, scratch));
    }
    m_position = expr.position;
    const ArrayRef array = arrayOf(base.value()); // only now: a subscript's function may have resized it
    out.at = &array->elements[elementIndex(*array, std::span(subscripts).first(count))];
    // An array that was declared knows its elements better (records, fixed texts) than its value does.
    const bool declared = element.array->type.array;
    out.type = declared ? &expr.type : &elementTypeOf(*array);
    out.keeper = array;
    return out;
}

Operand Evaluator::fieldOperand(const Expr& expr, const Field& field)
{
    Value scratch;
    Operand base = operand(*field.record);
    const auto* held = base.value().get<ObjectRef>();
    const auto record = held ? query<Record>(*held) : nullptr;
    m_position = expr.position;
    if (!record)
        raise(error::objectNotSet);
    Operand out;
    out.at = &record->fields[static_cast<std::size_t>(field.field)];
    out.type = &m_module.records[static_cast<std::size_t>(record->typeIndex)]
                    .fields[static_cast<std::size_t>(field.field)]
                    .type;
    out.keeper = record;
    return out;
}

bool Evaluator::condition(const Expr& expr)
{
    Value scratch;
    const Value& value = peek(expr, scratch);
    return truthOf(isObject(value) ? plainValue(value) : value);
}

} // namespace zn::language
