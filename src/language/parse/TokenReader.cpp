#include "language/parse/TokenReader.h"

#include <algorithm>

namespace zn::language {

namespace {

// Words that the grammar knows only in certain places, and that may be names everywhere else.
constexpr Word freeWords[] = {Word::None, Word::Access, Word::Alias, Word::Any, Word::Append, Word::Base, Word::Binary,
    Word::Compare, Word::Error, Word::Explicit, Word::LBound, Word::Len, Word::Lib, Word::Line, Word::Mid, Word::Module,
    Word::Name, Word::Output, Word::Property, Word::PtrSafe, Word::Random, Word::Read, Word::Step, Word::Shared,
    Word::String, Word::Text, Word::UBound};

} // namespace

bool isReserved(Word word) { return std::ranges::find(freeWords, word) == std::end(freeWords); }

bool TokenReader::atName(TextView name, std::size_t ahead) const
{
    return peek(ahead).kind == TokenKind::Identifier && equalNoCase(peek(ahead).text, name);
}

void TokenReader::skipLine()
{
    while (!atLineEnd())
        next();
}

void TokenReader::expect(Symbol symbol, const char16_t* shown)
{
    if (!accept(symbol))
        fail(Text(u"Expected: ") + shown);
}

void TokenReader::expect(Word word, const char16_t* shown)
{
    if (!accept(word))
        fail(Text(u"Expected: ") + shown);
}

void TokenReader::expectStatementEnd()
{
    if (!atStatementEnd())
        fail(u"Expected: end of statement");
}

const Token& TokenReader::expectName()
{
    if (peek().kind != TokenKind::Identifier || isReserved(peek().word))
        fail(u"Expected: identifier");
    return next();
}

void TokenReader::fail(Position position, Text message) const { throw SyntaxProblem{position, std::move(message)}; }

void TokenReader::fail(Text message) const
{
    const Token& token = peek();
    if (token.kind == TokenKind::Faulty)
        message = *token.value.get<Text>();
    throw SyntaxProblem{token.position, std::move(message)};
}

} // namespace zn::language
