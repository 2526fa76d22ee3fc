#pragma once

#include "base/Value.h"

#include <string>
#include <string_view>

namespace zn::language {

// The byte functions see a text as the bytes of its 16-bit units, the lower one first. What they make of it may have
// an odd number of bytes, which no text here has: then it is an array of bytes.

/// The bytes of a text, a byte array or anything that reads as text. Raises 13.
std::string bytesOf(const Value& value);
/// A text for an even number of bytes, an array of bytes for an odd one.
Value textOfBytes(std::string_view bytes);
/// Raises 7 for more bytes than an array may have elements.
Value byteArray(std::string_view bytes);

} // namespace zn::language
