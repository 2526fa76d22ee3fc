#include "base/Durations.h"

#include <charconv>

namespace zn {

namespace {

struct Unit {
    const char* letter;
    const char16_t* name;
    std::int32_t seconds;
};

constexpr Unit units[] = {{"h", u"hour", 3600}, {"m", u"minute", 60}, {"s", u"second", 1}};
constexpr std::int64_t longest = std::int64_t{30} * 24 * 3600;

} // namespace

Text durationText(std::int32_t seconds)
{
    const Unit* unit = units;
    while (unit->seconds > 1 && (seconds == 0 || seconds % unit->seconds != 0))
        ++unit;
    const std::int32_t count = seconds / unit->seconds;
    return numberText(count) + u" " + unit->name + (count == 1 ? u"" : u"s");
}

std::optional<std::int32_t> durationOf(TextView text)
{
    const std::string written = toUtf8(foldCase(trim(text)));
    std::int32_t count = 0;
    const char* const end = written.data() + written.size();
    const auto [behind, error] = std::from_chars(written.data(), end, count);
    if (error != std::errc() || count < 0)
        return {};
    const Text unitText(trim(toText(std::string(behind, end))));
    if (unitText.empty() && count == 0)
        return 0;
    for (const Unit& unit : units)
        if (equalNoCase(unitText, toText(unit.letter)) && std::int64_t{count} * unit.seconds <= longest)
            return count * unit.seconds;
    return {};
}

} // namespace zn
