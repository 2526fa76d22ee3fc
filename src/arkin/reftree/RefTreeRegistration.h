#pragma once

#include "base/Text.h"

namespace zn {
class Registry;
}

namespace zn::arkin {

inline constexpr const char16_t* refTreeClassId = u"{7B0E52C6-93D4-4F1A-8C37-2AD5106E94B8}";

/// Writes the control's keys of the class store; `library` is a backslash path. Raises `StatusError` E_ACCESSDENIED.
void registerRefTree(zn::Registry& registry, const zn::Text& library);
void unregisterRefTree(zn::Registry& registry);

} // namespace zn::arkin
