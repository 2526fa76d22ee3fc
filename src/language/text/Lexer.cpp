#include "language/text/Lexer.h"

#include "base/DateText.h"

#include <charconv>
#include <limits>
#include <unicode/uchar.h>

namespace zn::language {

namespace {

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

bool isLetter(char16_t unit)
{
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_'
        || (unit >= 0x80 && u_isalpha(unit));
}

bool isLineEnd(char16_t unit) { return unit == u'\r' || unit == u'\n'; }

bool isBlank(char16_t unit) { return unit == u' ' || unit == u'\t' || unit == u'\f' || unit == 0xA0; }

/// A date in a source is read alike on every machine.
bool readDateLiteral(TextView text, double& days) { return readDateText(text, DateOrder::MonthDayYear, days); }

class Lexer {
public:
    explicit Lexer(TextView source)
        : m_source(source)
    {
        m_tokens.reserve(source.size() / 4 + 16);
    }

    std::vector<Token> run()
    {
        while (!atEnd())
            next();
        endLine();
        start();
        finish(TokenKind::EndOfSource);
        return std::move(m_tokens);
    }

private:
    bool atEnd() const { return m_at >= m_source.size(); }
    char16_t peek(std::size_t ahead = 0) const
    {
        return m_at + ahead < m_source.size() ? m_source[m_at + ahead] : u'\0';
    }

    void next()
    {
        const char16_t unit = peek();
        if (isBlank(unit)) {
            m_blank = true;
            ++m_at;
        } else if (isLineEnd(unit)) {
            endLine();
            skipLineEnd();
        } else if (unit == u'\'' || isRemark()) {
            skipComment();
        } else if (unit == u'_' && isContinuation()) {
            continueLine();
        } else if (isLetter(unit) || (unit == u'[' && closesOnLine(u']'))) {
            identifier();
        } else if (isDigit(unit) || (unit == u'.' && isDigit(peek(1)))) {
            number();
        } else if (unit == u'"') {
            string();
        } else if (unit == u'&' && isRadixMark(peek(1)) && isRadixDigit(peek(2))) {
            radixNumber();
        } else if (unit == u'#' && isDateLiteral()) {
            date();
        } else {
            symbol();
        }
    }

    static bool isRadixMark(char16_t unit) { return (unit | 0x20) == u'h' || (unit | 0x20) == u'o'; }
    static bool isRadixDigit(char16_t unit)
    {
        return isDigit(unit) || ((unit | 0x20) >= u'a' && (unit | 0x20) <= u'f');
    }

    bool isRemark() const
    {
        const bool startsStatement = m_tokens.empty() || m_tokens.back().kind == TokenKind::EndOfLine
            || m_tokens.back().symbol == Symbol::Colon;
        return startsStatement && wordNamed(m_source.substr(m_at, 3)) == Word::Rem && !isLetter(peek(3))
            && !isDigit(peek(3));
    }

    void skipComment()
    {
        while (!atEnd() && !isLineEnd(peek())) {
            // A comment goes on where its line does.
            if (peek() == u'_' && isContinuation())
                continueLine();
            else
                ++m_at;
        }
    }

    bool isContinuation() const
    {
        if (m_at > 0 && !isBlank(m_source[m_at - 1]) && !isLineEnd(m_source[m_at - 1]))
            return false;
        std::size_t ahead = 1;
        while (isBlank(peek(ahead)))
            ++ahead;
        return m_at + ahead >= m_source.size() || isLineEnd(peek(ahead));
    }

    void continueLine()
    {
        while (!atEnd() && !isLineEnd(peek()))
            ++m_at;
        skipLineEnd();
        m_blank = true;
    }

    void skipLineEnd()
    {
        if (atEnd())
            return;
        m_at += peek() == u'\r' && peek(1) == u'\n' ? 2 : 1;
        ++m_line;
        m_lineStart = m_at;
    }

    void endLine()
    {
        if (m_tokens.empty() || m_tokens.back().kind == TokenKind::EndOfLine)
            return;
        start();
        finish(TokenKind::EndOfLine);
    }

    void start()
    {
        m_start = m_at;
        m_position = {m_line, static_cast<int>(m_at - m_lineStart) + 1};
    }

    Token& finish(TokenKind kind)
    {
        Token token;
        token.kind = kind;
        token.blankBefore = m_blank;
        token.startsLine = m_tokens.empty() || m_tokens.back().kind == TokenKind::EndOfLine;
        token.position = m_position;
        token.text = m_source.substr(m_start, m_at - m_start);
        m_blank = false;
        return m_tokens.emplace_back(std::move(token));
    }

