#pragma once

#include "base/Value.h"

#include <vector>

namespace zn::language {

// The patterns of `Format`, one kind of value each.

/// "0", "#", ".", ",", "%", "E+00", quoted and escaped text, and up to four parts by sign, parted by ";".
Text formatNumber(double number, TextView pattern);
/// "d" to "dddddd", "m" to "mmmm", "yy", "yyyy", "h", "n", "s", "AM/PM", "q", "y", "w", "ww", "c".
Text formatDate(double days, TextView pattern);
/// "@", "&", "<", ">", "!", and a second part for no text, parted by ";".
Text formatString(const Text& text, TextView pattern);

/// Digits with a fixed number of decimals, halves away from zero, as people write them.
Text fixedNumber(double number, int decimals, bool grouped);

/// The parts of a pattern between its ";"; one at least.
std::vector<TextView> sectionsOf(TextView pattern);

/// Whether a pattern is one for texts, which shows the text of whatever is given.
bool isTextPattern(TextView pattern);
/// Whether a pattern is one for dates.
bool isDatePattern(TextView pattern);

} // namespace zn::language
