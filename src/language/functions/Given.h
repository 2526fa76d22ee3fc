#pragma once

#include "language/functions/Intrinsic.h"
#include "language/values/Conversions.h"

namespace zn::language {

// Reading the arguments of the language's functions. An argument may be absent or marked as left out.

inline bool isGiven(Given arguments, std::size_t index)
{
    return index < arguments.size() && !isMissingArgument(arguments[index]);
}

inline Text textAt(Given arguments, std::size_t index, TextView otherwise = {})
{
    return isGiven(arguments, index) ? textOf(arguments[index]) : Text(otherwise);
}

inline std::int32_t longAt(Given arguments, std::size_t index, std::int32_t otherwise)
{
    return isGiven(arguments, index) ? longOf(arguments[index]) : otherwise;
}

/// A length, count or position that must not be below `least`. Raises 5.
inline std::size_t countAt(Given arguments, std::size_t index, std::int32_t otherwise, std::int32_t least = 0)
{
    const std::int32_t number = longAt(arguments, index, otherwise);
    if (number < least)
        raise(error::invalidCall);
    return static_cast<std::size_t>(number);
}

/// Text comparison by the argument that functions take for it: 1 ignores case, 0 doesn't, none goes by the module.
inline bool ignoresCase(Given arguments, std::size_t index, bool otherwise)
{
    const std::int32_t mode = longAt(arguments, index, -1);
    return mode < 0 ? otherwise : mode == 1;
}

} // namespace zn::language
