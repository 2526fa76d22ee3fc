// zentrel: makes and shows CAD documents, checks and runs macros, and registers the CAD application.

#include "zentrel/commands/Command.h"

#include <iostream>

namespace {

using namespace zn::zentrel::commands;

int runCommand(const Subcommand& command)
{
    try {
        return command.run();
    } catch (const WrongUse&) {
        throw;
    } catch (const std::exception& error) {
        std::cerr << "zentrel: " << error.what() << '\n';
        return zn::commandline::failed;
    }
}

} // namespace

int main(int count, char** arguments)
{
    zn::commandline::Program program("zentrel", "Makes and shows ZENTREL documents, checks and runs macros.",
        "\nExit code: 0 done, 1 the work failed, 2 wrong use.");
    Common common;
    program.common()
        .option("--home", common.home, "Folder of registry and runtime files (default: ARKIN_HOME, or the desktop's)")
        .shownAs("DIR");
    for (const auto& command : {importCommand(), assembleCommand(), drawCommand(), infoCommand(), pictureCommand(),
             runMacroCommand(common), checkMacroCommand(), registerCommand(common), unregisterCommand(common)}) {
        auto guarded = command;
        guarded.run = [command] { return runCommand(command); };
        program.add(std::move(guarded));
    }
    return program.run(count, arguments);
}
