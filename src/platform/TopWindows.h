#pragma once

#include "base/Text.h"

#include <cstdint>
#include <vector>

namespace zn {

using WindowHandle = std::uint32_t;

/// Key codes that are posted.
inline constexpr int keyEnter = 13;
inline constexpr int keyEscape = 27;

/// Show states of a window.
enum class ShowState { Hide = 0, Maximized = 3, Minimized = 6 };

/// The desktop's top-level windows. On a machine without a display there are none and every operation is a no-op.
/// A window that goes away between two calls is no failure. Used from the watcher's thread and from the run's thread.
class TopWindows {
public:
    virtual ~TopWindows() = default;

    /// From the first to the last in stacking order.
    virtual std::vector<WindowHandle> enumerate() = 0;
    /// 0 if the window doesn't tell.
    virtual std::int32_t processId(WindowHandle window) = 0;
    /// At most `limit` code units; empty if it has none or can't be read.
    virtual Text title(WindowHandle window, std::size_t limit) = 0;
    /// The owner of a dialog (or 0).
    virtual WindowHandle parent(WindowHandle window) = 0;
    /// A key-down and after it a key-up, without waiting for them to be handled.
    virtual void postKey(WindowHandle window, int keyCode) = 0;
    /// The request to close the window, as its close button makes it.
    virtual void postClose(WindowHandle window) = 0;
    virtual void show(WindowHandle window, ShowState state) = 0;
};

} // namespace zn
