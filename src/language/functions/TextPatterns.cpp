#include "language/functions/Patterns.h"

#include <algorithm>

namespace zn::language {

namespace {

struct Unit {
    char16_t unit;
    bool isLiteral; ///< quoted, behind a backslash, or of no meaning
};

std::vector<Unit> unitsOf(TextView pattern)
{
    constexpr TextView marks = u"@&<>!";
    std::vector<Unit> units;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == u'\\' && i + 1 < pattern.size()) {
            units.push_back({pattern[++i], true});
        } else if (pattern[i] == u'"') {
            for (++i; i < pattern.size() && pattern[i] != u'"'; ++i)
                units.push_back({pattern[i], true});
        } else {
            units.push_back({pattern[i], marks.find(pattern[i]) == TextView::npos});
        }
    }
    return units;
}

bool isPlace(const Unit& unit) { return !unit.isLiteral && (unit.unit == u'@' || unit.unit == u'&'); }

bool has(const std::vector<Unit>& units, char16_t mark)
{
    return std::ranges::any_of(units, [mark](const Unit& unit) { return !unit.isLiteral && unit.unit == mark; });
}

} // namespace

bool isTextPattern(TextView pattern) { return std::ranges::any_of(unitsOf(pattern), isPlace); }

Text formatString(const Text& text, TextView pattern)
{
    const std::vector<TextView> sections = sectionsOf(pattern);
    const std::vector<Unit> units = unitsOf(text.empty() && sections.size() > 1 ? sections[1] : sections[0]);
    const auto places = static_cast<std::size_t>(std::ranges::count_if(units, isPlace));
    const bool fromLeft = has(units, u'!');
    const Text shown = has(units, u'<') ? toLower(text) : has(units, u'>') ? toUpper(text) : text;
    // Places fill from the right unless the pattern says otherwise; text without a place follows the last one.
    const std::size_t missing = places > shown.size() ? places - shown.size() : 0;
    std::size_t next = 0;
    std::size_t place = 0;
    Text out;
    for (const Unit& unit : units) {
        if (unit.isLiteral) {
            out.push_back(unit.unit);
        } else if (isPlace(unit)) {
            ++place;
            const bool empty = fromLeft ? next >= shown.size() : place <= missing;
            if (!empty)
                out.push_back(shown[next++]);
            else if (unit.unit == u'@')
                out.push_back(u' ');
            if (place == places)
                out.append(shown, next);
        }
    }
    return places == 0 && out.empty() ? shown : out;
}

} // namespace zn::language
