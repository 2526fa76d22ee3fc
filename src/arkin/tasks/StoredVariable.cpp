#include "arkin/tasks/StoredVariable.h"

#include "arkin/store/Codes.h"

#include <charconv>

namespace zn::arkin {

using zn::Value;
using zn::ValueType;

namespace {

template <class Number> Number numberOf(const std::string& text)
{
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// The shortest text that reads back as the same float.
std::string exactText(float number)
{
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number).ptr;
    return {buffer, end};
}

} // namespace

StoredVariable toStoredVariable(const Value& value)
{
    const auto type = static_cast<std::int32_t>(value.type());
    switch (value.type()) {
    case ValueType::Int32:
        return {type, std::to_string(*value.get<std::int32_t>())};
    case ValueType::Boolean:
        return {type, std::to_string(value.get<zn::BooleanValue>()->bits)};
    case ValueType::Float32:
        return {type, exactText(*value.get<float>())};
    default:
        return {static_cast<std::int32_t>(ValueType::String), zn::toUtf8(value.toText())};
    }
}

Value fromStoredVariable(const StoredVariable& stored)
{
    switch (static_cast<ValueType>(stored.type)) {
    case ValueType::Int32:
        return numberOf<std::int32_t>(stored.text);
    case ValueType::Boolean:
        return zn::BooleanValue{numberOf<std::int16_t>(stored.text)};
    case ValueType::Float32:
        return numberOf<float>(stored.text);
    case ValueType::String:
        return zn::toText(stored.text);
    default:
        throw zn::StatusError(
            E_ARK_DATABASE, "The database holds a task variable of the unknown type " + std::to_string(stored.type));
    }
}

} // namespace zn::arkin
