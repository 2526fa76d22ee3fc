#pragma once

#include "base/Text.h"

namespace zn {

/// A version of the CAD application, for the script page's list.
struct CadVersion {
    Text label;        ///< "ZENTREL 2018"
    std::int32_t year; ///< 0 for the default
    bool operator==(const CadVersion&) const = default;
};

/// The versions among the installer's product names, each once, in the order of the names.
std::vector<CadVersion> cadVersions(const std::vector<Text>& productNames);

} // namespace zn
