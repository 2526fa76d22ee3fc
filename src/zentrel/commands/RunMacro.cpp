#include "zentrel/commands/Command.h"

#include "zentrel/application/MacroRunner.h"
#include "zentrel/commands/Session.h"

#include <iostream>

namespace zentrel::commands {

void addRunMacro(CLI::App& app, const Common& common)
{
    struct Options {
        std::filesystem::path file;
    };
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("run-macro", "Runs the procedure \"main\" of a macro");
    command->add_option("FILE", options->file, "Macro text in the single-byte code page")->required();
    command->callback([options, &common] {
        Session session(common.home,
            {.stopRequested = {},
                .exit = {},
                .print = [](const std::string& line) { std::cout << line << '\n'; },
                .echo = true});
        const zn::Text file = session.platform().files().fromMachine(options->file);
        const MacroOutcome outcome = runMacro(*session.application(), file, u"ZNMacro1", u"main");
        std::cout << std::flush;
        if (!outcome.success)
            throw CLI::RuntimeError(1);
    });
}

} // namespace zentrel::commands
