#include "language/parse/StatementParser.h"

namespace zn::language {

void StatementParser::parseStatement()
{
    if (!parseBlockStatement() && !parseJumpStatement() && !parseDeclarationStatement() && !parseFileStatement())
        parseAssignmentOrCall(here());
}

bool StatementParser::parseBlockStatement()
{
    const Position position = here();
    switch (peek().word) {
    case Word::If:
        next();
        parseIf(position);
        return true;
    case Word::Select:
        next();
        parseSelect(position);
        return true;
    case Word::For:
        next();
        parseFor(position);
        return true;
    case Word::Do:
        next();
        parseDo(position);
        return true;
    case Word::While:
        next();
        parseWhile(position);
        return true;
    case Word::With:
        next();
        parseWith(position);
        return true;
    default:
        return false;
    }
}

bool StatementParser::parseJumpStatement()
{
    const Position position = here();
    switch (peek().word) {
    case Word::GoTo:
        next();
        parseLabelUse(emit(position, JumpStep{-1}));
        return true;
    case Word::GoSub:
        next();
        parseLabelUse(emit(position, GoSubStep{-1}));
        return true;
    case Word::Return:
        next();
        emit(position, ReturnStep{});
        return true;
    case Word::Exit:
        next();
        parseExit(position);
        return true;
    case Word::On:
        next();
        parseOn(position);
        return true;
    case Word::Resume:
        next();
        parseResume(position);
        return true;
    case Word::End:
    case Word::Stop:
        next();
        emit(position, EndStep{});
        return true;
    case Word::Error:
        if (at(Symbol::Equal, 1) || at(Symbol::Dot, 1))
            return false;
        next();
        emit(position, RaiseStep{parseExpression()});
        return true;
    default:
        return false;
    }
}

bool StatementParser::parseDeclarationStatement()
{
    const Position position = here();
    switch (peek().word) {
    case Word::Dim:
        next();
        parseDim(false);
        return true;
    case Word::Static:
        next();
        parseDim(true);
        return true;
    case Word::Const:
        next();
        parseConstants(m_procedure->constants, m_procedure->constantNames);
        return true;
    case Word::ReDim:
        next();
        parseReDim(position);
        return true;
    case Word::Erase:
        next();
        parseErase(position);
        return true;
    case Word::Call:
        next();
        parseCall(position);
        return true;
    case Word::Let:
        next();
        parseLet(position);
        return true;
    case Word::Set:
        next();
        parseSet(position);
        return true;
    case Word::LSet:
        next();
        parseJustify(position, false);
        return true;
    case Word::RSet:
        next();
        parseJustify(position, true);
        return true;
    case Word::Mid:
        if (!at(Symbol::OpenParen, 1))
            return false;
        parseMid(position);
        return true;
    default:
        return false;
    }
}

void StatementParser::parseExit(Position position)
{
    const Word word = peek().word;
    if (word == Word::Sub || word == Word::Function) {
        if ((word == Word::Function) != m_procedure->isFunction)
            fail(m_procedure->isFunction ? u"Exit Sub not allowed in a Function"
                                         : u"Exit Function not allowed in a Sub");
        next();
        emit(position, ExitStep{});
        return;
    }
    if (word != Word::For && word != Word::Do)
        fail(u"Expected: Do, For, Sub or Function");
    const LoopKind kind = word == Word::For ? LoopKind::For : LoopKind::Do;
    for (auto loop = m_loops.rbegin(); loop != m_loops.rend(); ++loop) {
        if (loop->kind == kind) {
            next();
            loop->exits.push_back(emit(position, JumpStep{-1}));
            return;
        }
    }
    fail(position, word == Word::For ? u"Exit For not within For...Next" : u"Exit Do not within Do...Loop");
}

void StatementParser::parseOn(Position position)
{
    if (!accept(Word::Error))
        return parseChoice(position);
    if (accept(Word::Resume)) {
        expect(Word::Next, u"Next");
        emit(position, OnErrorStep{ErrorMode::ResumeNext, -1});
        return;
    }
    expect(Word::GoTo, u"GoTo or Resume");
    const auto* number = peek().value.get<std::int16_t>();
    if (number && *number == 0) {
        next();
        emit(position, OnErrorStep{ErrorMode::Off, -1});
    } else if (at(Symbol::Minus)) { // `On Error GoTo -1`: the handler is left without a Resume
        next();
        next();
        emit(position, OnErrorStep{ErrorMode::ClearActive, -1});
    } else {
        parseLabelUse(emit(position, OnErrorStep{ErrorMode::Handler, -1}));
    }
}

/// Each entry of a GoSub has a second step, which leads from its return behind the list.
void StatementParser::parseChoice(Position position)
{
    ExprRef number = parseExpression();
    const bool returns = accept(Word::GoSub);
    if (!returns)
        expect(Word::GoTo, u"GoTo or GoSub");
    const auto choice = static_cast<std::size_t>(emit(position, ChooseStep{std::move(number), returns ? 2 : 1, 0}));
    std::vector<int> ways;
    int count = 0;
    do {
        ++count;
        if (!returns) {
            parseLabelUse(emit(position, JumpStep{-1}));
            continue;
        }
        parseLabelUse(emit(position, GoSubStep{-1}));
        ways.push_back(emit(position, JumpStep{-1}));
    } while (accept(Symbol::Comma));
    std::get<ChooseStep>(m_procedure->steps[choice].node).count = count;
    for (const int way : ways)
        setTarget(way, nextStep());
}

void StatementParser::parseResume(Position position)
{
    const auto* number = peek().value.get<std::int16_t>();
    if (accept(Word::Next)) {
        emit(position, ResumeStep{ResumeMode::Next, -1});
    } else if (atStatementEnd() || (number && *number == 0)) {
        if (number)
            next();
        emit(position, ResumeStep{ResumeMode::Retry, -1});
    } else {
        parseLabelUse(emit(position, ResumeStep{ResumeMode::Label, -1}));
    }
}

} // namespace zn::language
