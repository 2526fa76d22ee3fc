#include "platform/linux/XcbDisplay.h"

#include <cstdlib>
#include <cstring>
#include <memory>

namespace zn {

namespace {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <class T> using Reply = std::unique_ptr<T, FreeReply>;

/// In 32-bit units: far more than any list of windows or title has.
constexpr std::uint32_t longestProperty = 1 << 16;

Reply<xcb_get_property_reply_t> readProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property)
{
    const auto cookie = xcb_get_property(connection, 0, window, property, XCB_ATOM_ANY, 0, longestProperty);
    return Reply<xcb_get_property_reply_t>(xcb_get_property_reply(connection, cookie, nullptr));
}

} // namespace

XcbDisplay::XcbDisplay()
{
    int number = 0;
    m_connection = xcb_connect(nullptr, &number);
    if (!isAlive())
        return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
    for (; screens.rem > 1 && number > 0; --number)
        xcb_screen_next(&screens);
    m_screen = screens.data;
}

XcbDisplay::~XcbDisplay() { xcb_disconnect(m_connection); }

bool XcbDisplay::isAlive() const { return xcb_connection_has_error(m_connection) == 0; }

xcb_atom_t XcbDisplay::atom(const char* name)
{
    const auto cookie = xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::vector<xcb_window_t> XcbDisplay::children(xcb_window_t window)
{
    const Reply<xcb_query_tree_reply_t> reply(
        xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
    if (!reply)
        return {};
    const xcb_window_t* first = xcb_query_tree_children(reply.get());
    return std::vector<xcb_window_t>(first, first + xcb_query_tree_children_length(reply.get()));
}

std::vector<std::uint32_t> XcbDisplay::numbers(xcb_window_t window, const char* property)
{
    const auto reply = readProperty(m_connection, window, atom(property));
    if (!reply || reply->format != 32)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return std::vector<std::uint32_t>(first, first + reply->value_len);
}

bool XcbDisplay::has(xcb_window_t window, const char* property)
{
    const auto reply = readProperty(m_connection, window, atom(property));
    return reply && reply->type != XCB_ATOM_NONE;
}

std::optional<std::string> XcbDisplay::bytes(xcb_window_t window, xcb_atom_t property, xcb_atom_t* type)
{
    const auto reply = readProperty(m_connection, window, property);
    if (!reply || reply->type == XCB_ATOM_NONE || reply->format != 8)
        return std::nullopt;
    *type = reply->type;
    const auto* first = static_cast<const char*>(xcb_get_property_value(reply.get()));
    return std::string(first, reply->value_len);
}

xcb_keycode_t XcbDisplay::keyCode(std::uint32_t keySymbol)
{
    const xcb_setup_t* setup = xcb_get_setup(m_connection);
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto cookie = xcb_get_keyboard_mapping(m_connection, setup->min_keycode, count);
    const Reply<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(m_connection, cookie, nullptr));
    if (!reply || reply->keysyms_per_keycode == 0)
        return 0;
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    const int length = xcb_get_keyboard_mapping_keysyms_length(reply.get());
    for (int i = 0; i < length; ++i)
        if (symbols[i] == keySymbol)
            return static_cast<xcb_keycode_t>(setup->min_keycode + i / reply->keysyms_per_keycode);
    return 0;
}

void XcbDisplay::sendMessage(xcb_window_t target, std::uint32_t mask, xcb_window_t window, const char* type,
    const std::vector<std::uint32_t>& data)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(type);
    for (std::size_t i = 0; i < data.size() && i < 5; ++i)
        event.data.data32[i] = data[i];
    xcb_send_event(m_connection, 0, target, mask, reinterpret_cast<const char*>(&event));
}

void XcbDisplay::flush()
{
    xcb_flush(m_connection);
    while (void* event = xcb_poll_for_event(m_connection))
        std::free(event);
}

} // namespace zn
