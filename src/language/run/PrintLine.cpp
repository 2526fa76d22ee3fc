#include "language/run/PrintLine.h"

#include "base/Dates.h"
#include "language/values/Conversions.h"

#include <cmath>

namespace zn::language {

namespace {

constexpr std::size_t zoneWidth = 14;

Text isoDate(double days)
{
    CalendarTime time;
    if (!breakDown(days, time))
        raise(error::typeMismatch);
    const auto two = [](int number) { return (number < 10 ? u"0" : u"") + numberText(number); };
    const Text date = numberText(time.year) + u"-" + two(time.month) + u"-" + two(time.day);
    Text clock = two(time.hour) + u":" + two(time.minute) + u":" + two(time.second);
    if (std::trunc(days) == 0)
        return clock;
    return days == std::trunc(days) ? date : date + u" " + clock;
}

} // namespace

Text printedValue(const Value& value)
{
    switch (value.type()) {
    case ValueType::Null:
        return u"Null";
    case ValueType::Error:
        return u"Error " + numberText(value.get<ErrorValue>()->status & 0xFFFF);
    case ValueType::Dispatch:
        return printedValue(plainValue(value));
    case ValueType::String:
    case ValueType::Boolean:
    case ValueType::Empty:
    case ValueType::Date:
        return textOf(value);
    default: {
        const Text number = textOf(value);
        return (number.front() == u'-' ? u"" : u" ") + number + u" ";
    }
    }
}

Text writtenValue(const Value& value)
{
    switch (value.type()) {
    case ValueType::Null:
        return u"#NULL#";
    case ValueType::Empty:
        return {};
    case ValueType::Boolean:
        return truthOf(value) ? u"#TRUE#" : u"#FALSE#";
    case ValueType::Date:
        return u"#" + isoDate(value.get<DateValue>()->days) + u"#";
    case ValueType::Error:
        return u"#ERROR " + numberText(value.get<ErrorValue>()->status & 0xFFFF) + u"#";
    case ValueType::String:
        return u"\"" + *value.get<Text>() + u"\"";
    default:
        return textOf(value);
    }
}

Text toNextZone(std::size_t column) { return Text(zoneWidth - column % zoneWidth, u' '); }

Text toColumn(std::size_t column, std::int32_t target)
{
    const std::size_t wanted = target < 1 ? 0 : static_cast<std::size_t>(target) - 1;
    if (column > wanted)
        return u"\r\n" + Text(wanted, u' ');
    return Text(wanted - column, u' ');
}

} // namespace zn::language
