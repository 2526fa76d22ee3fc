#include "base/Dates.h"

#include "base/DateText.h"

#include <chrono>
#include <cmath>
#include <ctime>
#include <memory>
#include <unicode/datefmt.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

namespace zn {

namespace {

using std::chrono::sys_days;

constexpr sys_days dayZero = std::chrono::year(1899) / 12 / 30;
constexpr std::int64_t unixEpochDays = (sys_days() - dayZero).count();

/// A day beyond the month's end falls into the next month.
std::int64_t civilDays(int year, int month, int day)
{
    const auto wanted = std::chrono::year(year) / month / 1;
    return (sys_days(wanted) - dayZero).count() + day - 1;
}

void civilDate(std::int64_t count, CalendarTime& time)
{
    const std::chrono::year_month_day date = dayZero + std::chrono::days(count);
    time.year = static_cast<int>(date.year());
    time.month = static_cast<int>(static_cast<unsigned>(date.month()));
    time.day = static_cast<int>(static_cast<unsigned>(date.day()));
}

/// The formats of the default locale, in UTC since a day count carries no zone.
class LocaleFormats {
public:
    LocaleFormats()
        : m_date(make("yMd"))
        , m_time(make("jms"))
    {
    }

    const icu::DateFormat& date() const { return *m_date; }
    const icu::DateFormat& time() const { return *m_time; }

private:
    static std::unique_ptr<icu::DateFormat> make(const char* skeleton)
    {
        UErrorCode error = U_ZERO_ERROR;
        std::unique_ptr<icu::DateFormat> format(
            icu::DateFormat::createInstanceForSkeleton(icu::UnicodeString(skeleton), error));
        format->adoptTimeZone(icu::TimeZone::createTimeZone("UTC"));
        format->setLenient(false);
        return format;
    }

    std::unique_ptr<icu::DateFormat> m_date;
    std::unique_ptr<icu::DateFormat> m_time;
};

LocaleFormats& localeFormats()
{
    thread_local LocaleFormats formats;
    return formats;
}

double unixMilliseconds(double days) { return std::round((days - double(unixEpochDays)) * 86400.0) * 1000.0; }

/// The day count that the whole of `text` stands for in `format`.
bool parseLocal(const icu::DateFormat& format, const Text& text, double& days)
{
    for (const char16_t* blank : {u" ", u"\u202F"}) {
        Text candidate = text;
        replaceAll(candidate, u" ", blank);
        const icu::UnicodeString source(candidate.data(), static_cast<int32_t>(candidate.size()));
        icu::ParsePosition position(0);
        const UDate moment = format.parse(source, position);
        if (source.length() > 0 && position.getIndex() == source.length()) {
            days = moment / 86400000.0 + double(unixEpochDays);
            return true;
        }
    }
    return false;
}

bool readNumber(const Text& text, std::size_t& at, int& number)
{
    const std::size_t start = at;
    number = 0;
    while (at < text.size() && text[at] >= u'0' && text[at] <= u'9' && at - start < 4)
        number = number * 10 + (text[at++] - u'0');
    return at > start;
}

bool readSeparated(const Text& text, std::size_t& at, char16_t separator, int& number)
{
    if (at >= text.size() || text[at] != separator)
        return false;
    return readNumber(text, ++at, number);
}

bool parseIso(const Text& text, double& days)
{
    CalendarTime time;
    std::size_t at = 0;
    int first = 0;
    if (!readNumber(text, at, first))
        return false;
    if (at == 4 && readSeparated(text, at, u'-', time.month) && readSeparated(text, at, u'-', time.day)) {
        time.year = first;
        if (at < text.size() && text[at] != u' ' && text[at] != u'T')
            return false;
        if (at < text.size() && !readNumber(text, ++at, time.hour))
            return false;
    } else {
        time.hour = first;
        if (at >= text.size() || text[at] != u':') // "3/5/2018" begins with a number, too
            return false;
    }
    if (at < text.size()) {
        if (!readSeparated(text, at, u':', time.minute))
            return false;
        readSeparated(text, at, u':', time.second);
    }
    const bool inRange = time.month >= 1 && time.month <= 12 && time.day >= 1 && time.day <= 31 && time.hour < 24
        && time.minute < 60 && time.second < 60;
    if (at < text.size() || !inRange)
        return false;
    days = dayCount(time);
    return true;
}

} // namespace

bool breakDown(double days, CalendarTime& time)
{
    constexpr double least = -657434;  // 1 January 100
    constexpr double beyond = 2958466; // 1 January 10000
    if (!(days >= least && days < beyond))
        return false;
    // The fraction of a day before the epoch counts forward from midnight as well.
    double whole = std::trunc(days);
    std::int64_t seconds = std::llround(std::fabs(days - whole) * 86400.0);
    if (seconds >= 86400) {
        seconds -= 86400;
        whole += 1;
    }
    civilDate(static_cast<std::int64_t>(whole), time);
    time.hour = static_cast<int>(seconds / 3600);
    time.minute = static_cast<int>(seconds / 60 % 60);
    time.second = static_cast<int>(seconds % 60);
    return true;
}

double dayCount(const CalendarTime& time)
{
    const double fraction = (time.hour * 3600 + time.minute * 60 + time.second) / 86400.0;
    const auto whole = static_cast<double>(civilDays(time.year, time.month, time.day));
    return whole < 0 ? whole - fraction : whole + fraction;
}

double dayCountFromUnix(std::int64_t seconds)
{
    const std::time_t moment = seconds;
    std::tm local{};
    localtime_r(&moment, &local);
    return dayCount({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
        std::min(local.tm_sec, 59)});
}

Text dateText(double days)
{
    const bool hasDate = std::trunc(days) != 0;
    const bool hasTime = days != std::trunc(days) || !hasDate;
    icu::UnicodeString out;
    if (hasDate)
        localeFormats().date().format(unixMilliseconds(days), out);
    if (hasDate && hasTime)
        out.append(u' ');
    if (hasTime)
        localeFormats().time().format(unixMilliseconds(days), out);
    Text text(out.getBuffer(), static_cast<std::size_t>(out.length()));
    replaceAll(text, u"\u202F", u" "); // people type, and other programs read, a plain blank here
    return text;
}

bool parseDate(TextView text, double& days)
{
    const Text trimmed = trim(text);
    thread_local const DateOrder order = localDateOrder();
    if (parseIso(trimmed, days) || readDateText(trimmed, order, days))
        return true;
    // What a locale writes in other signs.
    double date = 0;
    double time = 0;
    if (parseLocal(localeFormats().time(), trimmed, time)) {
        days = time - double(unixEpochDays);
        return true;
    }
    const std::size_t blank = trimmed.find(u' ');
    const bool hasTime = blank != Text::npos;
    if (!parseLocal(localeFormats().date(), trimmed.substr(0, blank), date)
        || (hasTime && !parseLocal(localeFormats().time(), trimmed.substr(blank + 1), time)))
        return false;
    days = date + (hasTime ? time - double(unixEpochDays) : 0.0);
    CalendarTime fields;
    return breakDown(days, fields);
}

} // namespace zn
