#pragma once

#include "base/Dates.h"
#include "base/Text.h"

namespace zn::language {

// Calculating with dates, days counted from 30 December 1899. Weekdays are 1 to 7 counted from `firstDay`,
// which is 1 for Sunday; 0 counts as 1.

enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

/// "yyyy", "q", "m", "y", "d", "w", "ww", "h", "n", "s".
bool readInterval(TextView text, Interval& interval);

/// Raises 5 for a date outside the years 100 to 9999.
CalendarTime calendarOf(double days);
int weekdayOf(double days, int firstDay);
/// A date whose month and day may lie outside their ranges: the 13th month is January of the next year.
double normalizedDate(int year, int month, int day);
double addedInterval(Interval interval, double count, double days);
/// How many borders of the interval lie between two dates.
double countedIntervals(Interval interval, double from, double to, int firstDay);
int intervalPart(Interval interval, double days, int firstDay, int firstWeek);
int dayOfYear(double days);
int weekOfYear(double days, int firstDay, int firstWeek);

/// English names; macros compare with them.
Text nameOfMonth(int month, bool shortForm);
/// 1 is Sunday.
Text nameOfWeekday(int day, bool shortForm);

} // namespace zn::language
