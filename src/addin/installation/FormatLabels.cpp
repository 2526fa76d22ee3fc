#include "addin/installation/FormatLabels.h"

#include "addin/installation/ProductTexts.h"
#include "platform/Platform.h"

#include <algorithm>

namespace zn {

const OutputFormat* findFormatInAnyLanguage(const Platform& platform, TextView label)
{
    const OutputFormat* english = findOutputFormat(label);
    if (english || label.empty())
        return english;
    for (const OutputFormat& format : outputFormats()) {
        const auto labels
            = productTextInAllLanguages(platform.registry, platform.files, {format.stringNumber, format.label});
        if (std::ranges::any_of(labels, [&](const Text& each) { return equalNoCase(each, label); }))
            return &format;
    }
    return nullptr;
}

} // namespace zn
