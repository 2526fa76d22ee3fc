#pragma once

#include "base/Text.h"
#include "platform/Platform.h"

#include <cstdint>
#include <optional>

namespace zn {

/// Whether the CAD application saves such a file under such an extension, as its registration tells; it isn't started
/// for that. None where it isn't registered or tells nothing of that kind of file. `year` is a release such as 2018, or
/// 0 for the machine's default; `extension` has its dot.
std::optional<bool> savesAs(const Platform& platform, std::int32_t year, TextView file, TextView extension);

} // namespace zn
