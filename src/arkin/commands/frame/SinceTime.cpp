#include "arkin/commands/frame/SinceTime.h"

#include "base/Status.h"

#include <charconv>
#include <ctime>
#include <optional>

namespace zn::arkin {

namespace {

constexpr const char* forms[] = {"%Y-%m-%d", "%Y-%m-%d %H:%M", "%Y-%m-%dT%H:%M", "%Y-%m-%d %H:%M:%S"};

/// Of the day so many days ago; days with 23 or 25 hours count as days.
std::int64_t midnight(std::int64_t now, int daysAgo)
{
    const std::time_t time = now;
    std::tm day{};
    localtime_r(&time, &day);
    day.tm_mday -= daysAgo;
    day.tm_hour = day.tm_min = day.tm_sec = 0;
    day.tm_isdst = -1;
    return std::mktime(&day);
}

std::optional<std::int64_t> secondsOf(const std::string& text)
{
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    constexpr std::int64_t most = 36500;
    if (error != std::errc() || number < 0 || number > most || end + 1 != text.data() + text.size())
        return {};
    switch (*end) {
    case 'm':
        return number * 60;
    case 'h':
        return number * 3600;
    case 'd':
        return number * 86400;
    default:
        return {};
    }
}

std::optional<std::int64_t> dateOf(const std::string& text)
{
    for (const char* form : forms) {
        std::tm date{};
        date.tm_isdst = -1;
        const char* end = strptime(text.c_str(), form, &date);
        if (end && *end == 0)
            return std::mktime(&date);
    }
    return {};
}

} // namespace

std::int64_t sinceTime(const std::string& text, std::int64_t now)
{
    if (text == "today")
        return midnight(now, 0);
    if (text == "yesterday")
        return midnight(now, 1);
    if (const auto seconds = secondsOf(text))
        return now - *seconds;
    if (const auto date = dateOf(text))
        return *date;
    throw zn::StatusError(zn::E_INVALIDARG,
        "'" + text
            + "' is no time: give today, yesterday, a time span such as 12h or 7d, or a date such as 2026-11-22 or "
              "'2026-11-22 18:30'.");
}

} // namespace zn::arkin
