#pragma once

#include "base/Text.h"

#include <cstdint>
#include <functional>

namespace zn {

/// `SheetMetalOptions`, the options argument of the sheet metal export: one bit a setting, some of them only with the
/// geometry. `setting` gives the integer of a variable of `sheetMetalOptions`.
std::int32_t sheetMetalBits(const std::function<std::int32_t(TextView)>& setting);

} // namespace zn
