#pragma once

#include <string_view>

namespace zn {

/// How a JSON text compares with what its kind ever has.
enum class JsonShape { Fits, TooDeep, TooMany };

/// Looks at a JSON text (UTF-8) before a parser turns it into objects, which take up to a hundred times its bytes:
/// `deepest` brackets inside one another, and `mostValues` values and names altogether. Says nothing of whether the
/// text is well-formed.
JsonShape jsonShapeOf(std::string_view text, int deepest, int mostValues);

} // namespace zn
