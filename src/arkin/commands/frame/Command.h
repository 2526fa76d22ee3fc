#pragma once

#include "arkin/commands/frame/Session.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace arkin {

/// What a subcommand ends with; the program's exit code. Wrong use, 2, is found before a command runs.
inline constexpr int commandDone = 0;
inline constexpr int commandFailed = 1;

/// One subcommand. A failure that concerns all of it is raised as `StatusError` with a sentence.
class Command {
public:
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;

    /// Adds arguments and options, which write to members of the command.
    virtual void declare(CLI::App& app) = 0;
    virtual int run(Session& session) = 0;
};

/// How `commandRows` makes a command.
using CommandFactory = std::unique_ptr<Command> (*)();

} // namespace arkin
