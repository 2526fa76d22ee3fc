#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace zn {

/// A connection to an X display with the few requests that looking after other programs' windows takes. Requests about
/// windows that have gone meanwhile give empty results.
class XcbDisplay {
public:
    /// Connects to the display that DISPLAY names; `isAlive` tells whether it worked.
    XcbDisplay();
    XcbDisplay(const XcbDisplay&) = delete;
    XcbDisplay& operator=(const XcbDisplay&) = delete;
    ~XcbDisplay();

    bool isAlive() const;
    xcb_connection_t* connection() const { return m_connection; }
    xcb_window_t root() const { return m_screen->root; }
    const xcb_screen_t& screen() const { return *m_screen; }

    xcb_atom_t atom(const char* name);
    /// Bottom to top.
    std::vector<xcb_window_t> children(xcb_window_t window);
    /// The property's 32-bit elements (windows, cardinals, atoms), empty if it is missing or of another size.
    std::vector<std::uint32_t> numbers(xcb_window_t window, const char* property);
    bool has(xcb_window_t window, const char* property);
    /// The bytes of a text property; none if it is missing. `type` gets its type.
    std::optional<std::string> bytes(xcb_window_t window, xcb_atom_t property, xcb_atom_t* type);
    /// 0 if no key has the symbol.
    xcb_keycode_t keyCode(std::uint32_t keySymbol);

    /// A client message of five numbers, sent to `target` about `window`.
    void sendMessage(xcb_window_t target, std::uint32_t mask, xcb_window_t window, const char* type,
        const std::vector<std::uint32_t>& data);
    /// Sends what was requested and drops what came back unasked, errors of vanished windows among it.
    void flush();

private:
    xcb_connection_t* m_connection;
    xcb_screen_t* m_screen = nullptr;
};

} // namespace zn
