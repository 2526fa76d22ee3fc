#include "zentrel/commands/Command.h"

#include "zentrel/application/MacroRunner.h"
#include "zentrel/commands/Session.h"

#include <iostream>

namespace zn::zentrel::commands {

namespace {

struct RunMacro {
    const Common* common;
    std::filesystem::path file = {};
    std::vector<std::filesystem::path> folders = {};
    bool trace = false;

    void declare(Arguments& take)
    {
        take.option("FILE", file, "Macro text in the single-byte code page").required();
        take.option("--confine", folders,
                "The macro reaches this folder and what is below it, and no file outside; may be given several times")
            .shownAs("DIR");
        take.flag("--trace", trace, "Show each line before it runs, and each variable that it has changed");
    }

    int run() const
    {
        const auto print = [](const std::string& line) { std::cout << line << '\n'; };
        Session session(common->home,
            {.stopRequested = {},
                .exit = {},
                .print = print,
                .trace = trace ? print : std::function<void(const std::string&)>(),
                .echo = true});
        if (!folders.empty())
            session.application()->call(u"ConfineMacros", {textArray(machinePaths(session.platform().files()))});
        const zn::Text path = session.platform().files().fromMachine(file);
        const MacroOutcome outcome = runMacro(*session.application(), path, u"ZNMacro1", u"main");
        std::cout << std::flush;
        return outcome.success ? zn::commandline::done : zn::commandline::failed;
    }

    std::vector<zn::Text> machinePaths(zn::FileSystem& files) const
    {
        std::vector<zn::Text> paths;
        for (const auto& folder : folders)
            paths.push_back(files.fromMachine(folder));
        return paths;
    }
};

} // namespace

Subcommand runMacroCommand(const Common& common)
{
    return subcommand<RunMacro>("run-macro", "Runs the procedure \"main\" of a macro", &common);
}

} // namespace zn::zentrel::commands
