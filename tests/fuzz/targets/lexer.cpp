// Tokens of a macro's source: they stand in its order and inside it, and end as the parser relies on.
#include "language/text/Lexer.h"
#include "tests/fuzz/Promise.h"

using namespace zn;
using namespace zn::language;
using fuzz::promise;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Text source = toText({reinterpret_cast<const char*>(data), size});
    const auto lines = sourceLines(source);
    const std::vector<Token> tokens = tokenize(source);
    promise(!tokens.empty() && tokens.back().kind == TokenKind::EndOfSource, "the source has an end");
    Position last{1, 1};
    for (const Token& token : tokens) {
        const Position at = token.position;
        promise(at.line > last.line || (at.line == last.line && at.column >= last.column), "tokens stand in order");
        last = at;
        if (token.kind == TokenKind::EndOfLine || token.kind == TokenKind::EndOfSource)
            continue;
        const auto line = static_cast<std::size_t>(at.line);
        promise(at.line >= 1 && line <= lines.size(), "a token stands on a line of the source");
        promise(at.column >= 1 && static_cast<std::size_t>(at.column) <= lines[line - 1].size(),
            "a token stands inside its line");
        promise(token.text.empty()
                || (token.text.data() >= source.data()
                    && token.text.data() + token.text.size() <= source.data() + source.size()),
            "a token's text is the source's");
        promise(token.kind != TokenKind::Faulty || token.value.type() == ValueType::String, "a fault has a message");
    }
    return 0;
}
