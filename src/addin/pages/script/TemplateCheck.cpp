#include "addin/pages/script/TemplateCheck.h"

#include "addin/macro/Placeholders.h"
#include "base/Format.h"
#include "contracts/objectmodel/TypeLibrary.h"
#include "language/Program.h"

#include <algorithm>

namespace zn {

namespace {

constexpr TextView lineEnds = u"\r\n";
constexpr TextView blanks = u" \t";

/// Places of the first unit of each line. A carriage return with a line feed is one line end.
std::vector<std::size_t> lineStarts(TextView text)
{
    std::vector<std::size_t> starts = {0};
    for (std::size_t at = 0; (at = text.find_first_of(lineEnds, at)) != TextView::npos;) {
        at += text.substr(at).starts_with(u"\r\n") ? 2 : 1;
        starts.push_back(at);
    }
    return starts;
}

bool isWordUnit(char16_t unit)
{
    return unit == u'_' || unit >= 0x80 || (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z')
        || (unit >= u'a' && unit <= u'z');
}

/// How much to mark of a line from a place in it: the word, the text in quotes, or the single sign there.
std::size_t markedLength(TextView rest)
{
    if (rest.empty())
        return 0;
    if (rest.front() == u'"')
        return std::min(rest.find(u'"', 1), rest.size() - 1) + 1;
    const auto end = std::find_if_not(rest.begin(), rest.end(), isWordUnit);
    return std::max<std::size_t>(static_cast<std::size_t>(end - rest.begin()), 1);
}

class Report {
public:
    explicit Report(TextView source)
        : m_source(source)
        , m_starts(lineStarts(source))
    {
    }

    void add(std::size_t position, Text message)
    {
        // What is missing at the end of a line is marked at the last thing that stands there.
        std::size_t marked = std::min(position, m_source.size());
        if (marked == m_source.size() || lineEnds.find(m_source[marked]) != TextView::npos) {
            const std::size_t last = m_source.substr(0, marked).find_last_not_of(u" \t\r\n");
            marked = last == TextView::npos ? 0 : last;
        }
        const auto next = std::ranges::upper_bound(m_starts, marked);
        TextView rest = m_source.substr(marked, next == m_starts.end() ? TextView::npos : *next - marked);
        rest = rest.substr(0, rest.find_last_not_of(lineEnds) + 1);
        TemplateProblem problem;
        problem.position = marked;
        problem.length = markedLength(rest);
        problem.line = static_cast<int>(next - m_starts.begin());
        problem.column = static_cast<int>(marked - *std::prev(next)) + 1;
        problem.message = std::move(message);
        m_problems.push_back(std::move(problem));
    }

    std::vector<TemplateProblem> take()
    {
        std::ranges::stable_sort(m_problems, {}, &TemplateProblem::position);
        return std::move(m_problems);
    }

private:
    TextView m_source;
    std::vector<std::size_t> m_starts;
    std::vector<TemplateProblem> m_problems;
};

/// Whether a mistake at a place is one of a placeholder's value, or of what it stands before.
bool concernsValue(const NeutralTemplate& neutral, std::size_t position)
{
    const std::size_t next = neutral.text().find_first_not_of(blanks, position);
    return neutral.isValue(position) || (next != Text::npos && neutral.isValue(next));
}

/// A run writes the macro in the single-byte code page, which turns any other character into "?".
bool isLostInCodePage(char16_t unit)
{
    constexpr char16_t firstToAsk = 0x80;
    return unit >= firstToAsk && toCodePage(TextView(&unit, 1)) == "?";
}

void addLostCharacters(const NeutralTemplate& neutral, Report& report)
{
    const TextView text = neutral.text();
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!isLostInCodePage(text[at]))
            continue;
        report.add(neutral.sourcePosition(at),
            formatText("A macro can't hold this character, a run writes \"?\" for it. Please use ChrW(%d) instead.",
                static_cast<int>(text[at])));
        at = std::min(text.find_first_of(lineEnds, at), text.size()); // one a line is enough
    }
}

void addUnclosed(TextView source, const NeutralTemplate& neutral, Report& report)
{
    for (const std::size_t position : neutral.unclosed()) {
        const bool square = source[position] == u'[';
        report.add(position,
            formatText("The \"%s\" has no \"%s\" in its line. A run takes everything up to the next \"%s\" for the "
                       "name of a placeholder. Please close or remove it.",
                square ? "[" : "{", square ? "]" : "}", square ? "]" : "}"));
    }
}

void addLanguageErrors(const NeutralTemplate& neutral, Report& report)
{
    const std::vector<std::size_t> starts = lineStarts(neutral.text());
    for (const language::Diagnostic& error : language::check(neutral.text(), zn::zentrel::macroCompileOptions())) {
        const auto line = std::clamp<std::size_t>(static_cast<std::size_t>(std::max(error.line, 1)), 1, starts.size());
        const std::size_t position = starts[line - 1] + static_cast<std::size_t>(std::max(error.column, 1) - 1);
        if (!concernsValue(neutral, position))
            report.add(neutral.sourcePosition(position), error.message);
    }
}

} // namespace

std::vector<TemplateProblem> checkTemplate(TextView source)
{
    Report report(source);
    const NeutralTemplate neutral(source);
    addUnclosed(source, neutral, report);
    addLostCharacters(neutral, report);
    addLanguageErrors(neutral, report);
    return report.take();
}

} // namespace zn
