#include "language/functions/Given.h"
#include "language/functions/Intrinsic.h"
#include "language/run/RunContext.h"

#include <charconv>
#include <cmath>

namespace zn::language {

namespace {

template <ValueType Type> Value convert(RunContext&, Given a) { return coerce(a[0], Type); }

/// A date may be a text, a number or a date; nothing else reads as one.
Value toDate(RunContext&, Given a) { return coerce(a[0], ValueType::Date); }

Value asItIs(RunContext&, Given a) { return a[0]; }

Value errorValue(RunContext&, Given a)
{
    // An error value carries its number in the lower half, as automation does.
    return ErrorValue{static_cast<Status>(0x800A0000U | static_cast<std::uint32_t>(longOf(a[0]) & 0xFFFF))};
}

/// The number at the beginning of a text. Blanks inside are skipped, anything else ends it.
Value leadingNumber(RunContext&, Given a)
{
    std::string digits;
    for (const char16_t unit : textOf(a[0])) {
        if (unit == u' ' || unit == u'\t' || unit == u'\n' || unit == u'\r')
            continue;
        if (unit > 0x7E)
            break;
        digits.push_back(static_cast<char>(unit));
    }
    const bool isRadix = digits.size() > 2 && digits[0] == '&';
    if (isRadix) {
        const int base = (digits[1] | 0x20) == 'h' ? 16 : (digits[1] | 0x20) == 'o' ? 8 : 0;
        std::uint32_t bits = 0;
        if (base == 0
            || std::from_chars(digits.data() + 2, digits.data() + digits.size(), bits, base).ec != std::errc())
            return 0.0;
        return bits <= 0xFFFF ? double(static_cast<std::int16_t>(bits)) : double(static_cast<std::int32_t>(bits));
    }
    const char* begin = digits.data() + (digits.starts_with('+') ? 1 : 0);
    const char first = *begin == '-' ? begin[1] : *begin;
    double number = 0;
    if ((first >= '0' && first <= '9') || first == '.')
        std::from_chars(begin, digits.data() + digits.size(), number);
    return number;
}

/// A number as text with room for its sign.
Value numberWithSign(RunContext&, Given a)
{
    if (isNull(a[0]))
        return a[0];
    const double number = numberOf(a[0]);
    const Text text = textOf(a[0].type() == ValueType::String ? Value(number) : a[0]);
    return number < 0 ? text : u" " + text;
}

std::uint64_t bitsOf(const Value& value)
{
    if (value.type() == ValueType::Int16)
        return static_cast<std::uint16_t>(*value.get<std::int16_t>());
    const std::int64_t number = *coerce(value, ValueType::Int64).get<std::int64_t>();
    return value.type() == ValueType::Int64 ? static_cast<std::uint64_t>(number)
                                            : static_cast<std::uint32_t>(longOf(value));
}

template <int Base> Value inBase(RunContext&, Given a)
{
    if (isNull(a[0]))
        return a[0];
    char buffer[32];
    const auto [end, failure] = std::to_chars(buffer, buffer + sizeof buffer, bitsOf(a[0]), Base);
    return toUpper(Text(buffer, end));
}

constexpr ValueType any = ValueType::Variant;
constexpr ValueType text = ValueType::String;

constexpr Intrinsic functions[] = {
    {u"CInt", 1, 1, ValueType::Int16, convert<ValueType::Int16>},
    {u"CLng", 1, 1, ValueType::Int32, convert<ValueType::Int32>},
    {u"CLngLng", 1, 1, ValueType::Int64, convert<ValueType::Int64>},
    {u"CLngPtr", 1, 1, ValueType::Int64, convert<ValueType::Int64>},
    {u"CSng", 1, 1, ValueType::Float32, convert<ValueType::Float32>},
    {u"CDbl", 1, 1, ValueType::Float64, convert<ValueType::Float64>},
    {u"CCur", 1, 1, ValueType::Currency, convert<ValueType::Currency>},
    {u"CByte", 1, 1, ValueType::UInt8, convert<ValueType::UInt8>},
    {u"CBool", 1, 1, ValueType::Boolean, convert<ValueType::Boolean>},
    {u"CStr", 1, 1, text, convert<ValueType::String>},
    {u"CDate", 1, 1, ValueType::Date, toDate},
    {u"CVar", 1, 1, any, asItIs},
    {u"CVErr", 1, 1, any, errorValue},
    {u"Val", 1, 1, ValueType::Float64, leadingNumber},
    {u"Str", 1, 1, any, numberWithSign},
    {u"Hex", 1, 1, any, inBase<16>},
    {u"Oct", 1, 1, any, inBase<8>},
};

} // namespace

std::span<const Intrinsic> conversionFunctions() { return functions; }

} // namespace zn::language
