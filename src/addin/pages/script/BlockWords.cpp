#include "addin/pages/script/BlockWords.h"

#include "language/text/Lexer.h"

#include <algorithm>

namespace zn {

namespace {

using language::Symbol;
using language::Token;
using language::TokenKind;
using language::Word;

/// One kind of block. Its closing words are `close`, or "End" and `open` if that is none.
struct BlockKind {
    Word open;
    Word close;
    std::vector<Word> dividers;
};

const std::vector<BlockKind>& blockKinds()
{
    static const std::vector<BlockKind> kinds = {
        {Word::Sub, Word::None, {}},
        {Word::Function, Word::None, {}},
        {Word::Property, Word::None, {}},
        {Word::Type, Word::None, {}},
        {Word::Enum, Word::None, {}},
        {Word::With, Word::None, {}},
        {Word::Select, Word::None, {Word::Case}},
        {Word::If, Word::None, {Word::ElseIf, Word::Else}},
        {Word::For, Word::Next, {}},
        {Word::Do, Word::Loop, {}},
        {Word::While, Word::Wend, {}},
    };
    return kinds;
}

class BlockReader {
public:
    explicit BlockReader(TextView source)
        : m_source(source)
        , m_tokens(language::tokenize(source))
    {
    }

    void run()
    {
        for (m_at = 0; m_at < m_tokens.size(); ++m_at) {
            if (m_at == 0 || m_tokens[m_at].startsLine || m_tokens[m_at - 1].symbol == Symbol::Colon)
                readStatement();
        }
    }

    /// Whether the last line read leaves a block open or goes on with one.
    bool endsInside() const { return !m_code.empty() || !m_directives.empty() || m_divided; }

    std::vector<MacroBlock> take()
    {
        for (Stack* stack : {&m_code, &m_directives}) {
            while (!stack->empty())
                finishInnermost(*stack, false);
        }
        return std::move(m_blocks);
    }

private:
    struct Open {
        const BlockKind* kind;
        MacroBlock block;
    };
    using Stack = std::vector<Open>;

    Word word(std::size_t ahead = 0) const
    {
        return m_at + ahead < m_tokens.size() ? m_tokens[m_at + ahead].word : Word::None;
    }

    void readStatement()
    {
        const bool directive = m_tokens[m_at].symbol == Symbol::Hash;
        Stack& stack = directive ? m_directives : m_code;
        m_at += directive ? 1 : 0;
        if (!directive)
            skipModifiers();
        if (m_at >= m_tokens.size() || m_tokens[m_at].kind != TokenKind::Identifier)
            return;
        if (word() == Word::End && closeNamed(stack))
            return;
        if (word() == Word::EndIf)
            return close(stack, Word::If, m_at);
        for (const BlockKind& kind : blockKinds()) {
            if (directive && kind.open != Word::If)
                continue;
            if (word() == kind.open)
                return open(kind, stack);
            if (std::ranges::find(kind.dividers, word()) != kind.dividers.end())
                return divide(kind, stack);
            if (kind.close != Word::None && word() == kind.close)
                return closeLoops(kind);
        }
    }

    void skipModifiers()
    {
        constexpr Word modifiers[] = {Word::Public, Word::Private, Word::Friend, Word::Static, Word::Global};
        while (std::ranges::find(modifiers, word()) != std::end(modifiers))
            ++m_at;
    }

    SourceRange rangeOf(std::size_t first, std::size_t last) const
    {
        const auto place
            = [this](const Token& token) { return static_cast<std::size_t>(token.text.data() - m_source.data()); };
        const std::size_t start = place(m_tokens[first]);
        return {start, place(m_tokens[last]) + m_tokens[last].text.size() - start};
    }

    /// An `If` whose `Then` has something behind it in its line has no end of its own.
    bool isWholeInLine() const
    {
        std::size_t last = m_at;
        while (last + 1 < m_tokens.size() && m_tokens[last + 1].kind != TokenKind::EndOfLine
            && m_tokens[last + 1].kind != TokenKind::EndOfSource)
            ++last;
        return m_tokens[last].word != Word::Then;
    }

    /// `Type` and `Property` are also plain names: "type = 1".
    bool isPlainName() const
    {
        const bool named = word() == Word::Type || word() == Word::Property || word() == Word::Enum;
        return named && (m_at + 1 >= m_tokens.size() || m_tokens[m_at + 1].kind != TokenKind::Identifier);
    }

    void open(const BlockKind& kind, Stack& stack)
    {
        if ((kind.open == Word::If && isWholeInLine()) || isPlainName())
            return;
        stack.push_back({&kind, {{rangeOf(m_at, m_at)}, false}});
    }

    void divide(const BlockKind& kind, Stack& stack)
    {
        m_divided = true;
        if (toInnermost(stack, kind.open))
            stack.back().block.words.push_back(rangeOf(m_at, m_at));
    }

    bool closeNamed(Stack& stack)
    {
        const auto kind = std::ranges::find_if(
            blockKinds(), [this](const BlockKind& one) { return one.close == Word::None && one.open == word(1); });
        if (kind == blockKinds().end())
            return false;
        close(stack, kind->open, m_at + 1);
        ++m_at;
        return true;
    }

    /// Ends the innermost block of a kind by the words up to the token `last`.
    void close(Stack& stack, Word kind, std::size_t last)
    {
        if (!toInnermost(stack, kind))
            return;
        stack.back().block.words.push_back(rangeOf(m_at, last));
        finishInnermost(stack, true);
    }

    /// `Next j, i` closes a loop for each name.
    void closeLoops(const BlockKind& kind)
    {
        const SourceRange range = rangeOf(m_at, m_at);
        std::size_t count = 1;
        for (std::size_t i = m_at; i < m_tokens.size() && m_tokens[i].kind != TokenKind::EndOfLine; ++i)
            count += kind.open == Word::For && m_tokens[i].symbol == Symbol::Comma ? 1 : 0;
        for (; count > 0 && toInnermost(m_code, kind.open); --count) {
            m_code.back().block.words.push_back(range);
            finishInnermost(m_code, true);
        }
    }

    /// Gives up blocks that were never closed inside the innermost one of a kind. False if there is none of it.
    bool toInnermost(Stack& stack, Word kind)
    {
        const auto isIt = [kind](const Open& one) { return one.kind->open == kind; };
        if (std::ranges::none_of(stack, isIt))
            return false;
        while (!isIt(stack.back()))
            finishInnermost(stack, false);
        return true;
    }

    void finishInnermost(Stack& stack, bool closed)
    {
        stack.back().block.closed = closed;
        m_blocks.push_back(std::move(stack.back().block));
        stack.pop_back();
    }

    TextView m_source;
    std::vector<Token> m_tokens;
    std::size_t m_at = 0;
    Stack m_code;
    Stack m_directives; ///< on their own: "#If" may choose between two openings of one block
    bool m_divided = false;
    std::vector<MacroBlock> m_blocks;
};

} // namespace

std::vector<MacroBlock> macroBlocks(TextView source)
{
    BlockReader reader(source);
    reader.run();
    return reader.take();
}

const MacroBlock* blockAt(const std::vector<MacroBlock>& blocks, std::size_t place)
{
    const auto hit = std::ranges::find_if(blocks, [place](const MacroBlock& block) {
        return std::ranges::any_of(block.words, [place](const SourceRange& range) { return range.touches(place); });
    });
    return hit == blocks.end() ? nullptr : &*hit;
}

bool opensBlock(TextView line)
{
    BlockReader reader(line);
    reader.run();
    return reader.endsInside();
}

} // namespace zn
