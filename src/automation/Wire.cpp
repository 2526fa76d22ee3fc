#include "automation/Wire.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

namespace zn::automation {

namespace {

/// Arrays in arrays; deeper nesting than any caller needs would only serve to exhaust the stack.
constexpr int maximumDepth = 32;

bool isWellFormed(TextView text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit < 0xD800 || unit > 0xDFFF)
            continue;
        const bool pair = unit < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] <= 0xDFFF;
        if (!pair)
            return false;
        ++i;
    }
    return true;
}

/// JSON has no form for infinities and not-a-number, so these travel as their bits.
template <class Float, class Bits> Json encodeFloat(const char* tag, Float number)
{
    if (std::isfinite(number))
        return {{tag, static_cast<double>(number)}};
    return {{tag, std::to_string(std::bit_cast<Bits>(number))}};
}

template <class Integer> Integer integerText(const Json& form)
{
    if (!form.is_string())
        throw ProtocolError("a number is not written as text");
    const auto& text = form.get_ref<const std::string&>();
    Integer number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        throw ProtocolError("a number written as text cannot be read");
    return number;
}

template <class Float, class Bits> Float decodeFloat(const Json& form)
{
    if (form.is_number())
        return static_cast<Float>(form.get<double>());
    return std::bit_cast<Float>(integerText<Bits>(form));
}

Json encodeArray(const ValueArray& array, ObjectCodec& objects)
{
    Json bounds = Json::array();
    for (const auto& bound : array.bounds)
        bounds.push_back({bound.lower, bound.count});
    Json items = Json::array();
    for (const Value& element : array.elements)
        items.push_back(encodeValue(element, objects));
    return {{"array",
        {{"type", static_cast<int>(array.elementType)}, {"bounds", std::move(bounds)}, {"items", std::move(items)}}}};
}

struct Encoder {
    ObjectCodec& objects;

    Json operator()(std::monostate) const { return nullptr; }
    Json operator()(NullValue) const { return {{"null", true}}; }
    Json operator()(std::int16_t v) const { return {{"i2", v}}; }
    Json operator()(std::int32_t v) const { return v; }
    Json operator()(float v) const { return encodeFloat<float, std::uint32_t>("r4", v); }
    Json operator()(double v) const { return encodeFloat<double, std::uint64_t>("r8", v); }
    Json operator()(CurrencyValue v) const { return {{"cy", std::to_string(v.tenThousandths)}}; }
    Json operator()(DateValue v) const { return encodeFloat<double, std::uint64_t>("date", v.days); }
    Json operator()(const Text& v) const { return encodeText(v); }
    Json operator()(const ObjectRef& v) const { return v ? objects.encodeObject(v) : Json{{"obj", 0}}; }
    Json operator()(ErrorValue v) const { return {{"error", v.status}}; }
    Json operator()(BooleanValue v) const
    {
        if (v.bits == 0 || v.bits == -1)
            return v.bits != 0;
        return {{"bool", v.bits}};
    }
    Json operator()(std::uint8_t v) const { return {{"ui1", v}}; }
    Json operator()(std::int64_t v) const { return {{"i8", std::to_string(v)}}; }
    Json operator()(const ArrayRef& v) const
    {
        if (!v)
            return {{"noarray", true}};
        return encodeArray(*v, objects);
    }
};

Value decode(const Json& form, ObjectCodec& objects, int depth);

ArrayRef decodeArray(const Json& form, ObjectCodec& objects, int depth)
{
    auto array = std::make_shared<ValueArray>();
    array->elementType = static_cast<ValueType>(integer<std::uint16_t>(member(form, "type")));
    std::uint64_t expected = 1;
    for (const Json& bound : member(form, "bounds")) {
        if (!bound.is_array() || bound.size() != 2)
            throw ProtocolError("an array's bounds cannot be read");
        array->bounds.push_back({integer<std::int32_t>(bound[0]), integer<std::uint32_t>(bound[1])});
        if (__builtin_mul_overflow(expected, array->bounds.back().count, &expected))
            throw ProtocolError("an array's bounds are out of range");
    }
    const Json& items = member(form, "items");
    if (!items.is_array() || items.size() != (array->bounds.empty() ? 0 : expected))
        throw ProtocolError("an array's elements do not fit its bounds");
    array->elements.reserve(items.size());
    for (const Json& item : items)
        array->elements.push_back(decode(item, objects, depth + 1));
    return array;
}

