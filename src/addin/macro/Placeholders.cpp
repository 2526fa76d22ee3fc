#include "addin/macro/Placeholders.h"

#include "addin/variables/TaskVariables.h"

#include <algorithm>
#include <unicode/uchar.h>

namespace zn {

namespace {

/// What a run replaces by the data of the file, and the three that a macro replaces itself.
constexpr TextView fileNames[] = {u"Filepath", u"Path", u"VaultPath", u"TaskInstanceGuid", u"SelCfgOrSheet",
    u"Revision", u"Version", u"WorkflowState", u"Today", u"Supported_2017ZN", u"Supported_2018ZN", u"Filename",
    u"Extension", u"Configuration"};

bool isLetter(char16_t unit) { return u_isalpha(unit) || unit == u'_'; }
bool isWordUnit(char16_t unit) { return isLetter(unit) || u_isdigit(unit); }

class LineReader {
public:
    explicit LineReader(TextView line)
        : m_line(line)
        , m_lastCurly(line.rfind(u'}'))
        , m_lastSquare(line.rfind(u']'))
    {
    }

    LinePlaceholders run()
    {
        while (m_at < m_line.size()) {
            const std::size_t length = placeholderLength();
            if (length == 0)
                readPlain();
            m_at += std::max<std::size_t>(length, 1);
        }
        return std::move(m_out);
    }

private:
    /// Follows texts and comments, which decide what a "%" means.
    void readPlain()
    {
        if (m_line[m_at] == u'"' && !m_inComment)
            m_inText = !m_inText;
        else if (m_line[m_at] == u'\'' && !m_inText)
            m_inComment = true;
    }

    std::size_t placeholderLength()
    {
        switch (m_line[m_at]) {
        case u'{':
            return bracketed(PlaceholderKind::Host, u'}', m_lastCurly);
        case u'[':
            return bracketed(PlaceholderKind::Task, u']', m_lastSquare);
        case u'<':
            return fileValue();
        case u'%':
            return cardVariable();
        default:
            return 0;
        }
    }

    std::size_t found(PlaceholderKind kind, std::size_t length)
    {
        m_out.found.push_back({kind, m_at, length});
        return length;
    }

    std::size_t bracketed(PlaceholderKind kind, char16_t close, std::size_t lastClose)
    {
        // Known beforehand, so that a line full of opening brackets isn't searched to its end for each.
        if (lastClose != TextView::npos && lastClose > m_at)
            return found(kind, m_line.find(close, m_at) - m_at + 1);
        m_out.unclosed.push_back(m_at);
        return 0;
    }

    std::size_t fileValue()
    {
        const TextView rest = m_line.substr(m_at + 1);
        for (const TextView name : fileNames) {
            if (rest.starts_with(name) && rest.substr(name.size()).starts_with(u'>'))
                return found(PlaceholderKind::File, name.size() + 2);
        }
        return 0;
    }

    std::size_t cardVariable()
    {
        const bool isTypeMark = !m_inText && !m_inComment && m_at > 0 && isWordUnit(m_line[m_at - 1]);
        const std::size_t end = m_line.find(u'%', m_at + 1);
        if (isTypeMark || end == TextView::npos)
            return 0;
        const TextView name = m_line.substr(m_at + 1, end - m_at - 1);
        const bool isName = !name.empty() && isLetter(name.front()) && name.back() != u' '
            && std::all_of(name.begin(), name.end(),
                [](char16_t unit) { return isWordUnit(unit) || unit == u' ' || unit == u'-' || unit == u'.'; });
        return isName ? found(PlaceholderKind::Card, name.size() + 2) : 0;
    }

    TextView m_line;
    std::size_t m_lastCurly; ///< the last closing bracket of the line
    std::size_t m_lastSquare;
    std::size_t m_at = 0;
    bool m_inText = false;
    bool m_inComment = false;
    LinePlaceholders m_out;
};

bool isBoolean(PlaceholderKind kind, TextView name)
{
    if (kind == PlaceholderKind::File)
        return name.starts_with(u"Supported_");
    const TaskVariable* variable = kind == PlaceholderKind::Task ? findTaskVariable(name) : nullptr;
    return variable && variable->type == ValueType::Boolean;
}

} // namespace

LinePlaceholders findPlaceholders(TextView line) { return LineReader(line).run(); }

NeutralTemplate::NeutralTemplate(TextView source)
{
    m_text.reserve(source.size());
    for (std::size_t start = 0; start <= source.size();) {
        const std::size_t end = std::min(source.find_first_of(u"\r\n", start), source.size());
        appendLine(source.substr(start, end - start), start);
        m_text.append(source.substr(end, 1));
        start = end + 1;
    }
}

void NeutralTemplate::appendLine(TextView sourceLine, std::size_t sourceStart)
{
    const LinePlaceholders placeholders = findPlaceholders(sourceLine);
    Text line(sourceLine);
    for (const std::size_t position : placeholders.unclosed) {
        m_unclosed.push_back(sourceStart + position);
        line[position] = u' '; // reported once, as what it is
    }
    std::size_t done = 0;
    for (const Placeholder& one : placeholders.found) {
        m_text.append(line, done, one.position - done);
        const std::size_t start = m_text.size();
        done = one.position + one.length;
        m_text.append(isBoolean(one.kind, sourceLine.substr(one.position + 1, one.length - 2)) ? u"True" : u"1");
        m_replacements.push_back({start, m_text.size(), sourceStart + one.position, sourceStart + done});
    }
    m_text.append(line, done);
}

const NeutralTemplate::Replacement* NeutralTemplate::lastBefore(std::size_t position) const
{
    const auto after = std::ranges::upper_bound(m_replacements, position, {}, &Replacement::start);
    return after == m_replacements.begin() ? nullptr : &*std::prev(after);
}

std::size_t NeutralTemplate::sourcePosition(std::size_t position) const
{
    const Replacement* last = lastBefore(position);
    if (!last)
        return position;
    return position < last->end ? last->sourceStart : last->sourceEnd + (position - last->end);
}

bool NeutralTemplate::isValue(std::size_t position) const
{
    const Replacement* last = lastBefore(position);
    return last && position <= last->end;
}

} // namespace zn