    void literal(Value value) { finish(TokenKind::Literal).value = std::move(value); }
    void fault(const char16_t* message) { finish(TokenKind::Faulty).value = message; }

    bool closesOnLine(char16_t close) const
    {
        for (std::size_t i = m_at + 1; i < m_source.size() && !isLineEnd(m_source[i]); ++i)
            if (m_source[i] == close)
                return true;
        return false;
    }

    void identifier()
    {
        start();
        if (peek() == u'[') { // brackets make a name of anything
            m_at = m_source.find(u']', m_at) + 1;
            Token& token = finish(TokenKind::Identifier);
            token.text = token.text.substr(1, token.text.size() - 2);
            return;
        }
        while (isLetter(peek()) || isDigit(peek()))
            ++m_at;
        const bool isMember
            = !m_tokens.empty() && (m_tokens.back().symbol == Symbol::Dot || m_tokens.back().symbol == Symbol::Bang);
        Token& token = finish(TokenKind::Identifier);
        token.suffix = typeSuffix();
        token.word = isMember || (token.suffix != 0 && token.suffix != u'$') ? Word::None : wordNamed(token.text);
    }

    char16_t typeSuffix()
    {
        const char16_t unit = peek();
        const char16_t after = peek(1);
        const bool wordFollows = isLetter(after) || isDigit(after);
        const bool isSuffix = unit == u'$' || unit == u'%' || unit == u'@' || (unit == u'#' && !wordFollows)
            || (unit == u'!' && !wordFollows && after != u'[') || (unit == u'&' && !wordFollows && after != u'"');
        if (!isSuffix)
            return 0;
        ++m_at;
        return unit;
    }

    void number()
    {
        start();
        bool isFloat = false;
        while (isDigit(peek()))
            ++m_at;
        if (peek() == u'.') {
            isFloat = true;
            do
                ++m_at;
            while (isDigit(peek()));
        }
        const std::size_t sign = peek(1) == u'+' || peek(1) == u'-' ? 1 : 0;
        const char16_t mark = peek() | 0x20;
        if ((mark == u'e' || mark == u'd') && isDigit(peek(1 + sign))) {
            isFloat = true;
            m_at += 1 + sign;
            while (isDigit(peek()))
                ++m_at;
        }
        Text digits(m_source.substr(m_start, m_at - m_start));
        replaceAll(digits, u"d", u"e");
        replaceAll(digits, u"D", u"e");
        if (digits.back() == u'.')
            digits.pop_back();
        double value = 0;
        if (!parseNumber(digits, value)) {
            fault(u"The number is out of range");
            return;
        }
        finishNumber(value, isFloat, digits);
    }

    void finishNumber(double value, bool isFloat, const Text& digits)
    {
        constexpr double int16Limit = std::numeric_limits<std::int16_t>::max();
        constexpr double int32Limit = std::numeric_limits<std::int32_t>::max();
        switch (peek()) {
        case u'%':
            ++m_at;
            return convert(value, ValueType::Int16);
        case u'&':
            ++m_at;
            return convert(value, ValueType::Int32);
        case u'!':
            ++m_at;
            return convert(value, ValueType::Float32);
        case u'#':
            ++m_at;
            return convert(value, ValueType::Float64);
        case u'@':
            ++m_at;
            return convert(value, ValueType::Currency);
        case u'^':
            if (!isFloat && !isDigit(peek(1)) && !isLetter(peek(1)) && !isBlank(peek(1)) && peek(1) != u'(') {
                ++m_at;
                return wholeNumber(digits);
            }
            break;
        default:
            break;
        }
        if (isFloat || value > int32Limit)
            return literal(value);
        if (value > int16Limit)
            return literal(static_cast<std::int32_t>(value));
        literal(static_cast<std::int16_t>(value));
    }

    void wholeNumber(const Text& digits)
    {
        const std::string ascii = toUtf8(digits);
        std::int64_t number = 0;
        if (std::from_chars(ascii.data(), ascii.data() + ascii.size(), number).ec != std::errc())
            fault(u"Overflow");
        else
            literal(number);
    }

    void convert(double value, ValueType type)
    {
        try {
            literal(Value(value).changedTo(type));
        } catch (const StatusError&) {
            fault(u"Overflow");
        }
    }

