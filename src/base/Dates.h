#pragma once

#include "base/Text.h"

#include <cstdint>

namespace zn {

/// A moment's calendar fields. `month` is 1 to 12, `hour` 0 to 23.
struct CalendarTime {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// Breaks a day count (days since 30 December 1899, local time) down, rounded to whole seconds.
/// False outside the years 100 to 9999; `time` is then untouched.
bool breakDown(double days, CalendarTime& time);
/// The day count of calendar fields (proleptic Gregorian).
double dayCount(const CalendarTime& time);
/// Local day count of a Unix time in seconds.
double dayCountFromUnix(std::int64_t seconds);

/// The platform's conversion of a date to text in the user's default locale: date and time,
/// without the part that is zero ("3/5/2018 2:07:09 PM", "3/5/2018", "2:07:09 PM").
Text dateText(double days);
/// Reads a date, a time or both: ISO forms, the forms that `dateText` writes, and what people write (`readDateText`).
/// False if it isn't one.
bool parseDate(TextView text, double& days);

} // namespace zn
