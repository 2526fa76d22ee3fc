#pragma once

#include "base/Value.h"

#include <vector>

namespace zn::language {

/// A value of a user-defined `Type`. A variable owns its record; assigning copies the fields.
class Record : public Object {
public:
    Record(int type, Text name, std::vector<Value> values)
        : typeIndex(type)
        , typeName(std::move(name))
        , fields(std::move(values))
    {
    }

    int typeIndex; ///< in the module's record types
    Text typeName;
    std::vector<Value> fields;
};

/// A copy that shares no array and no record with the original.
Value ownCopy(const Value& value);
/// A value to keep in a variable: arrays and records that somebody else holds too are copied.
Value ownedValue(Value value);

} // namespace zn::language
