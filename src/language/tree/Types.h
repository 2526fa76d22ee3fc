#pragma once

#include "base/Value.h"

namespace zn::language {

/// A declared type. A record is a `Dispatch` value that holds a `Record`.
struct Type {
    ValueType base = ValueType::Variant;
    std::int16_t record = -1;     ///< index of the module's record type, or -1
    std::int32_t fixedLength = 0; ///< of a `String * n`, otherwise 0
    bool array = false;           ///< of elements of this type
    bool createsItself = false;   ///< `As New`: an object is made when the variable is first used

    bool isVariant() const { return base == ValueType::Variant && !array; }
    bool isRecord() const { return record >= 0 && !array; }
    bool isObject() const { return base == ValueType::Dispatch && record < 0 && !array; }
    Type element() const
    {
        Type type = *this;
        type.array = false;
        return type;
    }
    bool operator==(const Type&) const = default;
};

} // namespace zn::language
