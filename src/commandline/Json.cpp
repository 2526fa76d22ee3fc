#include "commandline/Json.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace zn::commandline {

/// Hands a value over to the JSON library.
struct JsonWriter {
    using Out = nlohmann::ordered_json;

    Out operator()(const Json::Integer& number) const { return number.value; }
    Out operator()(const Json::Array& array) const
    {
        auto out = Out::array();
        for (const auto& value : array)
            out.push_back(std::visit(*this, value.m_value));
        return out;
    }
    Out operator()(const Json::Object& object) const
    {
        auto out = Out::object();
        for (const auto& [name, value] : object)
            out[name] = std::visit(*this, value.m_value);
        return out;
    }
    template <class Plain> Out operator()(const Plain& value) const { return value; }

    static Out of(const Json& json) { return std::visit(JsonWriter(), json.m_value); }
};

Json::Json(std::nullptr_t) { }

Json::Json(bool value)
    : m_value(value)
{
}

Json::Json(double value)
    : m_value(value)
{
}

Json::Json(std::string value)
    : m_value(std::move(value))
{
}

Json::Json(const char* value)
    : m_value(std::string(value))
{
}

Json::Json(Integer value)
    : m_value(value)
{
}

Json::Json(std::span<const double> numbers)
    : m_value(Array(numbers.begin(), numbers.end()))
{
}

Json::Json(const std::vector<std::string>& texts)
    : m_value(Array(texts.begin(), texts.end()))
{
}

Json::Json(std::initializer_list<Member> members)
    : m_value(Object(members))
{
}

Json::Json(const Json& other) = default;
Json::Json(Json&& other) noexcept = default;
Json& Json::operator=(const Json& other) = default;
Json& Json::operator=(Json&& other) noexcept = default;
Json::~Json() = default;

Json Json::array()
{
    Json json;
    json.m_value = Array();
    return json;
}

Json Json::object()
{
    Json json;
    json.m_value = Object();
    return json;
}

void Json::push_back(Json value)
{
    if (std::holds_alternative<std::nullptr_t>(m_value))
        m_value = Array();
    std::get<Array>(m_value).push_back(std::move(value));
}

Json& Json::operator[](std::string_view name)
{
    if (std::holds_alternative<std::nullptr_t>(m_value))
        m_value = Object();
    auto& members = std::get<Object>(m_value);
    const auto at = std::find_if(members.begin(), members.end(), [&](const Member& one) { return one.name == name; });
    if (at != members.end())
        return at->value;
    members.push_back({std::string(name), nullptr});
    return members.back().value;
}

bool Json::empty() const
{
    const auto* array = std::get_if<Array>(&m_value);
    const auto* object = std::get_if<Object>(&m_value);
    return (array && array->empty()) || (object && object->empty());
}

std::string Json::text() const
{
    return JsonWriter::of(*this).dump(2, ' ', false, JsonWriter::Out::error_handler_t::replace);
}

std::string Json::line() const
{
    return JsonWriter::of(*this).dump(-1, ' ', false, JsonWriter::Out::error_handler_t::replace);
}

} // namespace zn::commandline
