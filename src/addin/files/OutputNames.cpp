#include "addin/files/OutputNames.h"

#include "base/Paths.h"

namespace zn {

namespace {

/// The extension in a label such as "STL (*.stl)", with its dot; empty where there are several.
Text extensionOf(const Text& label)
{
    const std::size_t begin = label.find(u"(*.");
    const std::size_t end = label.find(u')', begin == Text::npos ? 0 : begin);
    if (begin == Text::npos || end == Text::npos)
        return {};
    const Text extension = label.substr(begin + 2, end - begin - 2);
    return extension.find(u';') == Text::npos ? extension : Text();
}

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

std::vector<ArkOutputNames> outputNames(const OutputPlan& plan, const SelectionRecords& inputs)
{
    const Text ending = extensionOf(plan.formatLabel);
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
