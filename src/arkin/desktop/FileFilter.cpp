#include "arkin/desktop/FileFilter.h"

#include "arkin/desktop/frame/Texts.h"

#include <algorithm>

namespace zn::arkin {

namespace {

/// "*" stands for any letters, "?" for one. Both texts are in one case.
bool matches(zn::TextView name, zn::TextView pattern)
{
    std::size_t at = 0, want = 0, star = zn::TextView::npos, resume = 0;
    while (at < name.size()) {
        if (want < pattern.size() && (pattern[want] == u'?' || pattern[want] == name[at])) {
            ++at;
            ++want;
        } else if (want < pattern.size() && pattern[want] == u'*') {
            star = want++;
            resume = at;
        } else if (star != zn::TextView::npos) {
            want = star + 1;
            at = ++resume;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', want) == zn::TextView::npos;
}

} // namespace

bool FileFilter::shows(zn::TextView fileName) const
{
    const auto name = zn::foldCase(fileName);
    return patterns.empty()
        || std::any_of(patterns.begin(), patterns.end(), [&](const auto& pattern) { return matches(name, pattern); });
}

std::vector<FileFilter> parseFilters(zn::TextView text)
{
    std::vector<FileFilter> filters;
    const auto pieces = zn::split(text, u'|');
    for (std::size_t i = 0; i + 1 < pieces.size(); i += 2) {
        FileFilter filter{pieces[i], {}};
        for (const auto& piece : zn::split(pieces[i + 1], u';')) {
            const auto pattern = zn::foldCase(zn::trim(piece));
            if (!pattern.empty())
                filter.patterns.push_back(pattern);
        }
        // "All files" by custom, also those without an extension.
        if (std::find(filter.patterns.begin(), filter.patterns.end(), u"*.*") != filter.patterns.end())
            filter.patterns.clear();
        filters.push_back(std::move(filter));
    }
    if (filters.empty())
        filters.push_back({typed(own("All files")), {}});
    return filters;
}

} // namespace zn::arkin
