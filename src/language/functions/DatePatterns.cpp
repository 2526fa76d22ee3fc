#include "language/functions/Patterns.h"

#include "language/functions/Calendar.h"

#include <algorithm>

namespace zn::language {

namespace {

Text two(int number) { return (number < 10 ? u"0" : u"") + numberText(number); }

bool isField(char16_t unit) { return TextView(u"cdmyhnswqtCDMYHNSWQT").find(unit) != TextView::npos; }

/// The half of the day, spelled as the pattern spells it.
struct HalfDay {
    TextView form;
    TextView morning;
    TextView afternoon;
};
constexpr HalfDay halfDays[]
    = {{u"AM/PM", u"AM", u"PM"}, {u"am/pm", u"am", u"pm"}, {u"A/P", u"A", u"P"}, {u"a/p", u"a", u"p"}};

const HalfDay* halfDayAt(TextView pattern, std::size_t i)
{
    const auto* exact
        = std::ranges::find_if(halfDays, [&](const HalfDay& h) { return pattern.substr(i).starts_with(h.form); });
    if (exact != std::end(halfDays))
        return exact;
    return equalNoCase(pattern.substr(i, 5), u"AM/PM") ? &halfDays[0] : nullptr;
}

class DateFormatter {
public:
    DateFormatter(double days, TextView pattern)
        : m_days(days)
        , m_time(calendarOf(days))
        , m_pattern(pattern)
    {
        for (std::size_t i = 0; i < pattern.size(); ++i)
            m_halfDays = m_halfDays || halfDayAt(pattern, i);
    }

    Text run()
    {
        while (m_at < m_pattern.size())
            next();
        return std::move(m_out);
    }

private:
    void next()
    {
        const char16_t unit = m_pattern[m_at];
        if (unit == u'"') {
            const std::size_t close = std::min(m_pattern.find(u'"', m_at + 1), m_pattern.size());
            m_out.append(m_pattern.substr(m_at + 1, close - m_at - 1));
            m_at = close + 1;
        } else if (unit == u'\\') {
            m_out.append(m_pattern.substr(m_at + 1, 1));
            m_at += 2;
        } else if (const HalfDay* half = halfDayAt(m_pattern, m_at)) {
            m_out.append(m_time.hour < 12 ? half->morning : half->afternoon);
            m_at += half->form.size();
        } else if (isField(unit)) {
            std::size_t end = m_at;
            while (end < m_pattern.size() && (m_pattern[end] | 0x20) == (unit | 0x20))
                ++end;
            field(static_cast<char16_t>(unit | 0x20), static_cast<int>(end - m_at));
            m_at = end;
        } else {
            m_out.push_back(unit);
            ++m_at;
        }
    }

    void field(char16_t letter, int count)
    {
        // Behind an hour "m" means minutes.
        const bool minutes = letter == u'm' && m_afterHour && count <= 2;
        m_afterHour = letter == u'h';
        switch (minutes ? u'n' : letter) {
        case u'c':
            m_out += dateText(m_days);
            break;
        case u'd':
            day(count);
            break;
        case u'm':
            month(count);
            break;
        case u'y':
            m_out += count == 1 ? numberText(dayOfYear(m_days))
                : count == 2    ? two(m_time.year % 100)
                                : numberText(m_time.year);
            break;
        case u'h':
            number(m_halfDays ? (m_time.hour + 11) % 12 + 1 : m_time.hour, count);
            break;
        case u'n':
            number(m_time.minute, count);
            break;
        case u's':
            number(m_time.second, count);
            break;
        case u'w':
            m_out += numberText(count == 1 ? weekdayOf(m_days, 1) : weekOfYear(m_days, 1, 1));
            break;
        case u'q':
            m_out += numberText((m_time.month - 1) / 3 + 1);
            break;
        default:
            m_out += Text(static_cast<std::size_t>(count), letter);
            break;
        }
    }

    void number(int value, int count) { m_out += count >= 2 ? two(value) : numberText(value); }

    void day(int count)
    {
        if (count <= 2)
            number(m_time.day, count);
        else if (count <= 4)
            m_out += nameOfWeekday(weekdayOf(m_days, 1), count == 3);
        else
            m_out += formatDate(m_days, count == 5 ? u"m/d/yyyy" : u"dddd, mmmm d, yyyy");
    }

    void month(int count)
    {
        if (count <= 2)
            number(m_time.month, count);
        else
            m_out += nameOfMonth(m_time.month, count == 3);
    }

    double m_days;
    CalendarTime m_time;
    TextView m_pattern;
    std::size_t m_at = 0;
    bool m_halfDays = false;
    bool m_afterHour = false;
    Text m_out;
};

} // namespace

Text formatDate(double days, TextView pattern) { return DateFormatter(days, pattern).run(); }

bool isDatePattern(TextView pattern)
{
    bool found = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == u'\\') {
            ++i;
        } else if (pattern[i] == u'"') {
            i = std::min(pattern.find(u'"', i + 1), pattern.size());
        } else if (pattern[i] == u'0' || pattern[i] == u'#') {
            return false;
        } else {
            found = found || isField(pattern[i]);
        }
    }
    return found;
}

} // namespace zn::language
