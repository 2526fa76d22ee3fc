#include "addin/macro/DateFormat.h"

#include "base/Dates.h"
#include "base/Format.h"
#include "platform/Registry.h"

#include <fmt/args.h>
#include <fmt/printf.h>

namespace zn {

namespace {

struct MonthName {
    const char* longName;
    const char* shortName;
};

// "Mars" is what dates in stored paths have always held.
constexpr MonthName months[] = {
    {"January", "Jan"},
    {"February", "Feb"},
    {"Mars", "Mar"},
    {"April", "Apr"},
    {"May", "May"},
    {"June", "Jun"},
    {"July", "Jul"},
    {"August", "Aug"},
    {"September", "Sep"},
    {"October", "Oct"},
    {"November", "Nov"},
    {"December", "Dec"},
};

/// A format with its fields; a field begins with the code in `fields` and takes the next conversion of `format`:
///   b short month, B long month, m month, d day, Y year, y year of the century,
///   H hour, I hour of the half day, M minute, S second, p day period
struct DateStyle {
    int number = 0;
    const char* format = nullptr;
    const char* fields = nullptr;
    bool ownTime = false;
    /// Format and fields of an own-time style for the date alone; null if it has the time in every mode.
    const char* dateFormat = nullptr;
    const char* dateFields = nullptr;
};

constexpr DateStyle styles[] = {
    {0, "%s %02d %04d %02d:%02d %s", "bdYIMp", true, "%s %02d %04d", "bdY"},
    {1, "%02d/%02d/%02d", "mdy"},
    {2, "%02d.%02d.%02d", "ymd"},
    {3, "%02d/%02d/%02d", "dmy"},
    {4, "%02d.%02d.%02d", "dmy"},
    {5, "%02d-%02d-%02d", "dmy"},
    {6, "%02d %s %02d", "dby"},
    {7, "%s %02d, %02d", "bdy"},
    {10, "%02d-%02d-%02d", "mdy"},
    {11, "%02d/%02d/%02d", "ymd"},
    {12, "%02d%02d%02d", "ymd"},
    {100, "%s %02d %04d %02d:%02d %s", "bdYIMp", true, "%s %02d %04d", "bdY"},
    {101, "%02d/%02d/%04d", "mdY"},
    {102, "%04d.%02d.%02d", "Ymd"},
    {103, "%02d/%02d/%04d", "dmY"},
    {104, "%02d.%02d.%04d", "dmY"},
    {105, "%02d-%02d-%04d", "dmY"},
    {106, "%02d %s %04d", "dbY"},
    {107, "%s %02d, %04d", "bdY"},
    {109, "%s %02d %04d %02d:%02d:%02d:000 %s", "bdYIMSp", true, "%s %02d %04d", "bdY"},
    {110, "%02d-%02d-%04d", "mdY"},
    {111, "%04d/%02d/%02d", "Ymd"},
    {112, "%04d%02d%02d", "Ymd"},
    {113, "%02d %s %04d %02d:%02d:%02d:000", "dBYHMS", true, "%02d %s %04d", "dBY"},
    {120, "%04d-%02d-%02d", "Ymd"},
    {121, "%04d-%02d-%02d %02d:%02d:%02d.000", "YmdHMS", true, "%04d-%02d-%02d", "Ymd"},
};
constexpr DateStyle otherStyle = {-1, "%02d %s %04d %02d:%02d:%02d:000", "dBYHMS", true};

const DateStyle& findStyle(std::int32_t number)
{
    for (const DateStyle& style : styles) {
        if (style.number == number)
            return style;
    }
    return otherStyle;
}

struct DateFields {
    explicit DateFields(double days)
    {
        if (!breakDown(days, time)) {
            time = {-1, -1, -1, -1, -1, -1};
            return;
        }
        yearOfCentury = time.year % 100;
        month = months[time.month - 1];
    }

    CalendarTime time;
    int yearOfCentury = -1;
    MonthName month = {"", ""};
};

using Arguments = fmt::dynamic_format_arg_store<fmt::printf_context>;

void pushField(Arguments& arguments, char field, const DateFields& date)
{
    const CalendarTime& time = date.time;
    switch (field) {
    case 'b':
        return arguments.push_back(date.month.shortName);
    case 'B':
        return arguments.push_back(date.month.longName);
    case 'm':
        return arguments.push_back(time.month);
    case 'd':
        return arguments.push_back(time.day);
    case 'Y':
        return arguments.push_back(time.year);
    case 'y':
        return arguments.push_back(date.yearOfCentury);
    case 'H':
        return arguments.push_back(time.hour);
    case 'I':
        // Midnight is 00 and noon is "12 AM" in these styles.
        return arguments.push_back(time.hour > 12 ? time.hour - 12 : time.hour);
    case 'M':
        return arguments.push_back(time.minute);
    case 'S':
        return arguments.push_back(time.second);
    default:
        return arguments.push_back(time.hour < 13 ? "AM" : "PM");
    }
}

std::string formatFields(const char* format, std::string_view fields, const DateFields& date)
{
    Arguments arguments;
    for (const char field : fields)
        pushField(arguments, field, date);
    return fmt::vsprintf(fmt::string_view(format), fmt::basic_format_args<fmt::printf_context>(arguments));
}

} // namespace

bool FormatDate(Text& text, double dateValue, std::int32_t styleNumber, DateMode mode)
{
    if (dateValue == 0.0)
        return false;
    const DateFields date(dateValue);
    const DateStyle& style = findStyle(styleNumber);
    std::string out;
    if (mode == DateMode::DateOnly && style.dateFormat)
        out = formatFields(style.dateFormat, style.dateFields, date);
    else
        out = formatFields(style.format, style.fields, date);
    if (!style.ownTime && mode == DateMode::DateAndSeconds)
        out += formatFields(" %02d:%02d:%02d", "HMS", date);
    if (!style.ownTime && mode == DateMode::DateAndMinutes)
        out += formatFields(" %02d:%02d", "HM", date);
    text = toText(out);
    return true;
}

std::int32_t ReadDateStyle(Registry& registry, TextView vaultName)
{
    const Text key = Text(u"Software\\Zentrel\\Applications\\Arkin Enterprise\\Vaults\\").append(vaultName);
    const auto value = registry.read(RegistryRoot::User, key, u"DateFmt");
    return value ? value->asNumber().value_or(0) : 0;
}

} // namespace zn
