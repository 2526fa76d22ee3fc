#include "arkin/desktop/Display.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <QLibraryInfo>
#include <QPluginLoader>
#include <string_view>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <xcb/xcb.h>

namespace zn::arkin {

namespace {

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

Display none(std::string problem) { return {"offscreen", std::move(problem), {}}; }

/// The toolkit's plugin for a kind of display, which may be missing or lack a library of its own. Empty if it loads.
std::string pluginProblem(const std::string& platform)
{
    const auto folder = QLibraryInfo::path(QLibraryInfo::PluginsPath) + "/platforms/";
    QPluginLoader loader(folder + "libq" + QString::fromStdString(platform) + ".so");
    return loader.load() ? "" : loader.errorString().toStdString();
}

constexpr int connectionAttempts = 20;
constexpr std::chrono::milliseconds betweenAttempts{100};

/// A connection whose first question the server has answered; null if there is none.
std::shared_ptr<void> connectX11()
{
    std::shared_ptr<xcb_connection_t> connection(xcb_connect(nullptr, nullptr), xcb_disconnect);
    const auto asked = xcb_get_input_focus(connection.get());
    std::free(xcb_get_input_focus_reply(connection.get(), asked, nullptr));
    return xcb_connection_has_error(connection.get()) == 0 ? connection : nullptr;
}

/// Whether somebody listens where the display's local clients go.
bool isListening(const std::string& display)
{
    const auto number = display.substr(0, display.find('.'));
    std::error_code ignored;
    return number.starts_with(':') && std::filesystem::exists("/tmp/.X11-unix/X" + number.substr(1), ignored);
}

bool answersWayland(const std::string& name)
{
    const auto path = name.starts_with('/') ? name : environment("XDG_RUNTIME_DIR") + "/" + name;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path)
        return false;
    path.copy(address.sun_path, path.size());
    const int handle = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool alive = handle >= 0 && connect(handle, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    if (handle >= 0)
        close(handle);
    return alive;
}

Display x11()
{
    const auto name = environment("DISPLAY");
    if (name.empty())
        return none("There is no display here: neither DISPLAY nor WAYLAND_DISPLAY is set.");
    auto connection = connectX11();
    for (int attempt = 1; !connection && attempt < connectionAttempts && isListening(name); ++attempt) {
        std::this_thread::sleep_for(betweenAttempts);
        connection = connectX11();
    }
    if (!connection)
        return none("The display '" + name + "' can't be reached.");
    if (const auto problem = pluginProblem("xcb"); !problem.empty())
        return none("The toolkit can't use the display '" + name + "': " + problem);
    return {"xcb", {}, std::move(connection)};
}

Display chosen(const std::string& platform)
{
    if (platform.starts_with("offscreen") || platform.starts_with("minimal"))
        return none("QT_QPA_PLATFORM is '" + platform + "', which shows no windows.");
    if (platform.starts_with("xcb"))
        return x11();
    if (platform.starts_with("wayland") && !answersWayland(environment("WAYLAND_DISPLAY")))
        return none("The display '" + environment("WAYLAND_DISPLAY") + "' can't be reached.");
    return {platform, {}, {}};
}

} // namespace

Display findDisplay()
{
    if (const auto platform = environment("QT_QPA_PLATFORM"); !platform.empty())
        return chosen(platform);
    const auto wayland = environment("WAYLAND_DISPLAY");
    if (!wayland.empty() && answersWayland(wayland) && pluginProblem("wayland-generic").empty())
        return {"wayland", {}, {}};
    return x11();
}

} // namespace zn::arkin
