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
    /// Asks the process of an object that was looked up to end the macro that it runs; whether and when it does is its
    /// own business. Never waits. May be called from another thread than the one that waits for the macro.
    virtual void requestStop(TextView name) = 0;
};

} // namespace zn
