#include "language/run/Evaluator.h"
#include "language/values/Record.h"

namespace zn::language {

namespace {

// About 1 GB; what goes beyond is a macro's mistake, and must not cost the application its life.
constexpr std::uint64_t mostElements = 25'000'000;

Text fixedText(Text text, std::int32_t length)
{
    text.resize(static_cast<std::size_t>(length), u' ');
    return text;
}

bool isRecordOf(const Value& value, int type)
{
    const auto* held = value.get<ObjectRef>();
    const auto record = held ? query<Record>(*held) : nullptr;
    return record && record->typeIndex == type;
}

} // namespace

void Evaluator::assign(Value& place, const Type& type, Value value)
{
    if (type.array) {
        const auto* array = value.get<ArrayRef>();
        const auto* own = place.get<ArrayRef>();
        const bool fits = array && (!*array || !own || !*own || (*array)->elementType == (*own)->elementType)
            && (!*array || (*array)->elementType == (type.record >= 0 ? ValueType::Variant : type.base));
        if (!fits)
            raise(error::typeMismatch);
        place = ownedValue(std::move(value));
    } else if (type.record >= 0) {
        if (!isRecordOf(value, type.record))
            raise(error::typeMismatch);
        place = ownedValue(std::move(value));
    } else if (type.fixedLength > 0) {
        place = fixedText(textOf(value), type.fixedLength);
    } else if (type.base == ValueType::Variant) {
        place = ownedValue(std::move(value));
    } else if (type.base == value.type()) {
        place = std::move(value);
    } else {
        place = coerce(value, type.base);
    }
}

/// The value to be assigned without `Set`: an object gives what its default member says.
Value Evaluator::letValue(const Expr& expr)
{
    Value value = evaluate(expr);
    const auto* held = value.get<ObjectRef>();
    if (!held || (*held && query<Record>(*held)))
        return value;
    m_position = expr.position;
    return plainValue(value);
}

void Evaluator::put(const Expr& target, Value value, bool isSet)
{
    // The common case.
    if (const auto* local = std::get_if<LocalVariable>(&target.node); local && !isSet) {
        const Slot& slot = localSlot(local->slot);
        if (!slot.type->isObject()) {
            m_position = target.position;
            return assign(*slot.at, *slot.type, std::move(value));
        }
    }
    if (const auto* member = std::get_if<Member>(&target.node)) {
        const DispatchRef object = objectOfMember(member->object);
        m_position = target.position;
        return putMember(object, member->name, member->arguments, std::move(value), isSet);
    }
    if (const auto* global = std::get_if<HostCall>(&target.node)) {
        MemberCall call{global->name, isSet ? MemberUse::PutObject : MemberUse::Put, {}, {}};
        std::vector<Operand> places;
        addArguments(call, global->arguments, places);
        call.arguments.push_back(std::move(value));
        m_position = target.position;
        m_context.host.global(call);
        return;
    }
    if (std::holds_alternative<ErrorReference>(target.node))
        return putMember(m_context.err, {}, {}, std::move(value), isSet);
    if (const auto* element = std::get_if<Element>(&target.node); element && !element->array->type.array) {
        Value scratch;
        const Value& base = peek(*element->array, scratch);
        if (isObject(base))
            return putMember(objectOf(base), {}, element->subscripts, std::move(value), isSet);
    }
    Operand place = operand(target);
    m_position = target.position;
    if (!place.isPlace())
        raise(error::argumentCount);
    if (!isSet && place.type->isObject())
        return putMember(objectOf(*place.at), {}, {}, std::move(value), false);
    assign(*place.at, *place.type, std::move(value));
}

void Evaluator::putMember(
    const DispatchRef& object, const Text& name, const Arguments& arguments, Value value, bool isSet)
{
    if (!object)
        raise(error::objectNotSet);
    MemberCall call{name, isSet ? MemberUse::PutObject : MemberUse::Put, {}, {}};
    std::vector<Operand> places;
    addArguments(call, arguments, places);
    // An array of the macro's own stays its own, whatever the object does with what it gets.
    call.arguments.push_back(ownedValue(std::move(value)));
    invoke(*object, call);
}

Value Evaluator::initialElement(const Type& type)
{
    if (type.record >= 0) {
        const RecordType& record = m_module.records[static_cast<std::size_t>(type.record)];
        std::vector<Value> fields;
        fields.reserve(record.fields.size());
        for (const Variable& field : record.fields)
            fields.push_back(initialValue(field));
        return Value(ObjectRef(std::make_shared<Record>(type.record, record.name, std::move(fields))));
    }
    if (type.fixedLength > 0)
        return Text(static_cast<std::size_t>(type.fixedLength), u' ');
    return defaultValue(type.base);
}

Value Evaluator::initialValue(const Variable& variable)
{
    if (!variable.type.array)
        return initialElement(variable.type);
    if (variable.bounds.empty())
        return ArrayRef();
    return makeArray(variable.type.element(), variable.bounds);
}

Value Evaluator::makeArray(const Type& element, const std::vector<FixedBound>& bounds)
{
    auto array = std::make_shared<ValueArray>();
    array->elementType = element.record >= 0 ? ValueType::Variant : element.base;
    std::uint64_t count = 1;
    for (const FixedBound& bound : bounds) {
        const std::int64_t length = std::int64_t(bound.upper) - bound.lower + 1;
        if (length < 0)
            raise(error::subscript);
        array->bounds.push_back({bound.lower, static_cast<std::uint32_t>(length)});
        count *= static_cast<std::uint64_t>(length);
        if (count > mostElements)
            raise(error::outOfMemory);
    }
    if (element.record < 0) {
        array->elements.assign(count, initialElement(element));
    } else {
        array->elements.reserve(count);
        for (std::uint64_t i = 0; i < count; ++i)
            array->elements.push_back(initialElement(element));
    }
    return Value(std::move(array));
}

namespace {

/// Only the last dimension of a kept array may change, so its elements stand at the beginning of the new one.
void keepElements(const ValueArray& old, ValueArray& fresh)
{
    const std::size_t last = old.bounds.size() - 1;
    if (old.bounds.size() != fresh.bounds.size() || old.bounds[last].lower != fresh.bounds[last].lower)
        raise(error::subscript);
    for (std::size_t i = 0; i < last; ++i)
        if (old.bounds[i].lower != fresh.bounds[i].lower || old.bounds[i].count != fresh.bounds[i].count)
            raise(error::subscript);
    const std::size_t kept = std::min(old.elements.size(), fresh.elements.size());
    for (std::size_t i = 0; i < kept; ++i)
        fresh.elements[i] = old.elements[i];
}

} // namespace

void Evaluator::redimension(Operand& place, const ReDimStep& step)
{
    std::vector<FixedBound> bounds;
    for (const BoundsExpr& bound : step.bounds)
        bounds.push_back(
            {bound.lower ? longOf(evaluate(*bound.lower)) : m_module.arrayBase, longOf(evaluate(*bound.upper))});
    if (!place.isPlace() || !(place.type->array || place.type->isVariant()))
        raise(error::typeMismatch);
    ArrayRef old;
    if (const auto* array = place.at->get<ArrayRef>())
        old = *array;
    else if (!place.at->isEmpty() && step.preserve)
        raise(error::typeMismatch);
    Type element = step.element;
    if (step.preserve && !place.type->array && old && element.base == ValueType::Variant)
        element.base = old->elementType;
    Value fresh = makeArray(element, bounds);
    if (step.preserve && old)
        keepElements(*old, **fresh.get<ArrayRef>());
    *place.at = std::move(fresh);
}

} // namespace zn::language
