// Opens a window of the host's on the display of the environment, as every command with windows does. Ends with 0 once
// the window is shown with its own title, as the display has it.

#include "arkin/desktop/HostDesktop.h"

#include <cstdio>
#include <cstdlib>
#include <QTest>
#include <QWidget>
#include <xcb/xcb.h>

namespace {

std::string titleOnDisplay(const QWidget& window)
{
    xcb_connection_t* const display = xcb_connect(nullptr, nullptr);
    auto* const name = xcb_get_property_reply(display,
        xcb_get_property(display, 0, static_cast<xcb_window_t>(window.winId()), XCB_ATOM_WM_NAME, XCB_ATOM_ANY, 0, 100),
        nullptr);
    std::string title = name ? std::string(static_cast<const char*>(xcb_get_property_value(name)),
                            static_cast<std::size_t>(xcb_get_property_value_length(name)))
                             : "";
    std::free(name);
    xcb_disconnect(display);
    return title;
}

} // namespace

int main()
{
    try {
        const zn::arkin::HostDesktop desktop(zn::arkin::findDisplay(), true);
        desktop.requireDisplay();
        QWidget window;
        window.setWindowTitle("Print");
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            return 1;
        const std::string title = titleOnDisplay(window);
        if (title != "Print")
            std::fprintf(stderr, "The title is '%s'.\n", title.c_str());
        return title == "Print" ? 0 : 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
