#include "zentrel/commands/Command.h"

#include "zentrel/model/Build.h"

namespace zentrel::commands {

void addAssemble(CLI::App& app)
{
    struct Options {
        std::filesystem::path output;
        std::vector<std::filesystem::path> parts;
        std::vector<std::filesystem::path> embedded;
    };
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("assemble", "Makes an assembly of parts");
    command->add_option("OUT", options->output, "The assembly to be written (.zenasm)")->required();
    command->add_option("PART", options->parts, "Parts and assemblies that it refers to");
    command->add_option("--virtual", options->embedded, "A part that is stored inside the assembly")
        ->type_name("PART")
        ->allow_extra_args(false);
    command->callback([options] {
        std::vector<AssembleInput> components;
        for (const auto& part : options->parts)
            components.push_back({part, false});
        for (const auto& part : options->embedded)
            components.push_back({part, true});
        if (components.empty())
            throw CLI::RequiredError("PART");
        assemble(options->output, components);
    });
}

} // namespace zentrel::commands
