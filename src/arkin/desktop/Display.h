#pragma once

#include <string>

namespace zn::arkin {

/// Where windows can be shown.
struct Display {
    std::string platform; ///< the toolkit's name for it; "offscreen" when there is none
    std::string problem;  ///< why there is none, as a sentence; empty if there is one
};

/// Looks for a display that answers, so that the toolkit doesn't end the process on one that doesn't: the one of
/// QT_QPA_PLATFORM, else Wayland's or X11's, as the environment names them.
Display findDisplay();

} // namespace zn::arkin
