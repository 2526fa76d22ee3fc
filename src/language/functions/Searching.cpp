#include "language/functions/Given.h"
#include "language/functions/Intrinsic.h"
#include "language/run/RunContext.h"

#include <algorithm>

namespace zn::language {

namespace {

/// Both in the form in which they compare unit by unit; refers to the two values.
class Searched {
public:
    Searched(const Value& inText, const Value& forText, bool ignoreCase)
        : text(comparable(inText, m_textScratch, ignoreCase))
        , wanted(comparable(forText, m_wantedScratch, ignoreCase))
    {
    }
    Searched(const Searched&) = delete;
    Searched& operator=(const Searched&) = delete;

private:
    static TextView comparable(const Value& value, Text& scratch, bool ignoreCase)
    {
        const TextView text = viewOf(value, scratch);
        if (!ignoreCase)
            return text;
        scratch = foldCase(text);
        return scratch;
    }

    Text m_textScratch;
    Text m_wantedScratch;

public:
    const TextView text;
    const TextView wanted;
};

/// `InStr([start,] text, wanted [, compare])`: a third argument makes the first one the start.
Value positionIn(RunContext& context, Given a)
{
    const bool hasStart = a.size() > 2;
    const std::size_t start = hasStart ? countAt(a, 0, 1, 1) : 1;
    const Value& text = a[hasStart ? 1 : 0];
    const Value& wanted = a[hasStart ? 2 : 1];
    if (isNull(text) || isNull(wanted))
        return NullValue{};
    const Searched s(text, wanted, ignoresCase(a, 3, context.ignoreCase));
    if (s.text.empty() || start > s.text.size())
        return std::int32_t(0);
    const std::size_t hit = s.text.find(s.wanted, start - 1);
    return std::int32_t(hit == Text::npos ? 0 : hit + 1);
}

Value lastPositionIn(RunContext& context, Given a)
{
    if (isNull(a[0]) || isNull(a[1]))
        return NullValue{};
    const Searched s(a[0], a[1], ignoresCase(a, 3, context.ignoreCase));
    const std::int32_t start = longAt(a, 2, -1);
    if (start == 0 || start < -1)
        raise(error::invalidCall);
    const std::size_t end = start == -1 ? s.text.size() : static_cast<std::size_t>(start);
    if (s.text.empty() || end > s.text.size() || s.wanted.size() > end)
        return std::int32_t(0);
    if (s.wanted.empty())
        return std::int32_t(end);
    const std::size_t hit = s.text.rfind(s.wanted, end - s.wanted.size());
    return std::int32_t(hit == Text::npos ? 0 : hit + 1);
}

/// No text grows beyond what all texts may have, which is far below what a machine has.
void appendWithinLimit(Text& text, zn::TextView more)
{
    if (more.size() > longestText - text.size())
        raise(error::outOfTextSpace);
    text += more;
}

Value replaced(RunContext& context, Given a)
{
    const Text original = textOf(a[0]);
    const Text with = textOf(a[2]);
    const Searched s(a[0], a[1], ignoresCase(a, 5, context.ignoreCase));
    const std::size_t start = countAt(a, 3, 1, 1) - 1;
    const std::int32_t most = longAt(a, 4, -1);
    if (start >= original.size())
        return Text();
    Text out;
    std::size_t at = start;
    for (std::int32_t done = 0; !s.wanted.empty() && (most < 0 || done < most); ++done) {
        const std::size_t hit = s.text.find(s.wanted, at);
        if (hit == Text::npos)
            break;
        appendWithinLimit(out, zn::TextView(original).substr(at, hit - at));
        appendWithinLimit(out, with);
        at = hit + s.wanted.size();
    }
    appendWithinLimit(out, zn::TextView(original).substr(at));
    return out;
}

Value compared(RunContext& context, Given a)
{
    if (isNull(a[0]) || isNull(a[1]))
        return NullValue{};
    const Searched s(a[0], a[1], ignoresCase(a, 2, context.ignoreCase));
    const int order = s.text.compare(s.wanted);
    return std::int16_t(order < 0 ? -1 : order > 0);
}

Value splitText(RunContext& context, Given a)
{
    const Text original = textOf(a[0]);
    const Value separator(textAt(a, 1, u" "));
    const Searched s(a[0], separator, ignoresCase(a, 3, context.ignoreCase));
    const std::int32_t most = longAt(a, 2, -1);
    std::vector<Value> parts;
    std::size_t at = 0;
    while (!original.empty() && most != 0) {
        const bool isLast = most > 0 && parts.size() + 1 == static_cast<std::size_t>(most);
        const std::size_t hit = s.wanted.empty() || isLast ? Text::npos : s.text.find(s.wanted, at);
        parts.emplace_back(original.substr(at, hit == Text::npos ? Text::npos : hit - at));
        if (hit == Text::npos)
            break;
        at = hit + s.wanted.size();
    }
    return Value::arrayOf(std::move(parts), ValueType::String);
}

const ValueArray& listOf(const Value& value)
{
    const auto* array = value.get<ArrayRef>();
    if (!array)
        raise(error::typeMismatch);
    if (!*array || (*array)->bounds.size() != 1)
        raise(error::subscript);
    return **array;
}

Value joined(RunContext&, Given a)
{
    const Text separator = textAt(a, 1, u" ");
    Text out;
    bool first = true;
    for (const Value& element : listOf(a[0]).elements) {
        if (!first)
            appendWithinLimit(out, separator);
        appendWithinLimit(out, textOf(element));
        first = false;
    }
    return out;
}

Value filtered(RunContext& context, Given a)
{
    const Value wanted(textOf(a[1]));
    const bool include = !isGiven(a, 2) || truthOf(a[2]);
    const bool ignoreCase = ignoresCase(a, 3, context.ignoreCase);
    std::vector<Value> kept;
    for (const Value& element : listOf(a[0]).elements) {
        const Searched s(element, wanted, ignoreCase);
        if ((s.text.find(s.wanted) != Text::npos) == include)
            kept.push_back(element);
    }
    return Value::arrayOf(std::move(kept), ValueType::String);
}

constexpr ValueType any = ValueType::Variant;

constexpr Intrinsic functions[] = {
    {u"InStr", 2, 4, any, positionIn, u"Start String1 String2 Compare"},
    {u"InStrRev", 2, 4, any, lastPositionIn, u"StringCheck StringMatch Start Compare"},
    {u"Replace", 3, 6, ValueType::String, replaced, u"Expression Find Replace Start Count Compare"},
    {u"StrComp", 2, 3, any, compared, u"String1 String2 Compare"},
    {u"Split", 1, 4, any, splitText, u"Expression Delimiter Limit Compare"},
    {u"Join", 1, 2, ValueType::String, joined, u"SourceArray Delimiter"},
    {u"Filter", 2, 4, any, filtered, u"SourceArray Match Include Compare"},
};

} // namespace

std::span<const Intrinsic> searchFunctions() { return functions; }

} // namespace zn::language
