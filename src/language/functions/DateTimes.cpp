#include "base/Dates.h"

#include "language/functions/Calendar.h"
#include "language/functions/Given.h"
#include "language/functions/Intrinsic.h"
#include "language/Host.h"
#include "language/run/RunContext.h"

#include <algorithm>
#include <cmath>

namespace zn::language {

namespace {

double daysOf(const Value& value) { return coerce(value, ValueType::Date).get<DateValue>()->days; }

double wholeSeconds(double days) { return std::floor(days * 86400.0) / 86400.0; }

Value now(RunContext& context, Given) { return DateValue{wholeSeconds(context.host.now())}; }

Value today(RunContext& context, Given) { return DateValue{std::floor(context.host.now())}; }

Value timeOfDay(RunContext& context, Given)
{
    const double days = wholeSeconds(context.host.now());
    return DateValue{days - std::floor(days)};
}

Value secondsToday(RunContext& context, Given)
{
    const double days = context.host.now();
    return static_cast<float>((days - std::floor(days)) * 86400.0);
}

template <int CalendarTime::*Field> Value field(RunContext&, Given a)
{
    if (isNull(a[0]))
        return a[0];
    return std::int16_t(calendarOf(daysOf(a[0])).*Field);
}

Value weekday(RunContext&, Given a)
{
    if (isNull(a[0]))
        return a[0];
    return std::int16_t(weekdayOf(daysOf(a[0]), longAt(a, 1, 1)));
}

Value dateSerial(RunContext&, Given a)
{
    std::int32_t year = longOf(a[0]);
    if (year >= 0 && year < 100)
        year += year < 30 ? 2000 : 1900;
    return DateValue{normalizedDate(year, longOf(a[1]), longOf(a[2]))};
}

Value timeSerial(RunContext&, Given a)
{
    const double seconds = longOf(a[0]) * 3600.0 + longOf(a[1]) * 60.0 + longOf(a[2]);
    return DateValue{seconds / 86400.0};
}

Value dateOnly(RunContext&, Given a) { return DateValue{std::trunc(daysOf(a[0]))}; }

Value timeOnly(RunContext&, Given a)
{
    const double days = daysOf(a[0]);
    return DateValue{std::fabs(days - std::trunc(days))};
}

Interval intervalAt(Given a)
{
    Interval interval;
    if (!readInterval(textOf(a[0]), interval))
        raise(error::invalidCall);
    return interval;
}

Value dateAdd(RunContext&, Given a) { return DateValue{addedInterval(intervalAt(a), numberOf(a[1]), daysOf(a[2]))}; }

Value dateDifference(RunContext&, Given a)
{
    const double count = countedIntervals(intervalAt(a), daysOf(a[1]), daysOf(a[2]), longAt(a, 3, 1));
    return coerce(Value(count), ValueType::Int32);
}

Value datePart(RunContext&, Given a)
{
    return std::int16_t(intervalPart(intervalAt(a), daysOf(a[1]), longAt(a, 2, 1), longAt(a, 3, 1)));
}

Value monthName(RunContext&, Given a)
{
    const std::int32_t month = longOf(a[0]);
    if (month < 1 || month > 12)
        raise(error::invalidCall);
    return nameOfMonth(month, isGiven(a, 1) && truthOf(a[1]));
}

Value weekdayName(RunContext&, Given a)
{
    const std::int32_t day = longOf(a[0]);
    if (day < 1 || day > 7)
        raise(error::invalidCall);
    const std::int32_t first = std::max(1, longAt(a, 2, 1));
    return nameOfWeekday((day + first - 2) % 7 + 1, isGiven(a, 1) && truthOf(a[1]));
}

constexpr ValueType date = ValueType::Date;
constexpr ValueType any = ValueType::Variant;

constexpr Intrinsic functions[] = {
    {u"Now", 0, 0, date, now},
    {u"Date", 0, 0, date, today},
    {u"Time", 0, 0, date, timeOfDay},
    {u"Timer", 0, 0, ValueType::Float32, secondsToday},
    {u"Year", 1, 1, any, field<&CalendarTime::year>},
    {u"Month", 1, 1, any, field<&CalendarTime::month>},
    {u"Day", 1, 1, any, field<&CalendarTime::day>},
    {u"Hour", 1, 1, any, field<&CalendarTime::hour>},
    {u"Minute", 1, 1, any, field<&CalendarTime::minute>},
    {u"Second", 1, 1, any, field<&CalendarTime::second>},
    {u"Weekday", 1, 2, any, weekday, u"Date FirstDayOfWeek"},
    {u"DateSerial", 3, 3, date, dateSerial, u"Year Month Day"},
    {u"TimeSerial", 3, 3, date, timeSerial, u"Hour Minute Second"},
    {u"DateValue", 1, 1, date, dateOnly},
    {u"TimeValue", 1, 1, date, timeOnly},
    {u"DateAdd", 3, 3, date, dateAdd, u"Interval Number Date"},
    {u"DateDiff", 3, 5, ValueType::Int32, dateDifference, u"Interval Date1 Date2 FirstDayOfWeek FirstWeekOfYear"},
    {u"DatePart", 2, 4, ValueType::Int16, datePart, u"Interval Date FirstDayOfWeek FirstWeekOfYear"},
    {u"MonthName", 1, 2, ValueType::String, monthName, u"Month Abbreviate"},
    {u"WeekdayName", 1, 3, ValueType::String, weekdayName, u"Weekday Abbreviate FirstDayOfWeek"},
};

} // namespace

std::span<const Intrinsic> dateFunctions() { return functions; }

} // namespace zn::language
