#pragma once

#include "base/Text.h"

namespace zn {

/// How the three numbers of a date without a month's name stand where the first isn't a year of three or four digits.
enum class DateOrder { MonthDayYear, DayMonthYear, YearMonthDay };

/// That of the user's default locale.
DateOrder localDateOrder();

/// Reads a date as people write it, a time, or both in either order: "Jan 5, 2003", "5-Jan-03", "January 2003",
/// "3/5/2018", "2018/3/5", "3/5" (of this year), "2:30 PM", "2 pm", "14:07:09". Names of months are those of the user's
/// default locale and the English ones. Where a month's number is above 12 and the day's isn't, they change places. A
/// year below 30 is of this century's beginning, below 100 of the last one; a month without a day means its first.
/// `days` is a day count (base/Dates.h). False if the text is none of these.
bool readDateText(TextView text, DateOrder order, double& days);

} // namespace zn
