#include "language/functions/Given.h"
#include "language/functions/Intrinsic.h"
#include "language/run/RunContext.h"

#include <algorithm>

namespace zn::language {

namespace {

/// The functions that answer Null for Null.
template <class Work> Value ofText(const Value& value, Work&& work)
{
    if (isNull(value))
        return value;
    Text scratch;
    return Value(Text(work(viewOf(value, scratch))));
}

Value left(RunContext&, Given a)
{
    const std::size_t count = countAt(a, 1, 0);
    return ofText(a[0], [&](TextView text) { return text.substr(0, count); });
}

Value right(RunContext&, Given a)
{
    const std::size_t count = countAt(a, 1, 0);
    return ofText(a[0], [&](TextView text) { return text.substr(text.size() - std::min(count, text.size())); });
}

Value mid(RunContext&, Given a)
{
    const std::size_t start = countAt(a, 1, 0, 1) - 1;
    const std::size_t count = isGiven(a, 2) ? countAt(a, 2, 0) : Text::npos;
    return ofText(a[0], [&](TextView text) { return start < text.size() ? text.substr(start, count) : TextView(); });
}

Value len(RunContext&, Given a)
{
    if (isNull(a[0]))
        return a[0];
    Text scratch;
    return std::int32_t(viewOf(a[0], scratch).size());
}

Value upper(RunContext&, Given a)
{
    return ofText(a[0], [](TextView text) { return toUpper(text); });
}

Value lower(RunContext&, Given a)
{
    return ofText(a[0], [](TextView text) { return toLower(text); });
}

TextView withoutBlanks(TextView text, bool atFront, bool atBack)
{
    std::size_t first = atFront ? text.find_first_not_of(u' ') : 0;
    std::size_t last = atBack ? text.find_last_not_of(u' ') : text.size() - 1;
    if (first == Text::npos || last == Text::npos || text.empty())
        return {};
    return text.substr(first, last - first + 1);
}

Value trimBoth(RunContext&, Given a)
{
    return ofText(a[0], [](TextView text) { return withoutBlanks(text, true, true); });
}

Value trimLeft(RunContext&, Given a)
{
    return ofText(a[0], [](TextView text) { return withoutBlanks(text, true, false); });
}

Value trimRight(RunContext&, Given a)
{
    return ofText(a[0], [](TextView text) { return withoutBlanks(text, false, true); });
}

std::size_t lengthAt(Given a)
{
    const std::size_t count = countAt(a, 0, 0);
    if (count > longestText)
        raise(error::outOfTextSpace);
    return count;
}

Value space(RunContext&, Given a) { return Text(lengthAt(a), u' '); }

Value repeated(RunContext&, Given a)
{
    const std::size_t count = lengthAt(a);
    if (isNull(a[1]))
        return a[1];
    if (const auto* text = a[1].get<Text>()) {
        if (text->empty())
            raise(error::invalidCall);
        return Text(count, text->front());
    }
    return Text(count, fromCodePage(std::string(1, static_cast<char>(longOf(a[1]) & 0xFF))).front());
}

Value reversed(RunContext&, Given a)
{
    Text text = textOf(a[0]);
    std::ranges::reverse(text);
    return text;
}

Value character(RunContext&, Given a)
{
    const std::int32_t code = longOf(a[0]);
    if (code < 0 || code > 255)
        raise(error::invalidCall);
    return fromCodePage(std::string(1, static_cast<char>(code)));
}

Value wideCharacter(RunContext&, Given a)
{
    const std::int32_t code = longOf(a[0]);
    if (code < -32768 || code > 65535)
        raise(error::invalidCall);
    return Text(1, static_cast<char16_t>(code & 0xFFFF));
}

Value code(RunContext&, Given a)
{
    Text scratch;
    const TextView text = viewOf(a[0], scratch);
    if (text.empty())
        raise(error::invalidCall);
    return std::int16_t(static_cast<unsigned char>(toCodePage(text.substr(0, 1)).front()));
}

Value wideCode(RunContext&, Given a)
{
    Text scratch;
    const TextView text = viewOf(a[0], scratch);
    if (text.empty())
        raise(error::invalidCall);
    return std::int16_t(text.front());
}

constexpr ValueType text = ValueType::String;
constexpr ValueType any = ValueType::Variant;

constexpr Intrinsic functions[] = {
    {u"Left", 2, 2, any, left, u"String Length"},
    {u"Right", 2, 2, any, right, u"String Length"},
    {u"Mid", 2, 3, any, mid, u"String Start Length"},
    {u"Len", 1, 1, ValueType::Int32, len},
    {u"UCase", 1, 1, any, upper},
    {u"LCase", 1, 1, any, lower},
    {u"Trim", 1, 1, any, trimBoth},
    {u"LTrim", 1, 1, any, trimLeft},
    {u"RTrim", 1, 1, any, trimRight},
    {u"Space", 1, 1, text, space},
    {u"String", 2, 2, any, repeated},
    {u"StrReverse", 1, 1, text, reversed},
    {u"Chr", 1, 1, text, character},
    {u"ChrW", 1, 1, text, wideCharacter},
    {u"Asc", 1, 1, ValueType::Int16, code},
    {u"AscW", 1, 1, ValueType::Int16, wideCode},
};

} // namespace

std::span<const Intrinsic> textFunctions() { return functions; }

} // namespace zn::language
