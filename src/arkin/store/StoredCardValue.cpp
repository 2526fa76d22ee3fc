#include "arkin/store/Cards.h"

#include <charconv>

namespace zn::arkin {

using zn::Value;
using zn::ValueType;

namespace {

template <class Number> std::string shortest(Number number)
{
    char buffer[64];
    return {buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr};
}

template <class Number> Number parsed(const std::string& text)
{
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

struct Encoder {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(zn::NullValue) const { return {}; }
    std::string operator()(zn::CurrencyValue v) const { return shortest(v.tenThousandths); }
    std::string operator()(zn::DateValue v) const { return shortest(v.days); }
    std::string operator()(const zn::Text& v) const { return zn::toUtf8(v); }
    std::string operator()(zn::ErrorValue v) const { return shortest(v.status); }
    std::string operator()(zn::BooleanValue v) const { return shortest(v.bits); }
    std::string operator()(const zn::ObjectRef&) const { throw refused(); }
    std::string operator()(const zn::ArrayRef&) const { throw refused(); }
    template <class Number> std::string operator()(Number v) const { return shortest(v); }

    static zn::StatusError refused()
    {
        return zn::StatusError(
            zn::DISP_E_TYPEMISMATCH, "A file card holds texts, numbers, dates and booleans, no objects or lists.");
    }
};

} // namespace

StoredCardValue toStoredCard(const Value& value)
{
    return {static_cast<int>(value.type()), std::visit(Encoder{}, value.storage())};
}

Value fromStoredCard(const StoredCardValue& stored)
{
    const std::string& text = stored.text;
    switch (static_cast<ValueType>(stored.type)) {
    case ValueType::Null:
        return zn::NullValue{};
    case ValueType::Int16:
        return parsed<std::int16_t>(text);
    case ValueType::Int32:
        return parsed<std::int32_t>(text);
    case ValueType::Float32:
        return parsed<float>(text);
    case ValueType::Float64:
        return parsed<double>(text);
    case ValueType::Currency:
        return zn::CurrencyValue{parsed<std::int64_t>(text)};
    case ValueType::Date:
        return zn::DateValue{parsed<double>(text)};
    case ValueType::String:
        return zn::toText(text);
    case ValueType::Error:
        return zn::ErrorValue{parsed<std::int32_t>(text)};
    case ValueType::Boolean:
        return zn::BooleanValue{parsed<std::int16_t>(text)};
    case ValueType::UInt8:
        return parsed<std::uint8_t>(text);
    case ValueType::Int64:
        return parsed<std::int64_t>(text);
    default:
        return {};
    }
}

} // namespace zn::arkin
