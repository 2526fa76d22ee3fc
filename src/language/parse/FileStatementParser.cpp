#include "language/parse/StatementParser.h"

namespace zn::language {

bool StatementParser::parseFileStatement()
{
    const Position position = here();
    switch (peek().word) {
    case Word::Open:
        next();
        parseOpen(position);
        return true;
    case Word::Close:
        next();
        parseClose(position);
        return true;
    case Word::Print:
        next();
        parsePrint(position, parseFileNumber());
        return true;
    case Word::Write:
        next();
        parseWrite(position);
        return true;
    case Word::Input:
        next();
        parseInput(position);
        return true;
    case Word::Seek:
        next();
        parseSeek(position);
        return true;
    case Word::Get:
    case Word::Put:
    case Word::Lock:
    case Word::Unlock:
        fail(Text(peek().text) + u" for files of records isn't supported");
    case Word::Line:
        if (!at(Word::Input, 1))
            return false;
        next();
        next();
        parseLineInput(position);
        return true;
    case Word::Name:
        if (at(Symbol::Equal, 1) || at(Symbol::Dot, 1))
            return false;
        next();
        parseRename(position);
        return true;
    default:
        break;
    }
    if (atName(u"Debug") && at(Symbol::Dot, 1) && atName(u"Print", 2)) {
        next();
        next();
        next();
        parsePrint(position, nullptr);
        return true;
    }
    if (atName(u"Debug") && at(Symbol::Dot, 1) && atName(u"Assert", 2)) {
        next();
        next();
        next();
        parseExpression(); // it would stop a debugger, which a worker doesn't have
        return true;
    }
    return false;
}

ExprRef StatementParser::parseFileNumber()
{
    accept(Symbol::Hash);
    ExprRef file = parseExpression();
    if (!atStatementEnd())
        expect(Symbol::Comma, u",");
    return file;
}

OpenMode StatementParser::parseOpenMode()
{
    if (!accept(Word::For))
        return OpenMode::Random;
    switch (next().word) {
    case Word::Input:
        return OpenMode::Input;
    case Word::Output:
        return OpenMode::Output;
    case Word::Append:
        return OpenMode::Append;
    case Word::Random:
        return OpenMode::Random;
    case Word::Binary:
        return OpenMode::Binary;
    default:
        fail(u"Expected: Input, Output, Append, Random or Binary");
    }
}

void StatementParser::parseOpen(Position position)
{
    OpenStep step{};
    step.path = parseExpression();
    step.mode = parseOpenMode();
    if (accept(Word::Access)) {
        const bool reads = accept(Word::Read);
        const bool writes = accept(Word::Write);
        if (!reads && !writes)
            fail(u"Expected: Read or Write");
    }
    // How others may use the file meanwhile; it is ours alone in any case.
    if (accept(Word::Lock)) {
        accept(Word::Read);
        accept(Word::Write);
    } else {
        accept(Word::Shared);
    }
    expect(Word::As, u"As");
    accept(Symbol::Hash);
    step.file = parseExpression();
    if (accept(Word::Len)) {
        expect(Symbol::Equal, u"=");
        step.recordLength = parseExpression();
    }
    emit(position, std::move(step));
}

void StatementParser::parseClose(Position position)
{
    CloseStep step;
    while (!atStatementEnd()) {
        accept(Symbol::Hash);
        step.files.push_back(parseExpression());
        if (!accept(Symbol::Comma))
            break;
    }
    emit(position, std::move(step));
}

void StatementParser::parsePrint(Position position, ExprRef file)
{
    PrintStep step;
    step.file = std::move(file);
    while (!atStatementEnd()) {
        step.endsLine = false;
        if (accept(Symbol::Semicolon))
            continue;
        if (accept(Symbol::Comma)) {
            step.items.push_back({PrintItemKind::NextZone, nullptr});
            continue;
        }
        step.endsLine = true;
        const bool isTab = atName(u"Tab");
        const bool isSpaces = atName(u"Spc") && at(Symbol::OpenParen, 1);
        PrintItem item;
        if (isTab || isSpaces) {
            next();
            item.kind = isTab ? PrintItemKind::Tab : PrintItemKind::Spaces;
            if (accept(Symbol::OpenParen)) {
                item.value = parseExpression();
                expect(Symbol::CloseParen, u")");
            }
        } else {
            item.value = parseExpression();
        }
        step.items.push_back(std::move(item));
    }
    emit(position, std::move(step));
}

void StatementParser::parseWrite(Position position)
{
    WriteStep step;
    step.file = parseFileNumber();
    while (!atStatementEnd()) {
        step.values.push_back(parseExpression());
        if (!accept(Symbol::Comma) && !accept(Symbol::Semicolon))
            break;
    }
    emit(position, std::move(step));
}

void StatementParser::parseInput(Position position)
{
    InputStep step;
    step.file = parseFileNumber();
    do
        step.targets.push_back(parseTarget(Reach::Whole));
    while (accept(Symbol::Comma));
    emit(position, std::move(step));
}

void StatementParser::parseLineInput(Position position)
{
    ExprRef file = parseFileNumber();
    ExprRef target = parseTarget(Reach::Whole);
    emit(position, LineInputStep{std::move(file), std::move(target)});
}

void StatementParser::parseSeek(Position position)
{
    ExprRef file = parseFileNumber();
    ExprRef to = parseExpression();
    emit(position, SeekStep{std::move(file), std::move(to)});
}

void StatementParser::parseRename(Position position)
{
    ExprRef from = parseExpression();
    expect(Word::As, u"As");
    ExprRef to = parseExpression();
    emit(position, RenameStep{std::move(from), std::move(to)});
}

} // namespace zn::language
