#include "arkin/commands/frame/RegistryKey.h"

#include <fmt/format.h>

namespace zn::arkin {

RegistryKey parseKey(const std::string& text, bool bits32)
{
    const auto whole = zn::toText(text);
    const auto separator = whole.find(u'\\');
    const auto root = whole.substr(0, separator);
    RegistryKey key;
    key.view = bits32 ? zn::RegistryView::Bits32 : zn::RegistryView::Bits64;
    key.key = separator == zn::Text::npos ? zn::Text() : whole.substr(separator + 1);
    if (zn::equalNoCase(root, u"user"))
        key.root = zn::RegistryRoot::User;
    else if (!zn::equalNoCase(root, u"machine"))
        throw zn::StatusError(zn::E_INVALIDARG, "'" + text + "' is no key: it begins with 'machine\\' or 'user\\'.");
    return key;
}

Json jsonOf(const zn::RegistryValue& value)
{
    if (value.type == zn::RegistryType::Number || value.type == zn::RegistryType::NumberBigEndian)
        if (const auto number = value.asNumber())
            return *number;
    return shownOf(value);
}

std::string shownOf(const zn::RegistryValue& value)
{
    if (const auto text = value.asText())
        return zn::toUtf8(*text);
    if (value.type == zn::RegistryType::Number || value.type == zn::RegistryType::NumberBigEndian)
        if (const auto number = value.asNumber())
            return std::to_string(*number);
    return fmt::format("{:02x}", fmt::join(value.bytes, " "));
}

} // namespace zn::arkin
