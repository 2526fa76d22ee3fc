#pragma once

#include "base/Dispatch.h"

namespace zn {

/// The machine's table of objects that running processes have published under item names.
class RunningObjects {
public:
    virtual ~RunningObjects() = default;

    /// Whether the table itself can be reached.
    virtual bool available() = 0;
    /// The object published under `name`; null if there is none (yet).
    virtual DispatchRef lookup(TextView name) = 0;
};

} // namespace zn
