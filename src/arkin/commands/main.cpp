#include "arkin/commands/Commands.h"

#include "arkin/store/Codes.h"
#include "commandline/Failure.h"
#include "commandline/Program.h"

namespace {

constexpr const char* footer
    = "\nEverywhere: --home DIR (or ARKIN_HOME), --vault NAME when the home has several, "
      "--json.\nExit code: 0 done, 1 the work failed, 2 wrong use, 3 runs ended and some files failed.";

void declareCommon(zn::commandline::Arguments take, zn::arkin::CommonOptions& options)
{
    take.option("--home", options.home, "Folder of database, archive, registry and runtime files");
    take.option("--vault", options.vault, "Vault to work with");
    take.flag("--json", options.json, "Print JSON");
}

int runCommand(zn::arkin::Command& command, const zn::arkin::CommonOptions& options)
{
    try {
        zn::arkin::Session session(options);
        return command.run(session);
    } catch (const zn::commandline::WrongUse&) {
        throw;
    } catch (...) {
        zn::commandline::tellFailure(
            "arkin", zn::arkin::currentFailure().sentence, zn::arkin::commandFailed, options.json);
        return zn::arkin::commandFailed;
    }
}

} // namespace

int main(int argc, char** argv)
{
    zn::commandline::Program program("arkin", "A vault of CAD files, and the tasks that work on them.", footer);
    zn::arkin::CommonOptions options;
    declareCommon(program.common(), options);
    for (const auto& group : zn::arkin::groupRows())
        program.addGroup(group.name, group.help);
    for (const auto& row : zn::arkin::commandRows()) {
        const std::shared_ptr<zn::arkin::Command> command = row.make();
        program.add({row.group, row.name, row.help, [command](auto& take) { command->declare(take); },
            [command, &options] { return runCommand(*command, options); }});
    }
    return program.run(argc, argv);
}
