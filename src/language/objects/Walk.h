#pragma once

#include "base/Value.h"

namespace zn::language {

/// What `_NewEnum` of a collection gives where a `For Each` shall see what comes and goes meanwhile. Other objects give
/// an array of all elements.
class Walk : public Object {
public:
    /// The next element; false behind the last.
    virtual bool next(Value& element) = 0;
};

} // namespace zn::language
