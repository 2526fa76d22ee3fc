#include "zentrel/commands/Command.h"

#include "zentrel/formats/BuildPart.h"

namespace zentrel::commands {

void addImport(CLI::App& app)
{
    struct Options {
        std::filesystem::path input;
        std::filesystem::path output;
        std::vector<std::string> configurations;
    };
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("import", "Makes a part from STEP or IGES files");
    command->add_option("IN", options->input, "STEP or IGES file of the configuration \"Default\"")->required();
    command->add_option("OUT", options->output, "The part to be written (.zenprt)")->required();
    command->add_option("--configuration", options->configurations, "A further configuration and its file")
        ->type_name("NAME=IN");
    command->callback([options] {
        std::vector<ImportInput> inputs{{options->input, u"Default"}};
        for (const std::string& text : options->configurations) {
            const std::size_t sign = text.find('=');
            if (sign == 0 || sign == std::string::npos || sign + 1 == text.size())
                throw CLI::ValidationError("--configuration", "'" + text + "' must have the form NAME=IN");
            inputs.push_back({text.substr(sign + 1), zn::toText(text.substr(0, sign))});
        }
        importPart(inputs, options->output);
    });
}

} // namespace zentrel::commands
