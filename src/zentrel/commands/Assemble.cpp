#include "zentrel/commands/Command.h"

#include "zentrel/kernel/KernelChild.h"
#include "zentrel/model/Build.h"

namespace zn::zentrel::commands {

namespace {

struct Assemble {
    std::filesystem::path output;
    std::vector<std::filesystem::path> parts;
    std::vector<std::filesystem::path> embedded;

    void declare(Arguments& take)
    {
        take.option("OUT", output, "The assembly to be written (.zenasm)").required();
        take.option("PART", parts, "Parts and assemblies that it refers to");
        take.option("--virtual", embedded, "A part that is stored inside the assembly").shownAs("PART").oneAtATime();
    }

    int run() const
    {
        std::vector<AssembleInput> components;
        for (const auto& part : parts)
            components.push_back({part, false});
        for (const auto& part : embedded)
            components.push_back({part, true});
        if (components.empty())
            throw WrongUse("PART is required");
        runInChild({"laying out", output, computingLimit(components.size())}, [&] {
            assemble(output, components);
            return std::string();
        });
        return zn::commandline::done;
    }
};

} // namespace

Subcommand assembleCommand() { return subcommand<Assemble>("assemble", "Makes an assembly of parts"); }

} // namespace zn::zentrel::commands
