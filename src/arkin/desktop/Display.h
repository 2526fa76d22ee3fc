#pragma once

#include <memory>
#include <string>

namespace zn::arkin {

/// Where windows can be shown.
struct Display {
    std::string platform; ///< the toolkit's name for it; "offscreen" when there is none
    std::string problem;  ///< why there is none, as a sentence; empty if there is one
    /// A connection with the display, to be kept until the toolkit has its own: an X server starts anew, or ends, when
    /// its last client goes, and breaks the connections that come in that moment.
    std::shared_ptr<void> connection = {};
};

/// Looks for a display that answers, so that the toolkit doesn't end the process on one that doesn't: the one of
/// QT_QPA_PLATFORM, else Wayland's or X11's, as the environment names them. A server that is just starting anew is
/// waited for, for two seconds at most.
Display findDisplay();

} // namespace zn::arkin
