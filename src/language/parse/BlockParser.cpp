#include "language/parse/StatementParser.h"

namespace zn::language {

namespace {

constexpr int deepestBlocks = 150;

} // namespace

void StatementParser::parseBody(Procedure& procedure, Word kind)
{
    m_procedure = &procedure;
    m_starts = true;
    m_nextContinues = false;
    m_blockDepth = 0;
    m_withSlots.clear();
    m_loops.clear();
    m_labels.clear();
    m_labelUses.clear();
    for (;;) {
        parseBlock();
        if (atSourceEnd())
            fail(procedure.position, u"Expected: End " + Text(kind == Word::Sub ? u"Sub" : u"Function"));
        if (at(Word::End) && at(kind, 1))
            break;
        // The end of a block that isn't open, or of a procedure of the other kind.
        const Token& stray = peek();
        const Text shown = at(Word::End) ? u"End " + Text(peek(1).text) : Text(stray.text);
        recoverFrom({stray.position, shown + u" without the beginning of its block"});
        m_nextContinues = false;
    }
    next();
    next();
    m_starts = true;
    emit(here(), ExitStep{});
    bindLabels();
}

void StatementParser::recoverFrom(const SyntaxProblem& problem)
{
    m_problems.push_back(problem);
    // A block that lacks its end was noticed at a line which may well be another block's end.
    if (problem.position.line >= here().line)
        skipLine();
}

/// A block ends at a word that only its own statement can make sense of.
bool StatementParser::atBlockEnd() const
{
    if (atSourceEnd() || m_nextContinues)
        return true;
    switch (peek().word) {
    case Word::Next:
    case Word::Loop:
    case Word::Wend:
    case Word::Else:
    case Word::ElseIf:
    case Word::EndIf:
    case Word::Case:
        return true;
    case Word::End:
        switch (peek(1).word) {
        case Word::Sub:
        case Word::Function:
        case Word::Property:
        case Word::If:
        case Word::Select:
        case Word::With:
        case Word::Type:
        case Word::Enum:
            return true;
        default:
            return false;
        }
    default:
        return false;
    }
}

void StatementParser::parseBlock()
{
    if (++m_blockDepth > deepestBlocks)
        fail(u"The blocks are nested too deeply");
    for (;;) {
        while (peek().kind == TokenKind::EndOfLine || at(Symbol::Colon))
            next();
        if (atBlockEnd())
            break;
        if (at(Word::Attribute)) {
            skipLine(); // an exported module describes its procedures here
            continue;
        }
        try {
            parseLabels();
            if (atStatementEnd() || atBlockEnd())
                continue;
            m_starts = true;
            parseStatement();
            if (!m_nextContinues)
                expectStatementEnd();
        } catch (const SyntaxProblem& problem) {
            recoverFrom(problem);
        }
    }
    --m_blockDepth;
}

void StatementParser::parseLabels()
{
    const Token& token = peek();
    if (!token.startsLine)
        return;
    const auto* shortNumber = token.value.get<std::int16_t>();
    const auto* longNumber = token.value.get<std::int32_t>();
    Text name;
    if (token.kind == TokenKind::Literal && (shortNumber || longNumber)) {
        const std::int32_t number = shortNumber ? *shortNumber : *longNumber;
        m_procedure->lineNumbers.emplace_back(nextStep(), number);
        name = numberText(number);
        next();
        accept(Symbol::Colon);
    } else if (token.kind == TokenKind::Identifier && !isReserved(token.word) && at(Symbol::Colon, 1)) {
        name = token.text;
        next();
        next();
    } else {
        return;
    }
    if (!m_labels.emplace(foldCase(name), nextStep()).second)
        fail(token.position, u"Duplicate label: " + name);
}

void StatementParser::parseLabelUse(int step)
{
    const Token& token = peek();
    const bool isNumber
        = token.kind == TokenKind::Literal && (token.value.get<std::int16_t>() || token.value.get<std::int32_t>());
    if (!isNumber && (token.kind != TokenKind::Identifier || isReserved(token.word)))
        fail(u"Expected: label or line number");
    next();
    m_labelUses.push_back({step, isNumber ? token.value.toText() : Text(token.text), token.position});
}

void StatementParser::bindLabels()
{
    for (const LabelUse& use : m_labelUses) {
        const int target = indexOf(m_labels, use.name);
        if (target < 0)
            m_problems.push_back({use.position, u"Label not defined: " + use.name});
        else
            setTarget(use.step, target);
    }
}

void StatementParser::expectEnd(Word word, const char16_t* message, Position begin)
{
    if (word == Word::If && accept(Word::EndIf))
        return;
    if (!at(Word::End) || !at(word, 1))
        fail(begin, message);
    next();
    next();
}

void StatementParser::parseIf(Position position)
{
    ExprRef condition = parseExpression();
    // `If x GoTo label` is a whole statement, too.
    const bool jumps = at(Word::GoTo);
    if (!jumps)
        expect(Word::Then, u"Then or GoTo");
    const int test = emit(position, JumpUnlessStep{std::move(condition), -1});
    if (!jumps && atLineEnd()) {
        parseIfBlock(position);
        return;
    }
    parseInlineIf(test, position);
}

void StatementParser::parseIfBlock(Position position)
{
    std::vector<int> exits;
    int test = nextStep() - 1;
    bool sawElse = false;
    for (;;) {
        parseBlock();
        const Position part = here();
        if (sawElse || !(at(Word::ElseIf) || at(Word::Else)))
            break;
        m_starts = true; // where `Resume Next` goes on behind the part's last statement
        exits.push_back(emit(part, JumpStep{-1}));
        land(test);
        test = -1;
        if (accept(Word::ElseIf)) {
            ExprRef condition = parseExpression();
            expect(Word::Then, u"Then");
            m_starts = true;
            test = emit(part, JumpUnlessStep{std::move(condition), -1});
        } else {
            next();
            sawElse = true;
        }
    }
    expectEnd(Word::If, u"Block If without End If", position);
    if (test >= 0)
        land(test);
    for (const int step : exits)
        land(step);
}

void StatementParser::parseInlineStatements()
{
    while (!atLineEnd() && !at(Word::Else)) {
        if (accept(Symbol::Colon))
            continue;
        const bool isJump = peek().kind == TokenKind::Literal; // `If x Then 100`
        m_starts = true;
        if (isJump)
            parseLabelUse(emit(here(), JumpStep{-1}));
        else
            parseStatement();
        if (!m_nextContinues)
            expectStatementEnd();
    }
}

void StatementParser::parseInlineIf(int test, Position position)
{
    parseInlineStatements();
    if (!accept(Word::Else)) {
        land(test);
        return;
    }
    m_starts = true;
    const int exit = emit(position, JumpStep{-1});
    land(test);
    parseInlineStatements();
    land(exit);
}

void StatementParser::parseSelect(Position position)
{
    expect(Word::Case, u"Case");
    const int slot = hiddenSlot();
    emit(position, SelectStep{parseExpression(), slot});
    expectStatementEnd();
    while (atStatementEnd() && !atSourceEnd() && !at(Word::Else))
        next();
    std::vector<int> exits;
    int test = -1;
    while (at(Word::Case)) {
        const Position part = next().position;
        m_starts = false;
        if (test >= 0)
            land(test);
        test = -1;
        if (!accept(Word::Else)) {
            CaseStep step{{}, slot, -1};
            do
                step.clauses.push_back(parseCaseClause());
            while (accept(Symbol::Comma));
            test = emit(part, std::move(step));
        }
        expectStatementEnd();
        parseBlock();
        m_starts = true;
        exits.push_back(emit(part, JumpStep{-1}));
    }
    expectEnd(Word::Select, u"Select Case without End Select", position);
    if (test >= 0)
        land(test);
    for (const int step : exits)
        land(step);
    m_starts = false;
    emit(position, ClearSlotStep{slot});
}

CaseClause StatementParser::parseCaseClause()
{
    const auto isComparison = [](Symbol symbol) {
        return symbol == Symbol::Equal || symbol == Symbol::NotEqual || symbol == Symbol::Less
            || symbol == Symbol::Greater || symbol == Symbol::LessOrEqual || symbol == Symbol::GreaterOrEqual;
    };
    const bool named = accept(Word::Is);
    CaseClause clause;
    if (named || isComparison(peek().symbol)) {
        switch (peek().symbol) {
        case Symbol::Equal:
            clause.op = Operator::Equal;
            break;
        case Symbol::NotEqual:
            clause.op = Operator::NotEqual;
            break;
        case Symbol::Less:
            clause.op = Operator::Less;
            break;
        case Symbol::Greater:
            clause.op = Operator::Greater;
            break;
        case Symbol::LessOrEqual:
            clause.op = Operator::LessOrEqual;
            break;
        case Symbol::GreaterOrEqual:
            clause.op = Operator::GreaterOrEqual;
            break;
        default:
            fail(u"Expected: comparison operator");
        }
        next();
        clause.value = parseExpression();
        return clause;
    }
    clause.value = parseExpression();
    if (accept(Word::To))
        clause.upper = parseExpression();
    return clause;
}

void StatementParser::leaveLoop()
{
    for (const int step : m_loops.back().exits)
        land(step);
    m_loops.pop_back();
}

void StatementParser::parseFor(Position position)
{
    if (at(Word::Each))
        return parseForEach(position);
    ForStep step{};
    step.counter = parseTarget(Reach::Whole);
    expect(Symbol::Equal, u"=");
    step.first = parseExpression();
    expect(Word::To, u"To");
    step.last = parseExpression();
    if (accept(Word::Step))
        step.step = parseExpression();
    step.limitSlot = hiddenSlot();
    step.stepSlot = hiddenSlot();
    step.exit = -1;
    expectStatementEnd();
    const int begin = emit(position, std::move(step));
    m_loops.push_back({LoopKind::For, {begin}});
    parseBlock();
    parseNext(position);
    m_starts = true;
    emit(position, ForNextStep{begin});
    leaveLoop();
}

void StatementParser::parseForEach(Position position)
{
    next();
    ForEachStep step{};
    step.variable = parseTarget(Reach::Whole);
    expect(Word::In, u"In");
    step.collection = parseExpression();
    step.cursorSlot = hiddenSlot();
    expectStatementEnd();
    const int slot = step.cursorSlot;
    const int begin = emit(position, std::move(step));
    const int turn = emit(position, ForEachNextStep{begin, -1});
    m_loops.push_back({LoopKind::For, {turn}});
    parseBlock();
    parseNext(position);
    m_starts = true;
    emit(position, JumpStep{turn});
    leaveLoop();
    m_starts = false;
    emit(position, ClearSlotStep{slot});
}

/// `Next`, `Next i`, or what is left of `Next j, i` for the outer loop.
void StatementParser::parseNext(Position begin)
{
    if (m_nextContinues)
        m_nextContinues = false;
    else if (!accept(Word::Next))
        fail(begin, u"For without Next");
    if (atStatementEnd())
        return;
    parseTarget(Reach::Whole); // the counter's name is for readers
    m_nextContinues = accept(Symbol::Comma);
}

void StatementParser::parseDo(Position position)
{
    const int begin = nextStep();
    m_loops.push_back({LoopKind::Do, {}});
    const auto parseTest = [this](Position test) {
        const bool until = next().word == Word::Until;
        m_loops.back().exits.push_back(emit(test, JumpUnlessStep{parseExpression(), -1, until}));
    };
    if (at(Word::While) || at(Word::Until))
        parseTest(position);
    expectStatementEnd();
    parseBlock();
    const Position end = here();
    if (!accept(Word::Loop))
        fail(position, u"Do without Loop");
    m_starts = true;
    if (at(Word::While) || at(Word::Until))
        parseTest(end);
    emit(end, JumpStep{begin});
    leaveLoop();
}

void StatementParser::parseWhile(Position position)
{
    const int begin = nextStep();
    const int test = emit(position, JumpUnlessStep{parseExpression(), -1});
    expectStatementEnd();
    parseBlock();
    if (!at(Word::Wend))
        fail(position, u"While without Wend");
    m_starts = true;
    emit(next().position, JumpStep{begin});
    land(test);
}

void StatementParser::parseWith(Position position)
{
    const int slot = hiddenSlot();
    emit(position, WithStep{parseExpression(), slot});
    expectStatementEnd();
    m_withSlots.push_back(slot);
    parseBlock();
    m_withSlots.pop_back();
    expectEnd(Word::With, u"With without End With", position);
    m_starts = false;
    emit(position, ClearSlotStep{slot});
}

} // namespace zn::language
