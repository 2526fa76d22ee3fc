#pragma once

#include "platform/Registry.h"

namespace zn {

/// Dots per inch of the desktop: the user's setting "LogPixels" of "Control Panel\Desktop", 96 without one.
/// Values outside 48 to 960 are no resolution of a screen and count as none.
int systemDpi(Registry& registry);

/// Edge of a square toolbar image in pixels, of `edge` pixels at 96 dots per inch.
int scaledEdge(Registry& registry, int edge);

} // namespace zn
