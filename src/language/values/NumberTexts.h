#pragma once

#include "base/Text.h"

#include <cstdint>

namespace zn::language {

// Texts that read as numbers without a detour by a Double, which has no more than 15 to 17 digits.

/// "&H" or "&O" (also a mere "&") with digits and perhaps "%", "&" or "^". Without a mark the number has the width that
/// it needs: 16 bits, 32 or 64, the highest of them its sign. False if the text is no such number.
bool readRadixNumber(TextView text, std::int64_t& number);

/// A whole number in decimal digits, grouped by commas or not. False also if 64 bits can't hold it.
bool readWholeNumber(TextView text, std::int64_t& number);

/// Ten-thousandths of a number in decimal digits; more than four decimals round, halves to the even neighbour.
/// False also if 64 bits can't hold them.
bool readTenThousandths(TextView text, std::int64_t& number);

/// The number with the decimals that it has, at most four.
Text textOfTenThousandths(std::int64_t number);

} // namespace zn::language
