#include "language/functions/Patterns.h"

#include <cmath>
#include <fmt/format.h>
#include <utility>

namespace zn::language {

namespace {

/// What a pattern says about the digits.
struct NumberShape {
    int wholeZeros = 0; ///< least digits before the point
    std::size_t wholePlaces = 0;
    int decimals = 0; ///< most digits behind it
    int leastDecimals = 0;
    bool grouped = false;
    int scale = 0; ///< trailing commas, each a division by 1000
    int percent = 0;
    bool exponent = false;
    bool exponentPlus = false;
    int exponentDigits = 0;
    bool point = false;
    bool hasDigits = false;
};

/// Steps over literal text at `i`; false if the unit there is part of the number.
bool skipLiteral(TextView pattern, std::size_t& i)
{
    if (pattern[i] == u'\\') {
        ++i;
        return true;
    }
    if (pattern[i] != u'"')
        return false;
    const std::size_t close = pattern.find(u'"', i + 1);
    i = close == TextView::npos ? pattern.size() : close;
    return true;
}

bool isExponent(TextView pattern, std::size_t i)
{
    return (pattern[i] | 0x20) == u'e' && i + 1 < pattern.size() && (pattern[i + 1] == u'+' || pattern[i + 1] == u'-');
}

bool isPlaceholder(char16_t unit) { return unit == u'0' || unit == u'#'; }

NumberShape readShape(TextView pattern)
{
    NumberShape shape;
    bool sawZero = false;
    int commas = 0;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (skipLiteral(pattern, i))
            continue;
        const char16_t unit = pattern[i];
        if (isExponent(pattern, i)) {
            shape.exponent = true;
            shape.exponentPlus = pattern[i + 1] == u'+';
            for (i += 2; i < pattern.size() && isPlaceholder(pattern[i]); ++i)
                ++shape.exponentDigits;
            --i;
        } else if (isPlaceholder(unit)) {
            shape.hasDigits = true;
            shape.grouped = shape.grouped || (commas > 0 && !shape.point);
            commas = 0;
            sawZero = sawZero || unit == u'0';
            if (shape.point) {
                ++shape.decimals;
                if (unit == u'0')
                    shape.leastDecimals = shape.decimals;
            } else {
                ++shape.wholePlaces;
                shape.wholeZeros += sawZero ? 1 : 0;
            }
        } else if (unit == u'.') {
            shape.point = true;
            shape.scale += commas;
            commas = 0;
        } else if (unit == u',') {
            commas += shape.hasDigits ? 1 : 0;
        } else if (unit == u'%') {
            ++shape.percent;
        }
    }
    shape.scale += commas;
    return shape;
}

struct Digits {
    std::string whole;
    std::string decimals;
    int exponent = 0;
};

/// Rounds by the decimal digits that people see, so that 0.125 with two decimals is 0.13 and 2.675 is 2.68.
std::string decimalDigits(double number, int decimals)
{
    const double scale = std::pow(10.0, decimals);
    const double scaled = number * scale;
    if (std::isfinite(scaled) && scaled < 9e14) {
        const double half = std::floor(scaled) + 0.5;
        if (std::fabs(scaled - half) <= scaled * 2e-15)
            return fmt::format("{:.{}f}", (half + 0.5) / scale, decimals);
    }
    return fmt::format("{:.{}f}", number, decimals);
}

/// Rounds to so many significant digits, halves upwards, by the 15 digits that people see; the exponent is that of the
/// first digit.
std::string significantDigits(double number, int count, int& exponent)
{
    const std::string shown = fmt::format("{:.14e}", number);
    exponent = std::stoi(shown.substr(shown.find('e') + 1));
    std::string digits = shown.substr(0, 1) + shown.substr(2, 14);
    const auto kept = static_cast<std::size_t>(count);
    if (kept >= digits.size()) {
        digits.append(kept - digits.size(), '0');
        return digits;
    }
    const bool up = digits[kept] >= '5';
    digits.resize(kept);
    if (!up)
        return digits;
    for (std::size_t i = kept; i-- > 0; digits[i] = '0') {
        if (digits[i] != '9') {
            ++digits[i];
            return digits;
        }
    }
    ++exponent;
    digits.front() = '1';
    return digits;
}

Digits digitsOf(double number, const NumberShape& shape)
{
    Digits out;
    if (shape.exponent && number > 0) {
        const int whole = std::max(shape.wholeZeros, 1);
        const std::string digits = significantDigits(number, whole + shape.decimals, out.exponent);
        out.exponent -= whole - 1;
        out.whole = digits.substr(0, static_cast<std::size_t>(whole));
        out.decimals = digits.substr(static_cast<std::size_t>(whole));
    } else {
        const std::string text = decimalDigits(number, shape.decimals);
        const std::size_t point = text.find('.');
        out.whole = text.substr(0, point);
        out.decimals = point == std::string::npos ? "" : text.substr(point + 1);
    }
    while (static_cast<int>(out.decimals.size()) > shape.leastDecimals && out.decimals.ends_with('0'))
        out.decimals.pop_back();
    if (out.whole == "0")
        out.whole.clear();
    if (static_cast<int>(out.whole.size()) < shape.wholeZeros)
        out.whole.insert(0, static_cast<std::size_t>(shape.wholeZeros) - out.whole.size(), '0');
    return out;
}

std::string groupedDigits(const std::string& whole)
{
    std::string out;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        if (i > 0 && (whole.size() - i) % 3 == 0)
            out.push_back(',');
        out.push_back(whole[i]);
    }
    return out;
}

