// ZENTREL.EXE: the CAD application as a process that another program drives. It publishes itself in the running
// object table as "Zentrel_PID_<process id>", serves the one client that comes, and ends with it.

#include "automation/SocketRunningObjects.h"
#include "base/Format.h"
#include "base/Version.h"
#include "platform/FileVersionBlock.h"
#include "zentrel/commands/LeftOverSockets.h"
#include "zentrel/commands/Session.h"

#include <csignal>
#include <cstdio>
#include <fmt/format.h>
#include <unistd.h>

ZN_FILE_VERSION(26, 0, 0, 0)

namespace {

using zn::automation::ServeEnd;

/// Who starts the process comes at once; without a client it has nothing to do.
constexpr std::chrono::seconds firstClientLimit{60};

bool isStartSwitch(const std::string& argument)
{
    const zn::Text text = zn::toText(argument);
    return zn::equalNoCase(text, u"/R") || zn::equalNoCase(text, u"/B");
}

constexpr const char* usage
    = "Usage: ZENTREL.EXE [/R | /B | --help | --version]\n"
      "Started by a program that drives it: publishes itself as \"Zentrel_PID_<process id>\" and serves that\n"
      "program to its end. /R and /B mean a start without a window.\n";

int wrongUse()
{
    fmt::print(stderr, usage);
    return 2;
}

int tell(const std::string& text)
{
    fmt::print("{}", text);
    return std::fflush(stdout) == 0 ? 0 : 1;
}

int serve()
{
    std::unique_ptr<zn::automation::ObjectServer> server;
    zn::zentrel::Session session({},
        {.stopRequested = [&] { return server && server->stopRequested(); },
            .exit = [&] { server->stop(); },
            .print = {},
            .echo = false});
    zn::automation::SocketRunningObjects table(
        session.platform().home().runtimeFolder(), {}, [&](const std::string& line) { session.log().write(line); });
    zn::zentrel::removeLeftOverSockets(session.platform().home().runtimeFolder());
    server = table.publish(zn::formatText("Zentrel_PID_%d", getpid()), session.application());
    if (server->serve(firstClientLimit) == ServeEnd::NoClient)
        session.log().write("Nobody came to use the application; it ends.");
    // The client's objects end before the application does.
    server.reset();
    return 0;
}

} // namespace

int main(int count, char** arguments)
{
    // The error output may be a pipe that nobody reads any more.
    std::signal(SIGPIPE, SIG_IGN);
    const std::string question = count == 2 ? arguments[1] : "";
    if (question == "--version")
        return tell(fmt::format("ZENTREL.EXE {}\n", zn::softwareVersion()));
    if (question == "--help")
        return tell(usage);
    for (int i = 1; i < count; ++i)
        if (!isStartSwitch(arguments[i]))
            return wrongUse();
    try {
        return serve();
    } catch (const std::exception& error) {
        fmt::print(stderr, "ZENTREL.EXE: {}\n", error.what());
        return 1;
    }
}
