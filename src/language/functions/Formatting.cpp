#include "language/functions/Given.h"
#include "language/functions/Intrinsic.h"
#include "language/functions/Patterns.h"
#include "language/run/RunContext.h"

#include "base/Dates.h"

#include <cmath>

namespace zn::language {

namespace {

struct NamedPattern {
    TextView name;
    TextView pattern;
    bool isDate;
};

constexpr NamedPattern namedPatterns[] = {
    {u"Currency", u"$#,##0.00;($#,##0.00)", false},
    {u"Fixed", u"0.00", false},
    {u"Standard", u"#,##0.00", false},
    {u"Percent", u"0.00%", false},
    {u"Scientific", u"0.00E+00", false},
    {u"Yes/No", u"\\Y\\e\\s;\\Y\\e\\s;\\N\\o", false},
    {u"True/False", u"\\T\\r\\u\\e;\\T\\r\\u\\e;\\F\\a\\l\\s\\e", false},
    {u"On/Off", u"\\O\\n;\\O\\n;\\O\\f\\f", false},
    {u"General Date", u"c", true},
    {u"Long Date", u"dddd, mmmm d, yyyy", true},
    {u"Medium Date", u"dd-mmm-yy", true},
    {u"Short Date", u"m/d/yyyy", true},
    {u"Long Time", u"h:nn:ss AM/PM", true},
    {u"Medium Time", u"hh:nn AM/PM", true},
    {u"Short Time", u"hh:nn", true},
};

bool readsAsDate(const Value& value, double& days)
{
    if (const auto* date = value.get<DateValue>()) {
        days = date->days;
        return true;
    }
    if (const auto* text = value.get<Text>())
        return parseDate(*text, days);
    if (!isNumeric(value) || value.isEmpty())
        return false;
    days = numberOf(value);
    return true;
}

Text formattedDate(const Value& value, TextView pattern)
{
    double days = 0;
    return readsAsDate(value, days) ? formatDate(days, pattern) : textOf(value);
}

Text formattedNumber(const Value& value, TextView pattern)
{
    const bool isNumber = isNumeric(value) || value.type() == ValueType::Date;
    return isNumber ? formatNumber(numberOf(value), pattern) : textOf(value);
}

/// Null has the fourth part of a number's pattern and the second of a text's; elsewhere it shows as nothing.
Text formattedNull(TextView pattern)
{
    const std::vector<TextView> sections = sectionsOf(pattern);
    if (isTextPattern(sections[0]))
        return sections.size() > 1 ? formatString({}, pattern) : Text();
    return sections.size() > 3 ? formatNumber(0, sections[3]) : Text();
}

Value format(RunContext&, Given a)
{
    const Value value = plainValue(a[0]);
    const Text pattern = textAt(a, 1);
    if (isNull(value))
        return formattedNull(pattern);
    if (pattern.empty() || equalNoCase(pattern, u"General Number"))
        return textOf(value);
    for (const NamedPattern& named : namedPatterns)
        if (equalNoCase(named.name, pattern))
            return named.isDate ? formattedDate(value, named.pattern) : formattedNumber(value, named.pattern);
    const bool isText = value.type() == ValueType::String;
    if (isTextPattern(pattern) || (isText && pattern.find_first_of(u"<>!") != Text::npos))
        return formatString(textOf(value), pattern);
    if (isDatePattern(pattern))
        return formattedDate(value, pattern);
    const bool isOnlyText = isText && !isNumeric(value) && pattern.find_first_of(u"0#") == Text::npos;
    return isOnlyText ? formatString(textOf(value), pattern) : formattedNumber(value, pattern);
}

Text decimalNumber(Given a, double number)
{
    const std::int32_t decimals = longAt(a, 1, -1);
    const std::int32_t grouped = longAt(a, 4, -2);
    Text out = fixedNumber(number, decimals < 0 ? 2 : decimals, grouped != 0);
    const bool negative = out.front() == u'-';
    if (longAt(a, 2, -2) == 0 && std::fabs(number) < 1) // no zero before the point
        out.erase(negative ? 1 : 0, 1);
    if (negative && longAt(a, 3, -2) == -1)
        out = u"(" + out.substr(1) + u")";
    return out;
}

Value formatNumberFunction(RunContext&, Given a) { return decimalNumber(a, numberOf(a[0])); }

Value formatCurrency(RunContext&, Given a)
{
    Text out = decimalNumber(a, numberOf(a[0]));
    // Unlike other numbers, an amount below zero stands in parentheses unless the call says no.
    if (out.front() == u'-' && longAt(a, 3, -2) == -2)
        return u"($" + out.substr(1) + u")";
    const bool marked = out.front() == u'-' || out.front() == u'(';
    return out.insert(marked ? 1 : 0, 1, u'$');
}

Value formatPercent(RunContext&, Given a)
{
    Text out = decimalNumber(a, numberOf(a[0]) * 100);
    return out.insert(out.size() - (out.back() == u')' ? 1 : 0), 1, u'%');
}

Value formatDateTime(RunContext&, Given a)
{
    static constexpr TextView patterns[] = {u"c", u"dddd, mmmm d, yyyy", u"m/d/yyyy", u"h:nn:ss AM/PM", u"hh:nn"};
    const std::size_t kind = countAt(a, 1, 0);
    if (kind >= std::size(patterns))
        raise(error::invalidCall);
    return formatDate(coerce(a[0], ValueType::Date).get<DateValue>()->days, patterns[kind]);
}

constexpr ValueType text = ValueType::String;
constexpr TextView numberParameters
    = u"Expression NumDigitsAfterDecimal IncludeLeadingDigit UseParensForNegativeNumbers GroupDigits";

constexpr Intrinsic functions[] = {
    {u"Format", 1, 4, text, format, u"Expression Format FirstDayOfWeek FirstWeekOfYear"},
    {u"FormatCurrency", 1, 5, text, formatCurrency, numberParameters},
    {u"FormatNumber", 1, 5, text, formatNumberFunction, numberParameters},
    {u"FormatPercent", 1, 5, text, formatPercent, numberParameters},
    {u"FormatDateTime", 1, 2, text, formatDateTime, u"Date NamedFormat"},
};

} // namespace

std::span<const Intrinsic> formatFunctions() { return functions; }

} // namespace zn::language
