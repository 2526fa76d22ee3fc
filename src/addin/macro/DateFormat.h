#pragma once

#include "base/Text.h"

namespace zn {

class Registry;

enum class DateMode {
    DateAndSeconds = 1, ///< the date and the time with seconds
    DateOnly = 2,
    DateAndMinutes = 3, ///< the date and the time without seconds
};

/// Formats a day count (days since 30 December 1899, local time) by a numbered style; an unknown number gives the long
/// form with the time. False, with `text` untouched, for 0.0, which stands for no date. A date outside the calendar
/// shows -1 in each number field.
bool FormatDate(Text& text, double dateValue, std::int32_t style, DateMode mode);

/// The user's date style for a vault, from the registry; 0 if none is set.
std::int32_t ReadDateStyle(Registry& registry, TextView vaultName);

} // namespace zn
