#pragma once

#include "base/Dispatch.h"
#include "language/values/Errors.h"

#include <span>

namespace zn::language {

// The language's conversions. They differ from automation's in what they raise (`ScriptError`), in booleans as
// text ("True"), in Null, which only a Variant may hold, and in objects, which stand for their default member.

/// The value itself, or what the default member of an object says. Raises 91 for an object that is nothing.
Value plainValue(const Value& value);
/// Converts for a variable of the type. `ValueType::Variant` takes everything as it is.
Value coerce(const Value& value, ValueType type);

Text textOf(const Value& value);
/// The text that a value holds, or else `scratch` with what it becomes as one.
TextView viewOf(const Value& value, Text& scratch);
double numberOf(const Value& value);
std::int32_t longOf(const Value& value);
bool truthOf(const Value& value);
/// The object that a value holds, null for nothing. Raises 424 for anything that is no object.
DispatchRef objectOf(const Value& value);

inline bool isNull(const Value& value) { return value.type() == ValueType::Null; }
inline bool isObject(const Value& value) { return value.type() == ValueType::Dispatch; }

/// What a variable of the type holds before anything is assigned.
Value defaultValue(ValueType type);

/// Whether a value counts as a number by itself, or as text that reads as one.
bool isNumeric(const Value& value);

/// The language's name of a value's type: "String", "Integer", "Long()", an object's class, "Nothing".
Text typeNameOf(const Value& value);

/// Position of an element by its subscripts. Raises 9 when one is outside its bounds or their number is wrong.
std::size_t elementIndex(const ValueArray& array, std::span<const std::int32_t> subscripts);

/// The longest text, in units. Beyond, 14 is raised: the macro has run away.
inline constexpr std::size_t longestText = 256'000'000;

/// How an argument that the call leaves out travels.
Value missingArgument();
bool isMissingArgument(const Value& value);

} // namespace zn::language
