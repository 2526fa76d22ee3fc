#include "language/objects/Walk.h"
#include "language/run/Evaluator.h"

namespace zn::language {

namespace {

/// How far a `For Each` over an array has come.
class Cursor : public Walk {
public:
    explicit Cursor(ArrayRef walked)
        : m_array(std::move(walked))
    {
    }

    bool next(Value& element) override
    {
        if (!m_array || m_next >= m_array->elements.size())
            return false;
        element = m_array->elements[m_next++];
        return true;
    }

private:
    ArrayRef m_array;
    std::size_t m_next = 0;
};

/// Adds to a counter in place where both are of one whole type and fit; the common case of every loop.
template <class Integer> bool advanced(Value& counter, const Value& step)
{
    auto* number = counter.get<Integer>();
    const auto* by = step.get<Integer>();
    Integer sum = 0;
    if (!number || !by || __builtin_add_overflow(*number, *by, &sum))
        return false;
    *number = sum;
    return true;
}

} // namespace

bool Evaluator::loopGoesOn(const Value& counter, const Value& limit, const Value& step) const
{
    const auto* number = counter.get<std::int32_t>();
    const auto* last = limit.get<std::int32_t>();
    const auto* by = step.get<std::int32_t>();
    if (number && last && by)
        return *by < 0 ? *number >= *last : *number <= *last;
    const bool down = compareValues(step, Value(std::int16_t(0)), {}) < 0;
    const int order = compareValues(counter, limit, {});
    return down ? order >= 0 : order <= 0;
}

void Evaluator::step(const ForStep& s)
{
    Value first = letValue(*s.first);
    Value last = letValue(*s.last);
    Value by = s.step ? letValue(*s.step) : Value(std::int16_t(1));
    if (isNull(first) || isNull(last) || isNull(by))
        raise(error::invalidNull);
    put(*s.counter, std::move(first), false);
    Value scratch;
    const Value& counter = peek(*s.counter, scratch);
    // Limit and step take the counter's type, whatever they were.
    const ValueType type = s.counter->type.isVariant() ? ValueType::Variant : s.counter->type.base;
    const bool numeric = type == ValueType::Variant && isNumeric(counter);
    Value& limit = localSlot(s.limitSlot).own;
    Value& step = localSlot(s.stepSlot).own;
    limit = coerce(last, type);
    step = coerce(by, type);
    if (numeric && counter.type() == ValueType::String)
        raise(error::typeMismatch);
    if (!loopGoesOn(counter, limit, step))
        jump(s.exit);
}

void Evaluator::step(const ForNextStep& s)
{
    const auto* loop = std::get_if<ForStep>(&m_frame->procedure.steps[static_cast<std::size_t>(s.begin)].node);
    const Value& limit = localSlot(loop->limitSlot).own;
    const Value& step = localSlot(loop->stepSlot).own;
    if (step.isEmpty())
        raise(error::loopNotInitialized);
    // A counter that is a variable, which needs no place to be found and kept.
    if (const auto* local = std::get_if<LocalVariable>(&loop->counter->node)) {
        Value& counter = *localSlot(local->slot).at;
        if (advanced<std::int32_t>(counter, step) || advanced<std::int16_t>(counter, step)) {
            if (loopGoesOn(counter, limit, step))
                jump(s.begin + 1);
            return;
        }
    }
    Operand counter = operand(*loop->counter);
    if (!counter.isPlace())
        raise(error::typeMismatch);
    if (!advanced<std::int32_t>(*counter.at, step) && !advanced<std::int16_t>(*counter.at, step)) {
        const bool widens = counter.type->isVariant();
        assign(*counter.at, *counter.type,
            applyBinary(Operator::Add, counter.value(), step, {widens, widens, m_module.compareText}));
    }
    if (loopGoesOn(counter.value(), limit, step))
        jump(s.begin + 1);
}

void Evaluator::step(const ForEachStep& s)
{
    Operand collection = operand(*s.collection);
    m_position = s.collection->position;
    Value walked = collection.value();
    if (isObject(walked)) {
        const DispatchRef object = objectOf(walked);
        if (!object)
            raise(error::objectNotSet);
        MemberCall call{u"_NewEnum", MemberUse::Call, {}, {}};
        walked = invoke(*object, call);
        if (const auto* given = walked.get<ObjectRef>(); given && query<Walk>(*given)) {
            localSlot(s.cursorSlot).own = walked;
            return;
        }
    }
    if (!walked.isArray())
        raise(error::typeMismatch);
    localSlot(s.cursorSlot).own = Value(ObjectRef(std::make_shared<Cursor>(*walked.get<ArrayRef>())));
}

void Evaluator::step(const ForEachNextStep& s)
{
    const auto* loop = std::get_if<ForEachStep>(&m_frame->procedure.steps[static_cast<std::size_t>(s.begin)].node);
    const auto* held = localSlot(loop->cursorSlot).own.get<ObjectRef>();
    if (!held)
        raise(error::loopNotInitialized);
    Value element;
    if (!static_cast<Walk&>(**held).next(element))
        return jump(s.exit);
    put(*loop->variable, element, isObject(element));
}

} // namespace zn::language
