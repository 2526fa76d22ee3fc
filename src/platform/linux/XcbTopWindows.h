#pragma once

#include "platform/TopWindows.h"

#include <memory>
#include <mutex>

namespace zn {

/// The top-level windows of the X11 display that DISPLAY names; none while it can't be reached. Works with a window
/// manager (its list of clients, topmost first) and without one (the root's children, topmost first).
///
/// A window tells its process by _NET_WM_PID. Keys go as sent events to the program that made the window. A window
/// that doesn't take part in WM_DELETE_WINDOW is left open: the only other way, to end its connection to the
/// display, would end its whole program with all open documents.
class XcbTopWindows : public TopWindows {
public:
    XcbTopWindows();
    ~XcbTopWindows() override;

    std::vector<WindowHandle> enumerate() override;
    std::int32_t processId(WindowHandle window) override;
    Text title(WindowHandle window, std::size_t limit) override;
    WindowHandle parent(WindowHandle window) override;
    void postKey(WindowHandle window, int keyCode) override;
    void postClose(WindowHandle window) override;
    void show(WindowHandle window, ShowState state) override;

private:
    class Display;
    /// Null while there is no display. A lost connection is taken up again.
    Display* display();

    std::mutex m_mutex;
    std::unique_ptr<Display> m_display;
};

} // namespace zn