/// Fills a pattern: each placeholder takes one digit, the first of them also those that no other is left for. So
/// literal text between placeholders stays between the digits ("000-0000").
class PatternFiller {
public:
    PatternFiller(TextView pattern, const Digits& digits, const NumberShape& shape)
        : m_pattern(pattern)
        , m_digits(digits)
        , m_shape(shape)
        , m_placesLeft(shape.wholePlaces)
    {
    }

    Text run()
    {
        for (std::size_t i = 0; i < m_pattern.size(); ++i) {
            const std::size_t start = i;
            const char16_t unit = m_pattern[i];
            if (skipLiteral(m_pattern, i)) {
                const std::size_t end = std::min(i + (unit == u'\\' ? 1 : 0), m_pattern.size());
                if (end > start + 1)
                    m_out.append(m_pattern.substr(start + 1, end - start - 1));
            } else if (isExponent(m_pattern, i)) {
                exponent(unit);
                for (i += 2; i < m_pattern.size() && isPlaceholder(m_pattern[i]);)
                    ++i;
                --i;
            } else if (isPlaceholder(unit)) {
                placeholder();
            } else if (unit == u'.') {
                point();
            } else if (unit != u',') {
                m_out.push_back(unit);
            }
        }
        return std::move(m_out);
    }

private:
    void wholeDigit()
    {
        m_out.push_back(static_cast<unsigned char>(m_digits.whole[m_next]));
        const std::size_t behind = m_digits.whole.size() - ++m_next;
        if (m_shape.grouped && behind > 0 && behind % 3 == 0)
            m_out.push_back(u',');
    }

    void placeholder()
    {
        if (m_behindPoint) {
            if (m_nextDecimal < m_digits.decimals.size())
                m_out.push_back(static_cast<unsigned char>(m_digits.decimals[m_nextDecimal++]));
            return;
        }
        --m_placesLeft;
        while (m_digits.whole.size() - m_next > m_placesLeft)
            wholeDigit();
    }

    void point()
    {
        if (std::exchange(m_behindPoint, true))
            return;
        while (m_next < m_digits.whole.size()) // a pattern without a placeholder before its point
            wholeDigit();
        m_out.push_back(u'.');
    }

    void exponent(char16_t mark)
    {
        const std::string digits = fmt::format("{:0{}}", std::abs(m_digits.exponent), m_shape.exponentDigits);
        m_out.push_back(mark);
        if (m_digits.exponent < 0 || m_shape.exponentPlus)
            m_out.push_back(m_digits.exponent < 0 ? u'-' : u'+');
        m_out.append(digits.begin(), digits.end());
    }

    TextView m_pattern;
    const Digits& m_digits;
    const NumberShape& m_shape;
    std::size_t m_placesLeft; ///< before the point
    std::size_t m_next = 0;
    std::size_t m_nextDecimal = 0;
    bool m_behindPoint = false;
    Text m_out;
};

} // namespace

std::vector<TextView> sectionsOf(TextView pattern)
{
    std::vector<TextView> sections;
    std::size_t start = 0;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (skipLiteral(pattern, i) || pattern[i] != u';')
            continue;
        sections.push_back(pattern.substr(start, i - start));
        start = i + 1;
    }
    sections.push_back(pattern.substr(start));
    return sections;
}

Text fixedNumber(double number, int decimals, bool grouped)
{
    const std::string text = decimalDigits(std::fabs(number), decimals);
    const std::size_t point = text.find('.');
    std::string whole = text.substr(0, point);
    if (grouped)
        whole = groupedDigits(whole);
    const std::string all = whole + (point == std::string::npos ? "" : text.substr(point));
    const bool isZero = all.find_first_of("123456789") == std::string::npos;
    return (number < 0 && !isZero ? u"-" : u"") + Text(all.begin(), all.end());
}

Text formatNumber(double number, TextView pattern)
{
    const std::vector<TextView> sections = sectionsOf(pattern);
    std::size_t section = 0;
    if (number < 0 && sections.size() > 1 && !sections[1].empty())
        section = 1;
    else if (number == 0 && sections.size() > 2 && !sections[2].empty())
        section = 2;
    const TextView chosen = sections[section];
    const NumberShape shape = readShape(chosen);
    double size = std::fabs(number);
    for (int i = 0; i < shape.percent; ++i)
        size *= 100;
    for (int i = 0; i < shape.scale; ++i)
        size /= 1000;
    const Digits digits = shape.hasDigits ? digitsOf(size, shape) : Digits();
    const bool vanishes
        = (digits.whole + digits.decimals).find_first_of("123456789") == std::string::npos && shape.hasDigits;
    const bool minus = number < 0 && section == 0 && !vanishes;
    return (minus ? u"-" : u"") + PatternFiller(chosen, digits, shape).run();
}

} // namespace zn::language
