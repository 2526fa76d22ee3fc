#pragma once

#include "base/Text.h"

#include <cstdint>
#include <optional>

namespace zn {

// Lengths of time that people choose, in whole seconds.

/// "90 seconds", "10 minutes", "1 hour": in the largest unit that leaves no rest.
Text durationText(std::int32_t seconds);

/// Seconds from a whole number with a unit: "90s", "10m", "2h", with or without a blank, in any case; 0 needs none.
/// None for anything else, and for more than 30 days.
std::optional<std::int32_t> durationOf(TextView text);

} // namespace zn