    void radixNumber()
    {
        start();
        const int bitsPerDigit = (peek(1) | 0x20) == u'h' ? 4 : 3;
        m_at += 2;
        std::uint64_t number = 0;
        bool tooLong = false;
        for (; isRadixDigit(peek()); ++m_at) {
            const char16_t unit = peek();
            const auto digit = static_cast<std::uint64_t>(isDigit(unit) ? unit - u'0' : (unit | 0x20) - u'a' + 10);
            tooLong = tooLong || number >> (64 - bitsPerDigit) != 0 || digit >> bitsPerDigit != 0;
            number = number << bitsPerDigit | digit;
        }
        const bool isLong = peek() == u'&';
        const bool isLongLong = peek() == u'^';
        m_at += isLong || isLongLong ? 1 : 0;
        if (tooLong || (!isLongLong && number > 0xFFFFFFFF))
            return fault(u"Overflow");
        if (isLongLong)
            return literal(static_cast<std::int64_t>(number));
        // Without the suffix, four digits are a signed 16-bit number: &HFFFF is -1.
        if (!isLong && number <= 0xFFFF)
            return literal(static_cast<std::int16_t>(number));
        literal(static_cast<std::int32_t>(number));
    }

    void string()
    {
        start();
        Text text;
        for (++m_at;; ++m_at) {
            if (atEnd() || isLineEnd(peek()))
                return fault(u"The text has no closing quote");
            if (peek() == u'"') {
                if (peek(1) != u'"')
                    break;
                ++m_at;
            }
            text.push_back(peek());
        }
        ++m_at;
        literal(std::move(text));
    }

    TextView dateBetweenMarks() const
    {
        std::size_t end = m_at + 1;
        while (end < m_source.size() && !isLineEnd(m_source[end]) && m_source[end] != u'#')
            ++end;
        const bool closed = end < m_source.size() && m_source[end] == u'#';
        return closed ? m_source.substr(m_at + 1, end - m_at - 1) : TextView();
    }

    bool isDateLiteral() const
    {
        double days = 0;
        return readDateLiteral(dateBetweenMarks(), days);
    }

    void date()
    {
        start();
        const TextView text = dateBetweenMarks();
        double days = 0;
        readDateLiteral(text, days);
        m_at += text.size() + 2;
        literal(DateValue{days});
    }

    void symbol()
    {
        start();
        const char16_t unit = m_source[m_at++];
        const Symbol symbol = symbolOf(unit);
        if (symbol == Symbol::None)
            return fault(u"This character has no meaning here");
        finish(TokenKind::Symbol).symbol = symbol;
    }

    Symbol either(char16_t second, Symbol pair, Symbol single)
    {
        if (peek() != second)
            return single;
        ++m_at;
        return pair;
    }

    Symbol symbolOf(char16_t unit)
    {
        switch (unit) {
        case u'+':
            return Symbol::Plus;
        case u'-':
            return Symbol::Minus;
        case u'*':
            return Symbol::Star;
        case u'/':
            return Symbol::Slash;
        case u'\\':
            return Symbol::Backslash;
        case u'^':
            return Symbol::Caret;
        case u'&':
            return Symbol::Ampersand;
        case u'(':
            return Symbol::OpenParen;
        case u')':
            return Symbol::CloseParen;
        case u',':
            return Symbol::Comma;
        case u';':
            return Symbol::Semicolon;
        case u'.':
            return Symbol::Dot;
        case u'!':
            return Symbol::Bang;
        case u'#':
            return Symbol::Hash;
        case u':':
            return either(u'=', Symbol::NamedArgument, Symbol::Colon);
        case u'=':
            return Symbol::Equal;
        case u'<':
            return peek() == u'>' ? either(u'>', Symbol::NotEqual, Symbol::Less)
                                  : either(u'=', Symbol::LessOrEqual, Symbol::Less);
        case u'>':
            return either(u'=', Symbol::GreaterOrEqual, Symbol::Greater);
        default:
            return Symbol::None;
        }
    }

    TextView m_source;
    std::size_t m_at = 0;
    std::size_t m_start = 0;
    std::size_t m_lineStart = 0;
    int m_line = 1;
    bool m_blank = false;
    Position m_position;
    std::vector<Token> m_tokens;
};

} // namespace

std::vector<Token> tokenize(TextView source) { return Lexer(source).run(); }

std::vector<Text> sourceLines(TextView source)
{
    std::vector<Text> lines;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= source.size(); ++i) {
        if (i < source.size() && !isLineEnd(source[i]))
            continue;
        lines.emplace_back(source.substr(start, i - start));
        if (i + 1 < source.size() && source[i] == u'\r' && source[i + 1] == u'\n')
            ++i;
        start = i + 1;
    }
    return lines;
}

} // namespace zn::language
