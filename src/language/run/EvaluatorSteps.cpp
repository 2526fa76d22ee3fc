#include "language/run/Evaluator.h"

namespace zn::language {

void Evaluator::tick()
{
    if ((++m_ticks & 0xFF) == 0)
        m_context.checkpoint();
}

void Evaluator::execute(Frame& frame)
{
    const auto count = static_cast<int>(frame.procedure.steps.size());
    for (;;) {
        try {
            while (frame.next < count) {
                frame.current = frame.next++;
                const Step& next = frame.procedure.steps[static_cast<std::size_t>(frame.current)];
                m_position = next.position;
                if (m_watching && next.startsStatement)
                    m_watching->statement(frame, next.position);
                tick();
                perform(next);
            }
            return;
        } catch (const ScriptError& raised) {
            handle(frame, raised);
        } catch (const StatusError& failure) {
            handle(frame, errorOfStatus(failure));
        } catch (const std::bad_alloc&) {
            handle(frame, {error::outOfMemory, Text(errorText(error::outOfMemory)), {}});
        } catch (const std::exception& failure) {
            // Anything else that a host lets out is its own failure, and an error like all others to the macro.
            handle(frame, {error::automation, toText(failure.what()), {}});
        }
    }
}

void Evaluator::perform(const Step& next)
{
    std::visit([this](const auto& node) { step(node); }, next.node);
}

/// Goes to the frame's handler, or raises the error to the caller.
void Evaluator::handle(Frame& frame, const ScriptError& raised)
{
    if (!m_origin)
        m_origin = Origin{m_position, frame.procedure.name};
    Handler& handler = frame.handler;
    const bool handles = !handler.active && handler.mode != ErrorMode::Off;
    if (!handles)
        throw ScriptError(raised);
    m_origin.reset();
    m_context.err->set(raised);
    m_context.err->line = lineNumberAt(frame);
    if (handler.mode == ErrorMode::ResumeNext) {
        frame.next = nextStatement(frame, frame.current);
        return;
    }
    handler.active = true;
    handler.failedStep = frame.current;
    frame.next = handler.target;
}

int Evaluator::nextStatement(const Frame& frame, int at) const
{
    const auto& steps = frame.procedure.steps;
    auto next = static_cast<std::size_t>(at) + 1;
    while (next < steps.size() && !steps[next].startsStatement)
        ++next;
    return static_cast<int>(next);
}

std::int32_t Evaluator::lineNumberAt(const Frame& frame) const
{
    std::int32_t number = 0;
    for (const auto& [first, label] : frame.procedure.lineNumbers)
        if (first <= frame.current)
            number = label;
    return number;
}

void Evaluator::step(const LetStep& s)
{
    if (s.grows)
        return grow(s);
    put(*s.target, letValue(*s.value), false);
}

/// The other parts are put together first: they may hold the text that grows.
void Evaluator::grow(const LetStep& s)
{
    const auto& run = std::get<Concatenation>(s.value->node);
    Text* const text = operand(*s.target).at->get<Text>();
    if (!text) // a number, say
        return put(*s.target, letValue(*s.value), false);
    const Value more = joined(std::span(run.parts).subspan(1));
    const auto* added = more.get<Text>();
    if (!added)
        return;
    if (text->size() + added->size() > longestText)
        raise(error::outOfTextSpace);
    *text += *added;
}

void Evaluator::step(const SetStep& s)
{
    Value value = evaluate(*s.value);
    m_position = s.value->position;
    objectOf(value); // anything else is refused
    put(*s.target, std::move(value), true);
}

void Evaluator::step(const CallStep& s) { evaluate(*s.call); }

void Evaluator::step(const JumpStep& s) { jump(s.target); }

void Evaluator::step(const JumpUnlessStep& s)
{
    if (condition(*s.condition) == s.until)
        jump(s.target);
}

void Evaluator::step(const SelectStep& s) { localSlot(s.slot).own = letValue(*s.subject); }

bool Evaluator::clauseHolds(const CaseClause& clause, const Value& subject, bool isVariant)
{
    const OperatorRules rules{isVariant, clause.value->type.base == ValueType::Variant, m_module.compareText};
    Value scratch;
    const Value& value = peek(*clause.value, scratch);
    m_position = clause.value->position;
    if (!clause.upper)
        return truthOf(applyBinary(clause.op, subject, value, rules));
    Value upperScratch;
    const Value& upper = peek(*clause.upper, upperScratch);
    return truthOf(applyBinary(Operator::GreaterOrEqual, subject, value, rules))
        && truthOf(applyBinary(Operator::LessOrEqual, subject, upper, rules));
}

void Evaluator::step(const CaseStep& s)
{
    const Slot& subject = localSlot(s.slot);
    for (const CaseClause& clause : s.clauses)
        if (clauseHolds(clause, subject.own, subject.type->base == ValueType::Variant))
            return;
    jump(s.otherwise);
}

void Evaluator::step(const WithStep& s)
{
    Operand subject = operand(*s.subject);
    if (!isObject(subject.value())) {
        m_position = s.subject->position;
        raise(error::objectRequired);
    }
    localSlot(s.slot).own = subject.take();
}

void Evaluator::step(const ClearSlotStep& s) { localSlot(s.slot).own = Value(); }

void Evaluator::step(const OnErrorStep& s)
{
    m_context.err->clear();
    Handler& handler = m_frame->handler;
    if (s.mode == ErrorMode::ClearActive) {
        handler.active = false;
        return;
    }
    // A handler that runs stays responsible until its Resume.
    handler.mode = s.mode;
    handler.target = s.target;
}

void Evaluator::step(const ResumeStep& s)
{
    Handler& handler = m_frame->handler;
    if (!handler.active)
        raise(error::resumeWithoutError);
    handler.active = false;
    m_context.err->clear();
    jump(s.mode == ResumeMode::Retry     ? handler.failedStep
            : s.mode == ResumeMode::Next ? nextStatement(*m_frame, handler.failedStep)
                                         : s.target);
}

void Evaluator::step(const RaiseStep& s)
{
    const std::int32_t number = longOf(evaluate(*s.number));
    raise(number == 0 ? error::invalidCall : number);
}

void Evaluator::step(const GoSubStep& s)
{
    constexpr std::size_t deepest = 100'000;
    if (m_frame->returns.size() >= deepest)
        raise(error::outOfStack);
    m_frame->returns.push_back(m_frame->next);
    jump(s.target);
}

void Evaluator::step(const ChooseStep& s)
{
    constexpr std::int32_t largest = 255;
    const std::int32_t number = longOf(evaluate(*s.number));
    if (number < 0 || number > largest)
        raise(error::invalidCall);
    const int entry = number >= 1 && number <= s.count ? number - 1 : s.count;
    jump(m_frame->current + 1 + entry * s.stride);
}

void Evaluator::step(const ReturnStep&)
{
    if (m_frame->returns.empty())
        raise(error::returnWithoutGoSub);
    jump(m_frame->returns.back());
    m_frame->returns.pop_back();
}

void Evaluator::step(const ExitStep&) { jump(static_cast<int>(m_frame->procedure.steps.size())); }

void Evaluator::step(const EndStep&) { throw EndOfMacro{}; }

void Evaluator::step(const ReDimStep& s)
{
    Operand place = operand(*s.variable);
    redimension(place, s);
}

void Evaluator::step(const EraseStep& s)
{
    Operand place = operand(*s.variable);
    if (!place.isPlace() || !place.value().isArray())
        raise(error::typeMismatch);
    const ArrayRef array = *place.value().get<ArrayRef>();
    if (!s.fixed || !array) {
        *place.at = place.type->array ? Value(ArrayRef()) : Value();
        return;
    }
    for (Value& element : array->elements)
        element = initialElement(s.variable->type.element());
}

void Evaluator::step(const MidStep& s)
{
    const std::int32_t start = longOf(evaluate(*s.start));
    const Text inserted = textOf(evaluate(*s.value));
    std::size_t count = inserted.size();
    if (s.length) {
        const std::int32_t length = longOf(evaluate(*s.length));
        if (length < 0)
            raise(error::invalidCall);
        count = std::min(count, static_cast<std::size_t>(length));
    }
    Operand place = operand(*s.target);
    Text converted;
    Text* inPlace = place.at ? place.at->get<Text>() : nullptr;
    if (!inPlace)
        converted = textOf(place.value());
    Text& text = inPlace ? *inPlace : converted;
    if (start < 1 || static_cast<std::size_t>(start) > text.size())
        raise(error::invalidCall);
    const auto at = static_cast<std::size_t>(start) - 1;
    count = std::min(count, text.size() - at);
    text.replace(at, count, inserted, 0, count);
    if (!inPlace)
        put(*s.target, std::move(converted), false);
}

void Evaluator::step(const JustifyStep& s)
{
    const std::size_t length = textOf(operand(*s.target).value()).size();
    Text text = textOf(evaluate(*s.value));
    if (text.size() > length)
        text.resize(length);
    const Text blanks(length - text.size(), u' ');
    put(*s.target, s.right ? blanks + text : text + blanks, false);
}

} // namespace zn::language
