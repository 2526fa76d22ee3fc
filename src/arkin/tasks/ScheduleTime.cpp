#include "arkin/tasks/ScheduleTime.h"

#include "base/Status.h"

#include <charconv>
#include <cstdlib>
#include <date/tz.h>
#include <filesystem>
#include <fmt/format.h>
#include <sstream>

// The library is that which the C++ standard took over: the compiler's own doesn't have zones yet.

namespace zn::arkin {

namespace {

constexpr const char* dayNames[] = {"sun", "mon", "tue", "wed", "thu", "fri", "sat"};

std::optional<std::int32_t> numberUpTo(std::string_view text, std::int32_t most)
{
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc() || end != text.data() + text.size() || number < 0 || number > most)
        return {};
    return number;
}

const date::time_zone& zoneOf(const std::string& name)
{
    try {
        return *date::locate_zone(name);
    } catch (const std::runtime_error&) {
        throw zn::StatusError(zn::E_INVALIDARG,
            "This machine knows no time zone '" + name
                + "': name one such as Europe/Berlin or UTC, and see that its package tzdata is installed.");
    }
}

date::sys_seconds momentOf(const date::time_zone& zone, date::local_seconds wanted)
{
    const auto found = zone.get_info(wanted);
    if (found.result == date::local_info::nonexistent)
        return found.first.end;
    return date::sys_seconds(wanted.time_since_epoch() - found.first.offset);
}

} // namespace

std::optional<std::int32_t> minuteOfDay(const std::string& text)
{
    const auto colon = text.find(':');
    if (colon > 2 || text.size() != colon + 3)
        return {};
    const auto hour = numberUpTo(std::string_view(text).substr(0, colon), 23);
    const auto minute = numberUpTo(std::string_view(text).substr(colon + 1), 59);
    if (!hour || !minute)
        return {};
    return *hour * 60 + *minute;
}

std::optional<std::int32_t> daysOfWeek(const std::string& text)
{
    std::int32_t days = 0;
    std::istringstream words(text);
    for (std::string word; std::getline(words, word, ',');) {
        const auto* const found = std::find(std::begin(dayNames), std::end(dayNames), word);
        if (found == std::end(dayNames))
            return {};
        days |= 1 << (found - std::begin(dayNames));
    }
    return days == 0 ? std::nullopt : std::optional(days);
}

std::string scheduleText(const ScheduleTime& time)
{
    std::string days;
    // A week begins with Monday.
    for (int i = 1; i <= 7; ++i) {
        if (time.days >> (i % 7) & 1)
            days += (days.empty() ? "" : ",") + std::string(dayNames[i % 7]);
    }
    if (time.days == ScheduleTime::everyDay)
        days = "daily";
    return fmt::format("{} {:02}:{:02} {}", days, time.minute / 60, time.minute % 60, time.zone);
}

std::int64_t nextTime(const ScheduleTime& time, std::int64_t after)
{
    const auto& zone = zoneOf(time.zone);
    const auto today = date::floor<date::days>(zone.to_local(date::sys_seconds(std::chrono::seconds(after))));
    // A time that the day before skips may lie in this day.
    for (auto day = today - date::days(1);; day += date::days(1)) {
        if (!(time.days >> date::weekday(day).c_encoding() & 1))
            continue;
        const auto moment = momentOf(zone, day + std::chrono::minutes(time.minute)).time_since_epoch().count();
        if (moment > after)
            return moment;
    }
}

std::string zoneHere()
{
    const char* variable = std::getenv("TZ");
    std::string name = variable ? variable : "";
    if (name.starts_with(':'))
        name.erase(0, 1);
    // What a C library takes where nothing says anything.
    if (variable ? name.empty() : !std::filesystem::exists("/etc/localtime"))
        name = "UTC";
    return name.empty() ? date::current_zone()->name() : zoneOf(name).name();
}

} // namespace zn::arkin
