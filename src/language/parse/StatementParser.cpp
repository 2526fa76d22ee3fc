#include "language/parse/StatementParser.h"

namespace zn::language {

int StatementParser::emit(Position position, StepNode node)
{
    m_procedure->steps.push_back({position, m_starts, std::move(node)});
    m_starts = false;
    return nextStep() - 1;
}

void StatementParser::setTarget(int step, int target)
{
    std::visit(
        [target](auto& node) {
            if constexpr (
                requires { node.target; } && !requires { node.value; })
                if constexpr (std::is_same_v<decltype(node.target), int>)
                    node.target = target;
            if constexpr (requires { node.exit; })
                node.exit = target;
            if constexpr (requires { node.otherwise; })
                node.otherwise = target;
        },
        m_procedure->steps[static_cast<std::size_t>(step)].node);
}

int StatementParser::hiddenSlot()
{
    m_procedure->locals.push_back({});
    return static_cast<int>(m_procedure->locals.size()) - 1;
}

void StatementParser::parseAssignmentOrCall(Position position)
{
    const std::size_t start = mark();
    ExprRef target = parseTarget(Reach::Whole);
    if (accept(Symbol::Equal)) {
        ExprRef value = parseExpression();
        emit(position, LetStep{std::move(target), std::move(value)});
        return;
    }
    if (!atStatementEnd()) {
        // Not the whole was the target: `f (x), y` begins its arguments at the blank.
        rewind(start);
        target = parseTarget(Reach::BeforeArguments);
        const bool goesOn = !atStatementEnd() && peek().blankBefore;
        if (!goesOn)
            fail(u"Expected: end of statement");
        Arguments arguments = parseArguments();
        emitCall(position, std::move(target), std::move(arguments), false);
        return;
    }
    emitCall(position, std::move(target), {}, true);
}

/// A call without parentheses that looks like one with them, `f (x)`, passes the value of x.
void StatementParser::emitCall(Position position, ExprRef target, Arguments arguments, bool applied)
{
    auto* member = std::get_if<Member>(&target->node);
    auto* call = std::get_if<Applied>(&target->node);
    if (applied && (call || (member && member->applied))) {
        Arguments& given = call ? call->arguments : member->arguments;
        if (given.size() > 1)
            fail(u"Expected: =");
        for (Argument& argument : given) {
            if (!argument.value)
                continue;
            const Position start = argument.value->position;
            argument.value = makeExpr(start, Parenthesised{std::move(argument.value)});
        }
    } else if (!arguments.empty() && member && !member->applied) {
        member->arguments = std::move(arguments);
        member->applied = true;
    } else if (!arguments.empty()) {
        target = makeExpr(position, Applied{std::move(target), std::move(arguments)});
    }
    emit(position, CallStep{std::move(target)});
}

void StatementParser::parseCall(Position position)
{
    ExprRef target = parseTarget(Reach::Whole);
    emit(position, CallStep{std::move(target)});
}

void StatementParser::parseLet(Position position)
{
    ExprRef target = parseTarget(Reach::Whole);
    expect(Symbol::Equal, u"=");
    ExprRef value = parseExpression();
    emit(position, LetStep{std::move(target), std::move(value)});
}

void StatementParser::parseSet(Position position)
{
    ExprRef target = parseTarget(Reach::Whole);
    expect(Symbol::Equal, u"=");
    ExprRef value = parseExpression();
    emit(position, SetStep{std::move(target), std::move(value)});
}

void StatementParser::parseDim(bool isStatic)
{
    do {
        Variable variable = parseVariable();
        const Position position = variable.position;
        if (m_procedure->constantNames.contains(foldCase(variable.name)))
            fail(position, u"Duplicate declaration in current scope: " + variable.name);
        declareName(m_procedure->localNames, variable.name, m_procedure->locals.size(), position);
        if (isStatic || m_procedure->isStatic) {
            Variable place;
            place.name = variable.name;
            place.type = variable.type;
            place.position = position;
            place.staticSlot = static_cast<int>(m_module.globals.size());
            m_procedure->locals.push_back(std::move(place));
            m_module.globals.push_back(std::move(variable)); // under no name that others could see
        } else {
            m_procedure->locals.push_back(std::move(variable));
        }
    } while (accept(Symbol::Comma));
}

bool StatementParser::atBounds() const
{
    int open = 0;
    for (std::size_t ahead = 0; peek(ahead).kind != TokenKind::EndOfLine && peek(ahead).kind != TokenKind::EndOfSource;
         ++ahead) {
        open += at(Symbol::OpenParen, ahead) ? 1 : at(Symbol::CloseParen, ahead) ? -1 : 0;
        if (open == 0)
            return !at(Symbol::Dot, ahead + 1);
    }
    return true;
}

void StatementParser::parseReDim(Position position)
{
    const bool preserve = accept(Word::Preserve);
    do {
        const Token& name = peek();
        ExprRef target
            = at(Symbol::Dot) ? withSubject(position) : makeExpr(position, Name{Text(expectName().text), name.suffix});
        while (at(Symbol::Dot) || (at(Symbol::OpenParen) && !atBounds()))
            target = parsePostfixOnce(std::move(target));
        expect(Symbol::OpenParen, u"(");
        ReDimStep step;
        step.preserve = preserve;
        step.variable = std::move(target);
        step.bounds = parseBounds();
        if (step.bounds.empty())
            fail(u"Expected: array bounds");
        step.element.base = suffixType(name.suffix);
        const TypeClause clause = parseAsClause();
        if (clause.given)
            step.element = clause.type;
        emit(position, std::move(step));
    } while (accept(Symbol::Comma));
}

void StatementParser::parseErase(Position position)
{
    do
        emit(position, EraseStep{parseTarget(Reach::Whole), false});
    while (accept(Symbol::Comma));
}

/// `Mid(target, start[, length]) = value`
void StatementParser::parseMid(Position position)
{
    next();
    MidStep step;
    expect(Symbol::OpenParen, u"(");
    step.target = parseTarget(Reach::Whole);
    expect(Symbol::Comma, u",");
    step.start = parseExpression();
    if (accept(Symbol::Comma))
        step.length = parseExpression();
    expect(Symbol::CloseParen, u")");
    expect(Symbol::Equal, u"=");
    step.value = parseExpression();
    emit(position, std::move(step));
}

void StatementParser::parseJustify(Position position, bool right)
{
    ExprRef target = parseTarget(Reach::Whole);
    expect(Symbol::Equal, u"=");
    ExprRef value = parseExpression();
    emit(position, JustifyStep{std::move(target), std::move(value), right});
}

} // namespace zn::language
