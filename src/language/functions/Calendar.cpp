#include "language/functions/Calendar.h"

#include "language/values/Errors.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

namespace zn::language {

namespace {

struct NamedInterval {
    TextView name;
    Interval interval;
};

constexpr auto intervals = std::to_array<NamedInterval>({
    {u"yyyy", Interval::Year},
    {u"q", Interval::Quarter},
    {u"m", Interval::Month},
    {u"y", Interval::DayOfYear},
    {u"d", Interval::Day},
    {u"w", Interval::Weekday},
    {u"ww", Interval::Week},
    {u"h", Interval::Hour},
    {u"n", Interval::Minute},
    {u"s", Interval::Second},
});

constexpr TextView months[] = {u"January", u"February", u"March", u"April", u"May", u"June", u"July", u"August",
    u"September", u"October", u"November", u"December"};
constexpr TextView weekdays[] = {u"Sunday", u"Monday", u"Tuesday", u"Wednesday", u"Thursday", u"Friday", u"Saturday"};

/// Whole seconds, so that a fraction of a day that isn't exact falls to the right second.
double secondsOf(double days) { return std::round(days * 86400.0); }

int daysInMonth(int year, int month)
{
    const auto last = std::chrono::year(year) / month / std::chrono::last;
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

double addedMonths(double days, double count)
{
    const CalendarTime time = calendarOf(days);
    const auto index = static_cast<int>(time.year * 12 + time.month - 1 + std::trunc(count));
    const int year = index / 12;
    const int month = index % 12 + 1;
    const int day = std::min(time.day, daysInMonth(year, month)); // 31 January and a month is the last of February
    return normalizedDate(year, month, day) + (days - std::trunc(days));
}

} // namespace

bool readInterval(TextView text, Interval& interval)
{
    const auto hit = std::ranges::find_if(intervals, [&](const auto& i) { return equalNoCase(i.name, text); });
    if (hit == intervals.end())
        return false;
    interval = hit->interval;
    return true;
}

CalendarTime calendarOf(double days)
{
    CalendarTime time;
    if (!breakDown(days, time))
        raise(error::invalidCall);
    return time;
}

int weekdayOf(double days, int firstDay)
{
    constexpr std::chrono::sys_days dayZero = std::chrono::year(1899) / 12 / 30;
    const std::chrono::weekday weekday = dayZero + std::chrono::days(static_cast<std::int64_t>(std::floor(days)));
    const auto fromSunday = static_cast<int>(weekday.c_encoding());
    return (fromSunday - std::max(firstDay, 1) + 8) % 7 + 1;
}

double normalizedDate(int year, int month, int day)
{
    const int index = year * 12 + month - 1;
    if (index < 100 * 12 || index >= 10001 * 12)
        raise(error::invalidCall);
    CalendarTime first;
    first.year = index / 12;
    first.month = index % 12 + 1;
    first.day = 1;
    return dayCount(first) + day - 1;
}

double addedInterval(Interval interval, double count, double days)
{
    const double whole = std::trunc(count);
    switch (interval) {
    case Interval::Year:
        return addedMonths(days, whole * 12);
    case Interval::Quarter:
        return addedMonths(days, whole * 3);
    case Interval::Month:
        return addedMonths(days, whole);
    case Interval::DayOfYear:
    case Interval::Day:
    case Interval::Weekday:
        return days + whole;
    case Interval::Week:
        return days + whole * 7;
    case Interval::Hour:
        return secondsOf(days + whole / 24) / 86400.0;
    case Interval::Minute:
        return secondsOf(days + whole / 1440) / 86400.0;
    default:
        return secondsOf(days + whole / 86400) / 86400.0;
    }
}

double countedIntervals(Interval interval, double from, double to, int firstDay)
{
    const CalendarTime a = calendarOf(from);
    const CalendarTime b = calendarOf(to);
    switch (interval) {
    case Interval::Year:
        return b.year - a.year;
    case Interval::Quarter: {
        const int quarters = (b.year - a.year) * 4 + (b.month - 1) / 3 - (a.month - 1) / 3;
        return quarters;
    }
    case Interval::Month:
        return (b.year - a.year) * 12 + b.month - a.month;
    case Interval::DayOfYear:
    case Interval::Day:
        return std::floor(to) - std::floor(from);
    case Interval::Weekday:
        return std::trunc((std::floor(to) - std::floor(from)) / 7);
    case Interval::Week: {
        const double firstWeek = std::floor(from) - weekdayOf(from, firstDay);
        return (std::floor(to) - weekdayOf(to, firstDay) - firstWeek) / 7;
    }
    case Interval::Hour:
        return std::floor(secondsOf(to) / 3600) - std::floor(secondsOf(from) / 3600);
    case Interval::Minute:
        return std::floor(secondsOf(to) / 60) - std::floor(secondsOf(from) / 60);
    default:
        return secondsOf(to) - secondsOf(from);
    }
}

int dayOfYear(double days)
{
    return static_cast<int>(std::floor(days) - normalizedDate(calendarOf(days).year, 1, 1)) + 1;
}

namespace {

/// The first day of the year's first week: the week of 1 January, the first with four days, or the first whole one.
double firstWeekOf(int year, int firstDay, int firstWeek)
{
    const double newYear = normalizedDate(year, 1, 1);
    const int weekday = weekdayOf(newYear, firstDay);
    const double weekStart = newYear - weekday + 1;
    const bool belongs = firstWeek == 2 ? weekday <= 4 : firstWeek == 3 ? weekday == 1 : true;
    return belongs ? weekStart : weekStart + 7;
}

} // namespace

int weekOfYear(double days, int firstDay, int firstWeek)
{
    const int year = calendarOf(days).year;
    double start = firstWeekOf(year, firstDay, firstWeek);
    if (std::floor(days) < start)
        start = firstWeekOf(year - 1, firstDay, firstWeek);
    else if (firstWeek > 1 && std::floor(days) >= firstWeekOf(year + 1, firstDay, firstWeek))
        start = firstWeekOf(year + 1, firstDay, firstWeek);
    return static_cast<int>((std::floor(days) - start) / 7) + 1;
}

int intervalPart(Interval interval, double days, int firstDay, int firstWeek)
{
    const CalendarTime time = calendarOf(days);
    switch (interval) {
    case Interval::Year:
        return time.year;
    case Interval::Quarter:
        return (time.month - 1) / 3 + 1;
    case Interval::Month:
        return time.month;
    case Interval::DayOfYear:
        return dayOfYear(days);
    case Interval::Day:
        return time.day;
    case Interval::Weekday:
        return weekdayOf(days, firstDay);
    case Interval::Week:
        return weekOfYear(days, firstDay, firstWeek);
    case Interval::Hour:
        return time.hour;
    case Interval::Minute:
        return time.minute;
    default:
        return time.second;
    }
}

Text nameOfMonth(int month, bool shortForm)
{
    const TextView name = months[static_cast<std::size_t>(month - 1)];
    return Text(shortForm ? name.substr(0, 3) : name);
}

Text nameOfWeekday(int day, bool shortForm)
{
    const TextView name = weekdays[static_cast<std::size_t>(day - 1)];
    return Text(shortForm ? name.substr(0, 3) : name);
}

} // namespace zn::language