using TaggedDecoder = Value (*)(const Json&, ObjectCodec&, int);

constexpr std::pair<const char*, TaggedDecoder> taggedDecoders[] = {
    {"r8", [](const Json& v, ObjectCodec&, int) { return Value(decodeFloat<double, std::uint64_t>(v)); }},
    {"i2", [](const Json& v, ObjectCodec&, int) { return Value(integer<std::int16_t>(v)); }},
    {"null", [](const Json&, ObjectCodec&, int) { return Value(NullValue{}); }},
    {"r4", [](const Json& v, ObjectCodec&, int) { return Value(decodeFloat<float, std::uint32_t>(v)); }},
    {"cy", [](const Json& v, ObjectCodec&, int) { return Value(CurrencyValue{integerText<std::int64_t>(v)}); }},
    {"date", [](const Json& v, ObjectCodec&, int) { return Value(DateValue{decodeFloat<double, std::uint64_t>(v)}); }},
    {"error", [](const Json& v, ObjectCodec&, int) { return Value(ErrorValue{integer<std::int32_t>(v)}); }},
    {"bool", [](const Json& v, ObjectCodec&, int) { return Value(BooleanValue{integer<std::int16_t>(v)}); }},
    {"ui1", [](const Json& v, ObjectCodec&, int) { return Value(integer<std::uint8_t>(v)); }},
    {"i8", [](const Json& v, ObjectCodec&, int) { return Value(integerText<std::int64_t>(v)); }},
    {"array", [](const Json& v, ObjectCodec& o, int depth) { return Value(decodeArray(v, o, depth)); }},
    {"noarray", [](const Json&, ObjectCodec&, int) { return Value(ArrayRef()); }},
};

Value decode(const Json& form, ObjectCodec& objects, int depth)
{
    if (depth > maximumDepth)
        throw ProtocolError("a value is nested too deep");
    if (form.is_null())
        return {};
    if (form.is_boolean())
        return form.get<bool>();
    if (form.is_number())
        return integer<std::int32_t>(form);
    if (form.is_string() || form.contains("str"))
        return decodeText(form);
    if (const auto object = form.find("obj"); object != form.end())
        return *object == 0 ? ObjectRef() : objects.decodeObject(form);
    for (const auto& [tag, decoder] : taggedDecoders)
        if (const auto found = form.find(tag); found != form.end())
            return decoder(*found, objects, depth);
    throw ProtocolError("a value of an unknown type");
}

} // namespace

Json encodeText(TextView text)
{
    if (isWellFormed(text))
        return toUtf8(text);
    Json units = Json::array();
    for (const char16_t unit : text)
        units.push_back(static_cast<int>(unit));
    return {{"str", std::move(units)}};
}

Text decodeText(const Json& form)
{
    if (form.is_string())
        return toText(form.get_ref<const std::string&>());
    Text text;
    for (const Json& unit : member(form, "str"))
        text.push_back(static_cast<char16_t>(integer<std::uint16_t>(unit)));
    return text;
}

Json encodeValue(const Value& value, ObjectCodec& objects) { return std::visit(Encoder{objects}, value.storage()); }

Value decodeValue(const Json& form, ObjectCodec& objects) { return decode(form, objects, 0); }

const Json& member(const Json& parent, const char* name)
{
    if (parent.is_object())
        if (const auto found = parent.find(name); found != parent.end())
            return *found;
    throw ProtocolError(std::string("the field '") + name + "' is missing");
}

template <class Integer> Integer integer(const Json& form)
{
    if (form.is_number_unsigned() && std::in_range<Integer>(form.get<std::uint64_t>()))
        return static_cast<Integer>(form.get<std::uint64_t>());
    if (form.is_number_integer() && !form.is_number_unsigned() && std::in_range<Integer>(form.get<std::int64_t>()))
        return static_cast<Integer>(form.get<std::int64_t>());
    throw ProtocolError("a number is missing or out of its range");
}

template std::uint8_t integer(const Json& form);
template std::int16_t integer(const Json& form);
template std::uint16_t integer(const Json& form);
template std::int32_t integer(const Json& form);
template std::uint32_t integer(const Json& form);
template std::uint64_t integer(const Json& form);

} // namespace zn::automation
