#include "addin/pages/script/LineColours.h"

#include "addin/macro/Placeholders.h"
#include "language/text/Token.h"

#include <algorithm>
#include <unicode/uchar.h>

namespace zn {

namespace {

using language::Word;
using language::wordNamed;

constexpr TextView typeNames[] = {u"Boolean", u"Byte", u"Currency", u"Date", u"Decimal", u"Double", u"Integer", u"Long",
    u"LongLong", u"LongPtr", u"Object", u"Single", u"String", u"Variant"};

/// Words that only some statements know; elsewhere they are names like any other.
constexpr Word namesElsewhere[] = {Word::Access, Word::Any, Word::Append, Word::Base, Word::Binary, Word::Compare,
    Word::Event, Word::Input, Word::Len, Word::Line, Word::Lock, Word::Mid, Word::Module, Word::Name, Word::Output,
    Word::Property, Word::Random, Word::Read, Word::Seek, Word::Shared, Word::Text, Word::Type, Word::Write};
constexpr Word statementsWithThem[] = {Word::Open, Word::Option, Word::Line, Word::Declare, Word::Attribute,
    Word::Private, Word::Public, Word::Property, Word::Type, Word::End, Word::Exit};

template <class Range, class Item> bool contains(const Range& range, const Item& item)
{
    return std::ranges::find(range, item) != std::ranges::end(range);
}

bool isDigit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }
bool isLetter(char16_t unit) { return unit == u'_' || u_isalpha(unit); }
bool isBlank(char16_t unit) { return unit == u' ' || unit == u'\t' || unit == 0xA0; }

class LineReader {
public:
    LineReader(TextView line, bool inComment)
        : m_line(line)
        , m_inComment(inComment)
    {
    }

    ColouredLine run()
    {
        while (m_at < m_line.size() && !m_inComment)
            readPart();
        if (m_inComment) {
            add(SourcePart::Comment, m_at, m_line.size());
            m_out.commentGoesOn = endsInContinuation();
        }
        for (const Placeholder& one : findPlaceholders(m_line).found)
            m_out.parts.push_back({partOf(one.kind), one.position, one.length});
        return std::move(m_out);
    }

private:
    static SourcePart partOf(PlaceholderKind kind)
    {
        constexpr SourcePart parts[] = {SourcePart::HostPlaceholder, SourcePart::TaskPlaceholder,
            SourcePart::FilePlaceholder, SourcePart::CardPlaceholder};
        return parts[static_cast<std::size_t>(kind)];
    }

    void add(SourcePart part, std::size_t start, std::size_t end)
    {
        if (end > start)
            m_out.parts.push_back({part, start, end - start});
    }

    bool endsInContinuation() const
    {
        const std::size_t last = m_line.find_last_not_of(u" \t");
        return last != TextView::npos && m_line[last] == u'_' && (last == 0 || isBlank(m_line[last - 1]));
    }

    void readPart()
    {
        const char16_t unit = m_line[m_at];
        if (unit == u'\'')
            m_inComment = true;
        else if (unit == u'"')
            readString();
        else if (isLetter(unit))
            readWord();
        else if (isDigit(unit) || (unit == u'&' && isRadixMark()))
            readNumber();
        else if (unit == u'#' && m_first == Word::None && !m_seenAny)
            readDirective();
        else
            ++m_at;
        m_seenAny = m_seenAny || !isBlank(unit);
    }

    bool isRadixMark() const
    {
        const TextView next = m_line.substr(m_at + 1, 2);
        return next.size() == 2 && TextView(u"hHoO").find(next[0]) != TextView::npos && u_isxdigit(next[1]);
    }

    void readString()
    {
        const std::size_t start = m_at;
        const std::size_t close = m_line.find(u'"', m_at + 1);
        m_at = close == TextView::npos ? m_line.size() : close + 1;
        add(SourcePart::String, start, m_at); // a doubled quote begins another part of the same colour
    }

    void readNumber()
    {
        const std::size_t start = m_at;
        m_at += m_line[m_at] == u'&' ? 2 : 1; // "&H"
        while (m_at < m_line.size() && (u_isxdigit(m_line[m_at]) || m_line[m_at] == u'.'))
            ++m_at;
        add(SourcePart::Number, start, m_at);
    }

    std::size_t wordEnd(std::size_t start) const
    {
        const auto end = std::find_if_not(m_line.begin() + static_cast<std::ptrdiff_t>(start), m_line.end(),
            [](char16_t unit) { return isLetter(unit) || isDigit(unit); });
        return static_cast<std::size_t>(end - m_line.begin());
    }

    void readDirective()
    {
        const std::size_t start = m_at;
        m_at = wordEnd(m_at + 1);
        if (equalNoCase(m_line.substr(start, m_at - start), u"#End"))
            m_at = wordEnd(std::min(m_line.find_first_not_of(u" \t", m_at), m_line.size()));
        if (wordNamed(m_line.substr(start + 1, wordEnd(start + 1) - start - 1)) != Word::None)
            add(SourcePart::Directive, start, m_at);
    }

    void readWord()
    {
        const std::size_t start = m_at;
        m_at = wordEnd(start);
        const TextView name = m_line.substr(start, m_at - start);
        const bool isMember = start > 0 && (m_line[start - 1] == u'.' || m_line[start - 1] == u'!');
        const Word word = isMember ? Word::None : wordNamed(name);
        const bool startsStatement = !m_seenAny || isAfterColon(start);
        if (startsStatement) {
            m_first = word;
            if (word == Word::Rem) {
                m_at = start;
                m_inComment = true;
                return;
            }
        }
        if (!isMember && std::ranges::any_of(typeNames, [&](TextView one) { return equalNoCase(one, name); }))
            add(SourcePart::TypeName, start, m_at);
        else if (word != Word::None && (!contains(namesElsewhere, word) || contains(statementsWithThem, m_first)))
            add(SourcePart::Keyword, start, m_at);
    }

    bool isAfterColon(std::size_t start) const
    {
        const std::size_t before = start == 0 ? TextView::npos : m_line.find_last_not_of(u" \t", start - 1);
        return before != TextView::npos && m_line[before] == u':';
    }

    TextView m_line;
    bool m_inComment;
    std::size_t m_at = 0;
    bool m_seenAny = false;
    Word m_first = Word::None; ///< with which the statement begins
    ColouredLine m_out;
};

} // namespace

ColouredLine colouredLine(TextView line, bool inComment) { return LineReader(line, inComment).run(); }

} // namespace zn
