// Opens windows on the X display and writes down what happens to them, one line each, to a file:
//
//   test_windows FILE TITLE[|OWNER]...
//
// OWNER is the title of a window before it. Every line names a window as it was given: "key 36 TITLE", "released 36
// TITLE", "close TITLE", "hidden TITLE", "size 640x480 TITLE". The first line is "ready". The windows stay
// open whatever happens. Ends when it is killed or the display goes away.

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

xcb_connection_t* display = nullptr;
std::FILE* record = nullptr;
std::map<xcb_window_t, std::string> names;

xcb_atom_t atom(const std::string& name)
{
    const auto cookie = xcb_intern_atom(display, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(display, cookie, nullptr);
    const xcb_atom_t result = reply->atom;
    std::free(reply);
    return result;
}

void setNumber(xcb_window_t window, const char* property, xcb_atom_t type, std::uint32_t number)
{
    xcb_change_property(display, XCB_PROP_MODE_REPLACE, window, atom(property), type, 32, 1, &number);
}

xcb_window_t find(const std::string& title)
{
    for (const auto& [window, name] : names)
        if (name == title)
            return window;
    return XCB_NONE;
}

void openWindow(const std::string& name)
{
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(display)).data;
    const std::size_t bar = name.find('|');
    const std::string title = name.substr(0, bar);
    const xcb_window_t window = xcb_generate_id(display);
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_create_window(display, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 100, 50, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_EVENT_MASK, &events);
    // One title goes by the older property, as old programs do it.
    const bool old = title == "Microsoft Visual Basic";
    const auto property = old ? xcb_atom_t{XCB_ATOM_WM_NAME} : atom("_NET_WM_NAME");
    const auto type = old ? xcb_atom_t{XCB_ATOM_STRING} : atom("UTF8_STRING");
    xcb_change_property(display, XCB_PROP_MODE_REPLACE, window, property, type, 8,
        static_cast<std::uint32_t>(title.size()), title.data());
    setNumber(window, "_NET_WM_PID", XCB_ATOM_CARDINAL, static_cast<std::uint32_t>(::getpid()));
    setNumber(window, "WM_PROTOCOLS", XCB_ATOM_ATOM, atom("WM_DELETE_WINDOW"));
    if (bar != std::string::npos)
        setNumber(window, "WM_TRANSIENT_FOR", XCB_ATOM_WINDOW, find(name.substr(bar + 1)));
    xcb_map_window(display, window);
    names[window] = name;
}

void writeDown(const std::string& what, xcb_window_t window)
{
    std::fprintf(record, "%s %s\n", what.c_str(), names[window].c_str());
    std::fflush(record);
}

void handle(const xcb_generic_event_t* event)
{
    switch (event->response_type & 0x7F) {
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE: {
        const auto* key = reinterpret_cast<const xcb_key_press_event_t*>(event);
        const bool pressed = (event->response_type & 0x7F) == XCB_KEY_PRESS;
        writeDown((pressed ? "key " : "released ") + std::to_string(key->detail), key->event);
        break;
    }
    case XCB_CLIENT_MESSAGE: {
        const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(event);
        if (message->data.data32[0] == atom("WM_DELETE_WINDOW"))
            writeDown("close", message->window);
        break;
    }
    case XCB_UNMAP_NOTIFY:
        writeDown("hidden", reinterpret_cast<const xcb_unmap_notify_event_t*>(event)->window);
        break;
    case XCB_CONFIGURE_NOTIFY: {
        const auto* size = reinterpret_cast<const xcb_configure_notify_event_t*>(event);
        writeDown("size " + std::to_string(size->width) + "x" + std::to_string(size->height), size->window);
        break;
    }
    default:
        break;
    }
}

} // namespace

int main(int count, char** arguments)
{
    display = xcb_connect(nullptr, nullptr);
    if (count < 2 || xcb_connection_has_error(display))
        return 1;
    record = std::fopen(arguments[1], "w");
    for (int i = 2; i < count; ++i)
        openWindow(arguments[i]);
    xcb_flush(display);
    std::fprintf(record, "ready\n");
    std::fflush(record);
    while (xcb_generic_event_t* event = xcb_wait_for_event(display)) {
        handle(event);
        std::free(event);
    }
    return 0;
}
