#include "platform/Registry.h"

namespace zn {

namespace {

std::vector<std::uint8_t> textBytes(TextView text, bool terminated)
{
    std::vector<std::uint8_t> bytes;
    bytes.reserve(2 * text.size() + 2);
    const auto append = [&bytes](char16_t unit) {
        bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
    };
    for (const char16_t unit : text)
        append(unit);
    if (terminated)
        append(0);
    return bytes;
}

} // namespace

RegistryValue RegistryValue::number(std::int32_t value)
{
    const auto bits = static_cast<std::uint32_t>(value);
    RegistryValue result;
    result.type = RegistryType::Number;
    for (unsigned shift = 0; shift < 32; shift += 8)
        result.bytes.push_back(static_cast<std::uint8_t>(bits >> shift & 0xFF));
    return result;
}

RegistryValue RegistryValue::text(TextView value, RegistryType type, bool terminated)
{
    return {type, textBytes(value, terminated)};
}

std::optional<std::int32_t> RegistryValue::asNumber() const
{
    if (bytes.size() != 4)
        return std::nullopt;
    std::uint32_t bits = 0;
    for (std::size_t i = 4; i-- > 0;)
        bits = bits << 8 | bytes[i];
    if (type == RegistryType::NumberBigEndian)
        bits = bits << 16 | bits >> 16;
    return static_cast<std::int32_t>(bits);
}

std::optional<Text> RegistryValue::asText() const
{
    if (type != RegistryType::String && type != RegistryType::ExpandString)
        return std::nullopt;
    if (bytes.size() < 2 || bytes.size() % 2 != 0)
        return std::nullopt;
    Text text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); i += 2)
        text.push_back(static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8));
    if (text.back() != 0)
        return std::nullopt;
    text.resize(text.find(u'\0'));
    return text;
}

} // namespace zn
