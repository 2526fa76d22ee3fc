#pragma once

#include "base/Text.h"

#include <vector>

namespace zn::arkin {

/// One choice of a file dialog: what it is called, and which names it shows.
struct FileFilter {
    zn::Text label;
    std::vector<zn::Text> patterns; ///< with "*" and "?"; none shows every file

    bool shows(zn::TextView fileName) const;
};

/// Reads pairs of a label and patterns, all separated by "|", with or without one at the end; the patterns of a pair
/// are separated by ";". Without any pair there is one choice that shows every file.
std::vector<FileFilter> parseFilters(zn::TextView text);

} // namespace zn::arkin
