#include "addin/files/OutputNames.h"

#include "base/Paths.h"

namespace zn {

namespace {

/// The beginning of the pattern's paths; empty if it can't be told.
Text beginningOf(const Text& pattern, const OutputPlan& plan, const OutputRecord& input)
{
    Text text = pattern;
    replaceAll(text, u"<Path>", pathFolder(input.path));
    replaceAll(text, u"<VaultPath>", plan.vaultRoot);
    replaceAll(text, u"<Filename>", pathStem(input.path));
    replaceAll(text, u"<Extension>", pathExtension(input.path).substr(pathExtension(input.path).empty() ? 0 : 1));
    // Tokens begin like this; the other characters are taken out of an output's name.
    const std::size_t end = text.find_first_of(u"<>%*?\"|");
    if (end != Text::npos && text.find(u"..", end) != Text::npos)
        return {};
    // One more character, so that a separator at the end stays.
    Text beginning = canonicalPath(text.substr(0, end) + u"x");
    beginning.pop_back();
    return beginning;
}

} // namespace

std::vector<Text> extensionsOf(TextView label)
{
    std::vector<Text> extensions;
    const std::size_t begin = label.find(u"(*.");
    const std::size_t end = label.find(u')', begin == Text::npos ? 0 : begin);
    if (begin == Text::npos || end == Text::npos)
        return extensions;
    for (const Text& pattern : split(Text(label.substr(begin + 1, end - begin - 1)), u';'))
        if (const Text one(trim(pattern)); one.starts_with(u"*."))
            extensions.push_back(one.substr(1));
    return extensions;
}

std::vector<ArkOutputNames> outputNames(const OutputPlan& plan, const SelectionRecords& inputs)
{
    const std::vector<Text> extensions = extensionsOf(plan.formatLabel);
    const Text ending = extensions.size() == 1 ? extensions.front() : Text();
    std::vector<ArkOutputNames> names;
    for (const Text& pattern : plan.patterns) {
        if (pattern.empty())
            continue;
        for (const auto& input : inputs) {
            Text beginning = beginningOf(pattern, plan, *input);
            if (isAbsolutePath(beginning))
                names.push_back({std::move(beginning), ending});
        }
    }
    return names;
}

} // namespace zn
