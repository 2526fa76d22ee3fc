#include "language/values/NumberTexts.h"

#include <charconv>
#include <cstdlib>
#include <limits>
#include <string>

namespace zn::language {

namespace {

struct DecimalText {
    std::string whole; ///< with a "-" before it if the number is below zero
    std::string decimals;
};

/// A sign, digits with commas between them, and a point with further digits; no exponent.
bool readDecimalText(TextView given, DecimalText& out)
{
    const Text trimmed = trim(Text(given));
    TextView text = trimmed;
    const bool minus = !text.empty() && text.front() == u'-';
    if (!text.empty() && (minus || text.front() == u'+'))
        text.remove_prefix(1);
    bool behindPoint = false;
    bool hasDigits = false;
    for (const char16_t unit : text) {
        if (unit >= u'0' && unit <= u'9') {
            (behindPoint ? out.decimals : out.whole).push_back(static_cast<char>(unit));
            hasDigits = true;
        } else if (unit == u'.' && !behindPoint) {
            behindPoint = true;
        } else if (unit != u',' || behindPoint || out.whole.empty()) {
            return false;
        }
    }
    if (minus)
        out.whole.insert(0, 1, '-');
    return hasDigits;
}

bool readDigits(const std::string& digits, std::int64_t& number)
{
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return failure == std::errc() && end == digits.data() + digits.size();
}

} // namespace

bool readRadixNumber(TextView given, std::int64_t& number)
{
    const Text text = trim(Text(given));
    if (text.size() < 2 || text.front() != u'&')
        return false;
    const char16_t mark = text[1] | 0x20;
    const int base = mark == u'h' ? 16 : 8;
    std::string digits = toUtf8(text.substr(mark == u'h' || mark == u'o' ? 2 : 1));
    char width = 0;
    if (!digits.empty() && std::string_view("%&^").find(digits.back()) != std::string_view::npos) {
        width = digits.back();
        digits.pop_back();
    }
    std::uint64_t bits = 0;
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), bits, base);
    if (failure != std::errc() || end != digits.data() + digits.size())
        return false;
    constexpr std::uint64_t shortest = std::numeric_limits<std::uint16_t>::max();
    constexpr std::uint64_t middle = std::numeric_limits<std::uint32_t>::max();
    if ((width == '%' && bits > shortest) || (width == '&' && bits > middle))
        return false;
    if (width == '^' || bits > middle)
        number = static_cast<std::int64_t>(bits);
    else if (width == '&' || bits > shortest)
        number = static_cast<std::int32_t>(bits);
    else
        number = static_cast<std::int16_t>(bits);
    return true;
}

bool readWholeNumber(TextView text, std::int64_t& number)
{
    DecimalText parts;
    return readDecimalText(text, parts) && parts.decimals.empty() && readDigits(parts.whole, number);
}

bool readTenThousandths(TextView text, std::int64_t& number)
{
    constexpr std::size_t kept = 4;
    DecimalText parts;
    if (!readDecimalText(text, parts))
        return false;
    std::string beyond = parts.decimals.size() > kept ? parts.decimals.substr(kept) : "";
    parts.decimals.resize(kept, '0');
    if (!readDigits(parts.whole + parts.decimals, number))
        return false;
    beyond.erase(beyond.find_last_not_of('0') + 1);
    const bool up = beyond > "5" || (beyond == "5" && number % 2 != 0);
    if (!up)
        return true;
    return !__builtin_add_overflow(number, parts.whole.starts_with('-') ? -1 : 1, &number);
}

Text textOfTenThousandths(std::int64_t number)
{
    constexpr std::int64_t scale = 10000;
    std::string decimals = std::to_string(scale + std::abs(number % scale)).substr(1);
    decimals.erase(decimals.find_last_not_of('0') + 1);
    std::string out = std::to_string(std::abs(number / scale));
    if (!decimals.empty())
        out += "." + decimals;
    return toText(number < 0 ? "-" + out : out);
}

} // namespace zn::language
