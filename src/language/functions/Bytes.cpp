#include "language/functions/Bytes.h"

#include "language/functions/Given.h"
#include "language/functions/Intrinsic.h"
#include "language/run/RunContext.h"

#include <algorithm>
#include <unicode/uchar.h>

namespace zn::language {

namespace {

const ValueArray* arrayOfBytes(const Value& value)
{
    const auto* array = value.get<ArrayRef>();
    const bool isBytes = array && *array && (*array)->elementType == ValueType::UInt8;
    return isBytes ? array->get() : nullptr;
}

/// The functions that answer Null for Null.
template <class Work> Value ofBytes(const Value& value, Work&& work)
{
    return isNull(value) ? value : textOfBytes(work(bytesOf(value)));
}

Value leftBytes(RunContext&, Given a)
{
    const std::size_t count = countAt(a, 1, 0);
    return ofBytes(a[0], [&](const std::string& bytes) { return bytes.substr(0, count); });
}

Value rightBytes(RunContext&, Given a)
{
    const std::size_t count = countAt(a, 1, 0);
    return ofBytes(
        a[0], [&](const std::string& bytes) { return bytes.substr(bytes.size() - std::min(count, bytes.size())); });
}

Value midBytes(RunContext&, Given a)
{
    const std::size_t start = countAt(a, 1, 0, 1) - 1;
    const std::size_t count = isGiven(a, 2) ? countAt(a, 2, 0) : std::string::npos;
    return ofBytes(a[0],
        [&](const std::string& bytes) { return start < bytes.size() ? bytes.substr(start, count) : std::string(); });
}

Value countOfBytes(RunContext&, Given a)
{
    switch (a[0].type()) {
    case ValueType::Null:
        return a[0];
    case ValueType::String:
        return static_cast<std::int32_t>(a[0].get<Text>()->size() * 2);
    default:
        return static_cast<std::int32_t>(bytesOf(a[0]).size());
    }
}

/// The first of two arguments is what is searched; of three it is the start.
Value findBytes(RunContext&, Given a)
{
    const bool hasStart = isGiven(a, 2);
    const std::size_t start = hasStart ? countAt(a, 0, 1, 1) : 1;
    const Value& where = a[hasStart ? 1 : 0];
    const Value& what = a[hasStart ? 2 : 1];
    if (isNull(where) || isNull(what))
        return NullValue{};
    if (longAt(a, 3, 0) != 0)
        raise(error::invalidCall, u"InStrB compares bytes only");
    const std::string text = bytesOf(where);
    if (text.empty() || start > text.size())
        return std::int32_t(0);
    const std::size_t hit = text.find(bytesOf(what), start - 1);
    return hit == std::string::npos ? std::int32_t(0) : static_cast<std::int32_t>(hit + 1);
}

Value firstByte(RunContext&, Given a)
{
    const std::string bytes = bytesOf(a[0]);
    if (bytes.empty())
        raise(error::invalidCall);
    return std::int16_t(static_cast<unsigned char>(bytes.front()));
}

Value oneByte(RunContext&, Given a)
{
    const std::int32_t code = longOf(a[0]);
    if (code < 0 || code > 255)
        raise(error::invalidCall);
    return textOfBytes(std::string(1, static_cast<char>(code)));
}

Text properCase(const Text& text)
{
    Text out = toLower(text);
    bool wordStarts = true;
    for (char16_t& unit : out) {
        if (wordStarts && u_isalpha(unit))
            unit = static_cast<char16_t>(u_toupper(unit));
        wordStarts = !u_isalnum(unit) && unit != u'\'';
    }
    return out;
}

Value converted(RunContext&, Given a)
{
    constexpr std::int32_t upper = 1, lower = 2, proper = 3, unicode = 64, fromUnicode = 128;
    const std::int32_t conversion = longOf(a[1]);
    if (isNull(a[0]))
        return a[0];
    if ((conversion & ~(proper | unicode | fromUnicode)) != 0 || conversion == (unicode | fromUnicode))
        raise(error::invalidCall, u"StrConv knows upper, lower and proper case, vbUnicode and vbFromUnicode");
    Text text = (conversion & unicode) != 0 ? fromCodePage(bytesOf(a[0])) : textOf(a[0]);
    switch (conversion & proper) {
    case upper:
        text = toUpper(text);
        break;
    case lower:
        text = toLower(text);
        break;
    case proper:
        text = properCase(text);
        break;
    default:
        break;
    }
    if ((conversion & fromUnicode) != 0)
        return byteArray(toCodePage(text));
    return text;
}

constexpr ValueType any = ValueType::Variant;

constexpr Intrinsic functions[] = {
    {u"LeftB", 2, 2, any, leftBytes, u"String Length"},
    {u"RightB", 2, 2, any, rightBytes, u"String Length"},
    {u"MidB", 2, 3, any, midBytes, u"String Start Length"},
    {u"LenB", 1, 1, ValueType::Int32, countOfBytes},
    {u"InStrB", 2, 4, any, findBytes},
    {u"AscB", 1, 1, ValueType::Int16, firstByte},
    {u"ChrB", 1, 1, any, oneByte},
    {u"StrConv", 2, 3, any, converted, u"String Conversion LCID"},
};

} // namespace

std::string bytesOf(const Value& value)
{
    std::string bytes;
    if (const ValueArray* array = arrayOfBytes(value)) {
        for (const Value& element : array->elements)
            bytes.push_back(static_cast<char>(*element.get<std::uint8_t>()));
        return bytes;
    }
    const Text text = textOf(value);
    bytes.reserve(text.size() * 2);
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

Value byteArray(std::string_view bytes)
{
    constexpr std::size_t mostBytes = 25'000'000; // as many elements as any array may have
    if (bytes.size() > mostBytes)
        raise(error::outOfMemory);
    auto array = std::make_shared<ValueArray>();
    array->elementType = ValueType::UInt8;
    array->bounds.push_back({0, static_cast<std::uint32_t>(bytes.size())});
    array->elements.reserve(bytes.size());
    for (const char byte : bytes)
        array->elements.emplace_back(static_cast<std::uint8_t>(byte));
    return array;
}

Value textOfBytes(std::string_view bytes)
{
    if (bytes.size() % 2 != 0)
        return byteArray(bytes);
    Text text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); i += 2)
        text.push_back(static_cast<char16_t>(
            static_cast<unsigned char>(bytes[i]) | static_cast<unsigned char>(bytes[i + 1]) << 8));
    return text;
}

std::span<const Intrinsic> byteFunctions() { return functions; }

} // namespace zn::language
