#include "base/Value.h"

#include "base/Dates.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace zn {

namespace {

[[noreturn]] void mismatch() { throw StatusError(DISP_E_TYPEMISMATCH, "Type mismatch."); }

[[noreturn]] void overflow() { throw StatusError(DISP_E_OVERFLOW, "Value overflow."); }

double numberFromText(const Text& text)
{
    double number = 0;
    if (parseNumber(text, number))
        return number;
    if (equalNoCase(text, u"True"))
        return -1;
    if (equalNoCase(text, u"False"))
        return 0;
    mismatch();
}

/// Every numeric type widened to a double, which all automation conversions between numbers go through here;
/// 64-bit integers beyond 2^53 are handled by the caller.
double asDouble(const Value& value)
{
    struct Visitor {
        double operator()(std::monostate) const { return 0; }
        double operator()(NullValue) const { mismatch(); }
        double operator()(std::int16_t v) const { return v; }
        double operator()(std::int32_t v) const { return v; }
        double operator()(float v) const { return v; }
        double operator()(double v) const { return v; }
        double operator()(CurrencyValue v) const { return static_cast<double>(v.tenThousandths) / 10000.0; }
        double operator()(DateValue v) const { return v.days; }
        double operator()(const Text& v) const { return numberFromText(v); }
        double operator()(const ObjectRef&) const { mismatch(); }
        double operator()(ErrorValue) const { mismatch(); }
        double operator()(BooleanValue v) const { return v.bits; }
        double operator()(std::uint8_t v) const { return v; }
        double operator()(std::int64_t v) const { return static_cast<double>(v); }
        double operator()(const ArrayRef&) const { mismatch(); }
    };
    return std::visit(Visitor{}, value.storage());
}

double roundHalfEven(double number) { return std::nearbyint(number); }

template <class Integer> Integer asInteger(const Value& value)
{
    if (const auto* whole = value.get<std::int64_t>()) {
        if (*whole < std::int64_t(std::numeric_limits<Integer>::min())
            || *whole > std::int64_t(std::numeric_limits<Integer>::max()))
            overflow();
        return static_cast<Integer>(*whole);
    }
    const double number = roundHalfEven(asDouble(value));
    if constexpr (std::is_signed_v<Integer>) {
        // A power of two, so that the number beyond the largest is exact, too.
        constexpr double least = static_cast<double>(std::numeric_limits<Integer>::min());
        if (!(number >= least && number < -least))
            overflow();
    } else if (!(number >= 0 && number <= static_cast<double>(std::numeric_limits<Integer>::max()))) {
        overflow();
    }
    return static_cast<Integer>(number);
}

Text currencyText(CurrencyValue value) { return floatText(static_cast<double>(value.tenThousandths) / 10000.0, 15); }

Text asText(const Value& value)
{
    struct Visitor {
        Text operator()(std::monostate) const { return {}; }
        Text operator()(NullValue) const { mismatch(); }
        Text operator()(std::int16_t v) const { return numberText(v); }
        Text operator()(std::int32_t v) const { return numberText(v); }
        Text operator()(float v) const { return floatText(v, 7); }
        Text operator()(double v) const { return floatText(v, 15); }
        Text operator()(CurrencyValue v) const { return currencyText(v); }
        Text operator()(DateValue v) const { return dateText(v.days); }
        Text operator()(const Text& v) const { return v; }
        Text operator()(const ObjectRef&) const { mismatch(); }
        Text operator()(ErrorValue) const { mismatch(); }
        Text operator()(BooleanValue v) const { return numberText(v.bits); }
        Text operator()(std::uint8_t v) const { return numberText(v); }
        Text operator()(std::int64_t v) const { return numberText(v); }
        Text operator()(const ArrayRef&) const { mismatch(); }
    };
    return std::visit(Visitor{}, value.storage());
}

DateValue asDate(const Value& value)
{
    if (const auto* text = value.get<Text>()) {
        double days = 0;
        if (parseDate(*text, days))
            return {days};
    }
    const double days = asDouble(value);
    CalendarTime fields;
    if (!breakDown(days, fields)) // only the years 100 to 9999 are dates
        overflow();
    return {days};
}

float asFloat32(const Value& value)
{
    const double number = asDouble(value);
    if (std::isfinite(number) && std::fabs(number) > static_cast<double>(std::numeric_limits<float>::max()))
        overflow();
    return static_cast<float>(number);
}

CurrencyValue asCurrency(const Value& value)
{
    const double scaled = roundHalfEven(asDouble(value) * 10000.0);
    if (!(std::fabs(scaled) < 9.2e18))
        overflow();
    return {static_cast<std::int64_t>(scaled)};
}

} // namespace

