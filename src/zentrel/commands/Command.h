#pragma once

#include "commandline/Program.h"

#include <filesystem>

/// The subcommands of `zentrel`, one file each. Work that fails raises an exception with a sentence; a command that has
/// said all itself returns 1.
namespace zn::zentrel::commands {

using zn::commandline::Arguments;
using zn::commandline::Subcommand;
using zn::commandline::WrongUse;

/// Options that all subcommands share; read when a subcommand runs.
struct Common {
    std::filesystem::path home; ///< empty: the environment's
};

/// The subcommand of a `Work`, which has `declare(Arguments&)` and `run()`, and is made of the values.
template <typename Work, typename... Values> Subcommand subcommand(const char* name, const char* help, Values... values)
{
    const auto work = std::make_shared<Work>(Work{values...});
    return {"", name, help, [work](Arguments& take) { work->declare(take); }, [work] { return work->run(); }};
}

Subcommand importCommand();
Subcommand assembleCommand();
Subcommand drawCommand();
Subcommand infoCommand();
Subcommand pictureCommand();
Subcommand runMacroCommand(const Common& common);
Subcommand checkMacroCommand();
Subcommand registerCommand(const Common& common);
Subcommand unregisterCommand(const Common& common);

} // namespace zn::zentrel::commands
