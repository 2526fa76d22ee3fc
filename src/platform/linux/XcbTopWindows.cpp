#include "platform/linux/XcbTopWindows.h"

#include "platform/linux/XcbDisplay.h"

#include <algorithm>
#include <cstdlib>

namespace zn {

namespace {

constexpr std::uint32_t symbolReturn = 0xFF0D;
constexpr std::uint32_t symbolEscape = 0xFF1B;
constexpr std::uint32_t iconicState = 3;
constexpr std::uint32_t addState = 1;
constexpr std::uint32_t managerMask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;

} // namespace

class XcbTopWindows::Display : public XcbDisplay {
public:
    /// A manager that lives names itself on a window of its own; after its end its other properties stay behind.
    bool hasManager()
    {
        const auto named = numbers(root(), "_NET_SUPPORTING_WM_CHECK");
        return named.size() == 1 && numbers(named[0], "_NET_SUPPORTING_WM_CHECK") == named;
    }

    std::vector<WindowHandle> topWindows()
    {
        std::vector<WindowHandle> windows;
        if (hasManager())
            windows = numbers(root(), "_NET_CLIENT_LIST_STACKING");
        if (windows.empty())
            for (const xcb_window_t child : children(root()))
                windows.push_back(clientOf(child));
        std::reverse(windows.begin(), windows.end());
        return windows;
    }

    Text title(xcb_window_t window)
    {
        xcb_atom_t type = XCB_ATOM_NONE;
        if (const auto utf8 = bytes(window, atom("_NET_WM_NAME"), &type))
            return toText(*utf8);
        const auto plain = bytes(window, XCB_ATOM_WM_NAME, &type);
        if (!plain)
            return {};
        if (type == atom("UTF8_STRING"))
            return toText(*plain);
        // The plain text type is Latin-1, whose characters are the first 256.
        Text text;
        for (const char byte : *plain)
            text.push_back(static_cast<unsigned char>(byte));
        return text;
    }

    void sendKey(xcb_window_t window, std::uint8_t type, xcb_keycode_t code)
    {
        xcb_key_press_event_t event{};
        event.response_type = type;
        event.detail = code;
        event.time = XCB_CURRENT_TIME;
        event.root = root();
        event.event = window;
        event.same_screen = 1;
        // No mask: the event goes to the program that made the window, whichever events it has asked for.
        xcb_send_event(connection(), 0, window, 0, reinterpret_cast<const char*>(&event));
    }

    void maximize(xcb_window_t window)
    {
        xcb_map_window(connection(), window);
        if (hasManager()) {
            sendMessage(root(), managerMask, window, "_NET_WM_STATE",
                {addState, atom("_NET_WM_STATE_MAXIMIZED_VERT"), atom("_NET_WM_STATE_MAXIMIZED_HORZ")});
            return;
        }
        const std::uint32_t area[] = {0, 0, screen().width_in_pixels, screen().height_in_pixels};
        constexpr std::uint16_t parts
            = XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT;
        xcb_configure_window(connection(), window, parts, area);
    }

    void hide(xcb_window_t window)
    {
        xcb_unmap_window(connection(), window);
        // A manager takes its frame away on this message, also if the window was unmapped already.
        xcb_unmap_notify_event_t event{};
        event.response_type = XCB_UNMAP_NOTIFY;
        event.event = root();
        event.window = window;
        xcb_send_event(connection(), 0, root(), managerMask, reinterpret_cast<const char*>(&event));
    }

private:
    /// A manager without a list of clients still puts each client's window into a frame, and marks the client.
    xcb_window_t clientOf(xcb_window_t window)
    {
        if (has(window, "WM_STATE"))
            return window;
        for (const xcb_window_t child : children(window))
            if (has(child, "WM_STATE"))
                return child;
        return window;
    }
};

XcbTopWindows::XcbTopWindows() = default;
XcbTopWindows::~XcbTopWindows() = default;

XcbTopWindows::Display* XcbTopWindows::display()
{
    if (m_display && !m_display->isAlive())
        m_display.reset();
    if (!m_display && std::getenv("DISPLAY")) {
        auto opened = std::make_unique<Display>();
        if (opened->isAlive())
            m_display = std::move(opened);
    }
    return m_display.get();
}

std::vector<WindowHandle> XcbTopWindows::enumerate()
{
    const std::lock_guard lock(m_mutex);
    Display* x = display();
    return x ? x->topWindows() : std::vector<WindowHandle>();
}

std::int32_t XcbTopWindows::processId(WindowHandle window)
{
    const std::lock_guard lock(m_mutex);
    Display* x = display();
    const auto numbers = x ? x->numbers(window, "_NET_WM_PID") : std::vector<std::uint32_t>();
    return numbers.empty() ? 0 : static_cast<std::int32_t>(numbers.front());
}

Text XcbTopWindows::title(WindowHandle window, std::size_t limit)
{
    const std::lock_guard lock(m_mutex);
    Display* x = display();
    return x ? x->title(window).substr(0, limit) : Text();
}

WindowHandle XcbTopWindows::parent(WindowHandle window)
{
    const std::lock_guard lock(m_mutex);
    Display* x = display();
    const auto numbers = x ? x->numbers(window, "WM_TRANSIENT_FOR") : std::vector<std::uint32_t>();
    return numbers.empty() ? 0 : numbers.front();
}

void XcbTopWindows::postKey(WindowHandle window, int keyCode)
{
    const std::lock_guard lock(m_mutex);
    Display* x = display();
    if (!x || (keyCode != keyEnter && keyCode != keyEscape))
        return;
    const xcb_keycode_t code = x->keyCode(keyCode == keyEnter ? symbolReturn : symbolEscape);
    if (code == 0)
        return;
    x->sendKey(window, XCB_KEY_PRESS, code);
    x->sendKey(window, XCB_KEY_RELEASE, code);
    x->flush();
}

void XcbTopWindows::postClose(WindowHandle window)
{
    const std::lock_guard lock(m_mutex);
    Display* x = display();
    if (!x)
        return;
    const xcb_atom_t request = x->atom("WM_DELETE_WINDOW");
    const auto protocols = x->numbers(window, "WM_PROTOCOLS");
    if (std::find(protocols.begin(), protocols.end(), request) == protocols.end())
        return;
    x->sendMessage(window, 0, window, "WM_PROTOCOLS", {request, XCB_CURRENT_TIME});
    x->flush();
}

void XcbTopWindows::show(WindowHandle window, ShowState state)
{
    const std::lock_guard lock(m_mutex);
    Display* x = window == 0 ? nullptr : display();
    if (!x)
        return;
    switch (state) {
    case ShowState::Hide:
        x->hide(window);
        break;
    case ShowState::Maximized:
        x->maximize(window);
        break;
    case ShowState::Minimized:
        x->sendMessage(x->root(), managerMask, window, "WM_CHANGE_STATE", {iconicState});
        break;
    }
    x->flush();
}

} // namespace zn
