#include "language/values/Conversions.h"

#include "language/values/NumberTexts.h"
#include "language/values/Record.h"

namespace zn::language {

namespace {

constexpr Status parameterNotFound = statusCode(0x80020004);

Value changed(const Value& value, ValueType type)
{
    try {
        return value.changedTo(type);
    } catch (const StatusError& failure) {
        throw errorOfStatus(StatusError(failure.status())); // the language's own words, not the converter's
    }
}

/// Digits grouped by commas read as a number too ("1,250.50").
bool withoutGrouping(const Text& text, double& number)
{
    Text digits = text;
    replaceAll(digits, u",", u"");
    const bool grouped = digits.size() < text.size() && trim(text).front() != u',';
    return grouped && parseNumber(digits, number);
}

Value coerceText(const Text& text, ValueType type)
{
    std::int64_t whole = 0;
    if (type != ValueType::Date && readRadixNumber(text, whole))
        return changed(Value(whole), type);
    if (type == ValueType::Int64 && readWholeNumber(text, whole))
        return whole;
    if (type == ValueType::Currency && readTenThousandths(text, whole))
        return CurrencyValue{whole};
    double number = 0;
    if (type != ValueType::Date && withoutGrouping(text, number))
        return changed(Value(number), type);
    return changed(Value(text), type);
}

/// A byte array holds the bytes of a text's units, the lower one first; an odd last byte is a unit of its own.
Text textOfByteArray(const ValueArray& array)
{
    Text text((array.elements.size() + 1) / 2, u'\0');
    for (std::size_t i = 0; i < array.elements.size(); ++i) {
        const unsigned byte = *array.elements[i].get<std::uint8_t>();
        text[i / 2] = static_cast<char16_t>(text[i / 2] | byte << (i % 2 * 8));
    }
    return text;
}

std::u16string_view scalarName(ValueType type)
{
    switch (type) {
    case ValueType::Empty:
        return u"Empty";
    case ValueType::Null:
        return u"Null";
    case ValueType::Int16:
        return u"Integer";
    case ValueType::Int32:
        return u"Long";
    case ValueType::Float32:
        return u"Single";
    case ValueType::Float64:
        return u"Double";
    case ValueType::Currency:
        return u"Currency";
    case ValueType::Date:
        return u"Date";
    case ValueType::String:
        return u"String";
    case ValueType::Dispatch:
        return u"Object";
    case ValueType::Error:
        return u"Error";
    case ValueType::Boolean:
        return u"Boolean";
    case ValueType::UInt8:
        return u"Byte";
    case ValueType::Int64:
        return u"LongLong";
    default:
        return u"Variant";
    }
}

} // namespace

Value plainValue(const Value& value)
{
    const auto* held = value.get<ObjectRef>();
    if (!held)
        return value;
    if (!*held)
        raise(error::objectNotSet);
    const DispatchRef object = query<DispatchObject>(*held);
    if (!object)
        raise(error::typeMismatch);
    try {
        Value result = object->call({});
        if (isObject(result))
            raise(error::typeMismatch);
        return result;
    } catch (const StatusError& failure) {
        throw errorOfStatus(failure);
    }
}

Value coerce(const Value& value, ValueType type)
{
    const ValueType from = value.type();
    if (type == from || type == ValueType::Variant)
        return value;
    if (type == ValueType::Dispatch)
        raise(error::objectRequired);
    if (value.isArray()) {
        const auto* array = value.get<ArrayRef>();
        if (type == ValueType::String && array && *array && (*array)->elementType == ValueType::UInt8)
            return textOfByteArray(**array);
        raise(error::typeMismatch);
    }
    if (from == ValueType::Dispatch)
        return coerce(plainValue(value), type);
    if (from == ValueType::Null)
        raise(error::invalidNull);
    if (type == ValueType::String && from == ValueType::Boolean)
        return Text(value.get<BooleanValue>()->bits ? u"True" : u"False");
    if (type == ValueType::String && from == ValueType::Currency)
        return textOfTenThousandths(value.get<CurrencyValue>()->tenThousandths);
    if (type == ValueType::UInt8 && from == ValueType::Boolean)
        return std::uint8_t(value.get<BooleanValue>()->bits ? 255 : 0);
    if (from == ValueType::String && type != ValueType::String)
        return coerceText(*value.get<Text>(), type);
    return changed(value, type);
}

Text textOf(const Value& value)
{
    if (const auto* text = value.get<Text>())
        return *text;
    return *coerce(value, ValueType::String).get<Text>();
}

TextView viewOf(const Value& value, Text& scratch)
{
    if (const auto* text = value.get<Text>())
        return *text;
    scratch = textOf(value);
    return scratch;
}

double numberOf(const Value& value)
{
    if (const auto* number = value.get<double>())
        return *number;
    return *coerce(value, ValueType::Float64).get<double>();
}

std::int32_t longOf(const Value& value)
{
    if (const auto* number = value.get<std::int32_t>())
        return *number;
    if (const auto* number = value.get<std::int16_t>())
        return *number;
    return *coerce(value, ValueType::Int32).get<std::int32_t>();
}

bool truthOf(const Value& value)
{
    if (const auto* flag = value.get<BooleanValue>())
        return flag->bits != 0;
    if (isNull(value))
        return false; // a condition that isn't known is not met
    return coerce(value, ValueType::Boolean).get<BooleanValue>()->bits != 0;
}

DispatchRef objectOf(const Value& value)
{
    const auto* held = value.get<ObjectRef>();
    if (!held)
        raise(error::objectRequired);
    if (!*held)
        return nullptr;
    DispatchRef object = query<DispatchObject>(*held);
    if (!object)
        raise(error::objectRequired);
    return object;
}

Value defaultValue(ValueType type)
{
    switch (type) {
    case ValueType::Variant:
        return {};
    case ValueType::Dispatch:
        return ObjectRef();
    default:
        return coerce(Value(), type);
    }
}

bool isNumeric(const Value& value)
{
    switch (value.type()) {
    case ValueType::Empty:
    case ValueType::Int16:
    case ValueType::Int32:
    case ValueType::Int64:
    case ValueType::UInt8:
    case ValueType::Float32:
    case ValueType::Float64:
    case ValueType::Currency:
    case ValueType::Boolean:
        return true;
    case ValueType::String: {
        double number = 0;
        std::int64_t whole = 0;
        const Text& text = *value.get<Text>();
        return readRadixNumber(text, whole) || parseNumber(text, number)
            || (!trim(text).empty() && withoutGrouping(text, number));
    }
    default:
        return false;
    }
}

Text typeNameOf(const Value& value)
{
    if (const auto* array = value.get<ArrayRef>())
        return Text(scalarName(*array ? (*array)->elementType : ValueType::Variant)) + u"()";
    if (const auto* held = value.get<ObjectRef>()) {
        if (!*held)
            return u"Nothing";
        if (const auto record = query<Record>(*held))
            return record->typeName;
        const DispatchRef object = query<DispatchObject>(*held);
        return object ? object->typeName() : Text(u"Object");
    }
    return Text(scalarName(value.type()));
}

std::size_t elementIndex(const ValueArray& array, std::span<const std::int32_t> subscripts)
{
    if (subscripts.size() != array.bounds.size())
        raise(error::subscript);
    std::size_t index = 0;
    std::size_t stride = 1;
    for (std::size_t i = 0; i < subscripts.size(); ++i) {
        const auto& bound = array.bounds[i];
        const std::int64_t offset = std::int64_t(subscripts[i]) - bound.lower;
        if (offset < 0 || offset >= std::int64_t(bound.count))
            raise(error::subscript);
        index += static_cast<std::size_t>(offset) * stride;
        stride *= bound.count;
    }
    return index;
}

Value missingArgument() { return ErrorValue{parameterNotFound}; }

bool isMissingArgument(const Value& value)
{
    const auto* marker = value.get<ErrorValue>();
    return marker && marker->status == parameterNotFound;
}

} // namespace zn::language
