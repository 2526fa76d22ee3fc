#pragma once

#include "language/text/Token.h"

#include <initializer_list>
#include <vector>

namespace zn::language {

/// An error of the source on its way to where the reader goes on.
struct SyntaxProblem {
    Position position;
    Text message;
};

/// A position in a list of tokens, with the questions that a grammar asks.
class TokenReader {
public:
    explicit TokenReader(const std::vector<Token>& tokens)
        : m_tokens(tokens)
    {
    }

protected:
    const Token& peek(std::size_t ahead = 0) const
    {
        const std::size_t last = m_tokens.size() - 1;
        return m_tokens[m_at + ahead < last ? m_at + ahead : last];
    }
    const Token& next()
    {
        const Token& token = peek();
        if (m_at + 1 < m_tokens.size())
            ++m_at;
        return token;
    }
    Position here() const { return peek().position; }
    std::size_t mark() const { return m_at; }
    void rewind(std::size_t mark) { m_at = mark; }

    bool at(Symbol symbol, std::size_t ahead = 0) const { return peek(ahead).symbol == symbol; }
    bool at(Word word, std::size_t ahead = 0) const { return peek(ahead).word == word; }
    bool atName(TextView name, std::size_t ahead = 0) const;
    bool accept(Symbol symbol) { return at(symbol) && (next(), true); }
    bool accept(Word word) { return at(word) && (next(), true); }

    /// The end of a line, of a statement, or the `Else` of an `If` on one line.
    bool atStatementEnd() const
    {
        const TokenKind kind = peek().kind;
        return kind == TokenKind::EndOfLine || kind == TokenKind::EndOfSource || at(Symbol::Colon) || at(Word::Else);
    }
    /// Whether the next token is the first of a line that continues the one before.
    bool atContinuation() const { return m_at > 0 && m_tokens[m_at - 1].position.line < peek().position.line; }
    bool atLineEnd() const { return peek().kind == TokenKind::EndOfLine || peek().kind == TokenKind::EndOfSource; }
    bool atSourceEnd() const { return peek().kind == TokenKind::EndOfSource; }
    void skipLine();

    void expect(Symbol symbol, const char16_t* shown);
    void expect(Word word, const char16_t* shown);
    void expectStatementEnd();
    /// An identifier that may name something of the macro's own. Raises for a reserved word.
    const Token& expectName();

    [[noreturn]] void fail(Position position, Text message) const;
    /// Fails at the current token; a token that couldn't be read tells its own story.
    [[noreturn]] void fail(Text message) const;

private:
    const std::vector<Token>& m_tokens;
    std::size_t m_at = 0;
};

/// Whether a word can't name a variable or procedure.
bool isReserved(Word word);

} // namespace zn::language
