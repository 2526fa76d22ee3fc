#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace zn::arkin {

/// A time of the day that comes again, on the clocks of a place.
struct ScheduleTime {
    static constexpr std::int32_t everyDay = 0x7F;

    std::int32_t minute = 0;      ///< of the day, 0 to 1439
    std::int32_t days = everyDay; ///< a bit for each day of the week, Sunday's the lowest
    std::string zone;             ///< such as "Europe/Berlin"
    bool operator==(const ScheduleTime&) const = default;
};

/// "22:00": minutes of the day. None for anything else.
std::optional<std::int32_t> minuteOfDay(const std::string& text);
/// "mon,thu": bits of `ScheduleTime::days`. None for anything else.
std::optional<std::int32_t> daysOfWeek(const std::string& text);
/// "daily 22:00 Europe/Berlin", "mon,thu 22:00 Europe/Berlin".
std::string scheduleText(const ScheduleTime& time);

/// The first time after `after`, in Unix seconds. Once for each chosen day of the calendar: when clocks skip the time
/// of day, the first moment behind the gap, and the first of the two when they show it twice. Raises `StatusError`
/// E_INVALIDARG with a sentence for a zone that this machine doesn't know.
std::int64_t nextTime(const ScheduleTime& time, std::int64_t after);

/// Name of the zone of this process: that of the variable TZ, else the machine's. Raises like `nextTime`.
std::string zoneHere();

} // namespace zn::arkin
