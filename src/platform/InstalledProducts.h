#pragma once

#include "base/Text.h"

#include <vector>

namespace zn {

/// What the system's installer lists as installed on this machine.
class InstalledProducts {
public:
    virtual ~InstalledProducts() = default;

    /// The products' names, such as "ZENTREL 2018 SP0.0", by their index in the installer's list. A name may come up
    /// several times. Raises `StatusError` if the list can't be read.
    virtual std::vector<Text> list() = 0;
};

} // namespace zn