/// A text is copied by itself: where it finds no memory, the variant's own copying would destroy what it hasn't made
/// yet, since libstdc++ takes variants of such types for never empty.
Value::Value(const Value& other)
    : m_storage(other.get<Text>() ? Storage(Text(*other.get<Text>())) : other.m_storage)
{
}
Value& Value::operator=(const Value& other) = default;
bool Value::operator==(const Value& other) const = default;

Value Value::arrayOf(std::vector<Value> elements, ValueType elementType)
{
    auto array = std::make_shared<ValueArray>();
    array->elementType = elementType;
    array->bounds.push_back({0, static_cast<std::uint32_t>(elements.size())});
    array->elements = std::move(elements);
    return Value(std::move(array));
}

ValueType Value::type() const
{
    static constexpr ValueType types[] = {ValueType::Empty, ValueType::Null, ValueType::Int16, ValueType::Int32,
        ValueType::Float32, ValueType::Float64, ValueType::Currency, ValueType::Date, ValueType::String,
        ValueType::Dispatch, ValueType::Error, ValueType::Boolean, ValueType::UInt8, ValueType::Int64};
    if (const auto* array = get<ArrayRef>()) {
        const auto element = *array ? (*array)->elementType : ValueType::Variant;
        return static_cast<ValueType>(std::uint16_t(ValueType::Array) | std::uint16_t(element));
    }
    return types[m_storage.index()];
}

Value Value::changedTo(ValueType wanted) const
{
    if (wanted == type() || wanted == ValueType::Variant)
        return *this;
    switch (wanted) {
    case ValueType::Empty:
        return {};
    case ValueType::Null:
        return NullValue{};
    case ValueType::Int16:
        return asInteger<std::int16_t>(*this);
    case ValueType::Int32:
        return asInteger<std::int32_t>(*this);
    case ValueType::Int64:
        return asInteger<std::int64_t>(*this);
    case ValueType::UInt8:
        return asInteger<std::uint8_t>(*this);
    case ValueType::Float32:
        return asFloat32(*this);
    case ValueType::Float64:
        return asDouble(*this);
    case ValueType::Currency:
        return asCurrency(*this);
    case ValueType::Date:
        return asDate(*this);
    case ValueType::String:
        return asText(*this);
    case ValueType::Boolean:
        return asDouble(*this) != 0;
    default:
        mismatch();
    }
}

bool Value::toBool() const { return changedTo(ValueType::Boolean).get<BooleanValue>()->bits != 0; }

std::int32_t Value::toInt32() const { return *changedTo(ValueType::Int32).get<std::int32_t>(); }

double Value::toDouble() const { return asDouble(*this); }

Text Value::toText() const { return asText(*this); }

ObjectRef Value::toObject() const
{
    if (const auto* object = get<ObjectRef>())
        return *object;
    mismatch();
}

Value Value::deepCopy() const
{
    const auto* array = get<ArrayRef>();
    if (!array || !*array)
        return *this;
    auto copy = std::make_shared<ValueArray>(**array);
    for (Value& element : copy->elements)
        element = element.deepCopy();
    return Value(std::move(copy));
}

bool parseNumber(TextView text, double& number)
{
    const Text trimmed = trim(text);
    std::string ascii;
    for (const char16_t unit : trimmed) {
        if (unit > 0x7E)
            return false;
        ascii.push_back(static_cast<char>(unit));
    }
    if (ascii.size() > 2 && ascii[0] == '&') {
        const int base = (ascii[1] | 0x20) == 'h' ? 16 : (ascii[1] | 0x20) == 'o' ? 8 : 0;
        std::uint32_t bits = 0;
        const auto [end, error]
            = std::from_chars(ascii.data() + 2, ascii.data() + ascii.size(), bits, base ? base : 10);
        if (base == 0 || error != std::errc() || end != ascii.data() + ascii.size())
            return false;
        number = bits <= 0xFFFF ? static_cast<std::int16_t>(bits) : static_cast<std::int32_t>(bits);
        return true;
    }
    const char* begin = ascii.data();
    const char* end = begin + ascii.size();
    if (begin != end && *begin == '+')
        ++begin;
    if (begin == end || *begin == 'i' || *begin == 'n' || *begin == 'I' || *begin == 'N')
        return false;
    const auto [stop, error] = std::from_chars(begin, end, number);
    return error == std::errc() && stop == end && std::isfinite(number);
}

Text floatText(double number, int digits)
{
    char buffer[64];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, number, std::chars_format::general, digits);
    Text out(buffer, end);
    const std::size_t exponent = out.find(u'e');
    if (exponent != Text::npos)
        out[exponent] = u'E';
    if (out.find(u'.') != Text::npos) {
        const std::size_t mantissaEnd = std::min(exponent, out.size());
        std::size_t last = out.find_last_not_of(u'0', mantissaEnd - 1);
        if (out[last] == u'.')
            --last;
        out.erase(last + 1, mantissaEnd - last - 1);
    }
    return out == u"-0" ? Text(u"0") : out;
}

} // namespace zn
