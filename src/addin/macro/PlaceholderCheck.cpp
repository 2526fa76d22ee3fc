#include "addin/macro/PlaceholderCheck.h"

#include "addin/macro/Placeholders.h"
#include "addin/variables/TaskVariables.h"
#include "addin/variables/UsedVariables.h"
#include "contracts/host/ArkVault.h"

#include <algorithm>

namespace zn {

namespace {

bool holds(const std::vector<Text>& names, TextView name) { return std::ranges::find(names, name) != names.end(); }

/// The sentence about a placeholder that a run doesn't fill; empty if it does.
Text problemOf(PlaceholderKind kind, const Text& name, const PlaceholderNames& names)
{
    switch (kind) {
    case PlaceholderKind::Host:
        if (std::ranges::any_of(names.run, [&](const Text& known) { return equalNoCase(known, name); }))
            return {};
        return u"A run has no value '" + name + u"': nothing will stand here.";
    case PlaceholderKind::Task:
        if (findTaskVariable(name) || holds(names.task, name))
            return {};
        return u"The task has no variable '" + name + u"': nothing will stand here.";
    case PlaceholderKind::Card:
        if (!holds(names.card, name))
            return u"The vault has no card variable '" + name + u"'.";
        return holds(names.used, name) ? Text()
                                       : u"The task doesn't use the card variable '" + name
                + u"', so that this stays as it is. Add it to UsedVariables.";
    case PlaceholderKind::File:
        return {};
    }
    return {};
}

class Warnings {
public:
    explicit Warnings(const PlaceholderNames& names)
        : m_names(names)
    {
    }

    void addLine(TextView line, std::int32_t number)
    {
        const LinePlaceholders placeholders = findPlaceholders(line);
        for (const std::size_t position : placeholders.unclosed)
            add(number, position,
                line[position] == u'[' ? u"The \"[\" has no \"]\" in its line: a run takes everything up to the next "
                                         u"\"]\" for the name of a placeholder."
                                       : u"The \"{\" has no \"}\" in its line: a run takes everything up to the next "
                                         u"\"}\" for the name of a placeholder.");
        for (const Placeholder& one : placeholders.found) {
            const Text name(line.substr(one.position + 1, one.length - 2));
            if (Text problem = problemOf(one.kind, name, m_names); !problem.empty())
                add(number, one.position, std::move(problem));
        }
    }

    std::vector<ArkMacroWarning> take()
    {
        std::ranges::stable_sort(m_found, [](const ArkMacroWarning& a, const ArkMacroWarning& b) {
            return std::pair(a.line, a.column) < std::pair(b.line, b.column);
        });
        return std::move(m_found);
    }

private:
    void add(std::int32_t line, std::size_t position, Text sentence)
    {
        m_found.push_back({line, static_cast<std::int32_t>(position) + 1, std::move(sentence)});
    }

    const PlaceholderNames& m_names;
    std::vector<ArkMacroWarning> m_found;
};

std::vector<Text> splitNames(TextView list)
{
    std::vector<Text> names;
    for (std::size_t start = 0; start < list.size();) {
        const std::size_t end = std::min(list.find(u',', start), list.size());
        names.emplace_back(list.substr(start, end - start));
        start = end + 1;
    }
    return names;
}

/// The names that the template asks the task for and that the table doesn't have.
std::vector<Text> ownVariables(const ObjectRef& task, TextView source)
{
    std::vector<Text> names;
    for (std::size_t open = 0; (open = source.find(u'[', open)) != TextView::npos; ++open) {
        const std::size_t close = source.find_first_of(u"]\r\n", open);
        if (close == TextView::npos || source[close] != u']')
            continue;
        Text name(source.substr(open + 1, close - open - 1));
        if (!findTaskVariable(name) && readVariable(task, name))
            names.push_back(std::move(name));
    }
    return names;
}

} // namespace

std::vector<ArkMacroWarning> checkPlaceholders(TextView source, const PlaceholderNames& names)
{
    Warnings warnings(names);
    std::int32_t number = 1;
    for (std::size_t start = 0; start <= source.size(); ++number) {
        const std::size_t end = std::min(source.find_first_of(u"\r\n", start), source.size());
        warnings.addLine(source.substr(start, end - start), number);
        start = end + (source.substr(end).starts_with(u"\r\n") ? 2 : 1);
    }
    return warnings.take();
}

std::vector<ArkMacroWarning> checkScript(
    const ObjectRef& vault, const ObjectRef& task, const std::vector<Text>& runNames)
{
    const Text source = readText(task, scriptVariable).value_or(Text());
    PlaceholderNames names;
    names.run = runNames;
    names.task = ownVariables(task, source);
    names.card = ReadVaultVariables(query<IArkVault>(vault));
    names.used = splitNames(readText(task, u"UsedVariables").value_or(Text()));
    return checkPlaceholders(source, names);
}

} // namespace zn
