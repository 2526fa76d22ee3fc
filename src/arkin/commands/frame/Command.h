#pragma once

#include "arkin/commands/frame/Session.h"
#include "commandline/Program.h"

#include <memory>

namespace zn::arkin {

using zn::commandline::Arguments;

/// What a subcommand ends with; the program's exit code. Wrong use is found before a command runs.
inline constexpr int commandDone = zn::commandline::done;
inline constexpr int commandFailed = zn::commandline::failed;
inline constexpr int commandDoneInPart = 3; ///< runs have ended, and some of their files went well and some didn't

/// One subcommand. A failure that concerns all of it is raised as `StatusError` with a sentence.
class Command {
public:
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;

    /// Adds arguments and options, which write to members of the command.
    virtual void declare(Arguments& take) = 0;
    virtual int run(Session& session) = 0;
};

/// How `commandRows` makes a command.
using CommandFactory = std::unique_ptr<Command> (*)();

} // namespace zn::arkin
