#include "zentrel/commands/Command.h"

#include "zentrel/model/Build.h"

#include <regex>

namespace zentrel::commands {

namespace {

DrawInput sheetOf(const std::string& text)
{
    // The paper's names tell where the sheet's name ends, which may hold colons itself.
    static const std::regex form("(.+?):([A-Ea-e]|[Aa][0-4])(:landscape)?=(.+)");
    std::smatch parts;
    if (!std::regex_match(text, parts, form))
        throw CLI::ValidationError("--sheet",
            "'" + text + "' must have the form NAME:SIZE[:landscape]=MODEL, with a size of A to E or A0 to A4");
    return {.name = zn::toText(parts[1].str()),
        .paper = paperFromName(zn::toText(parts[2].str())).value(),
        .landscape = parts[3].matched,
        .model = parts[4].str(),
        .configuration = {}};
}

} // namespace

void addDraw(CLI::App& app)
{
    struct Options {
        std::filesystem::path output;
        std::vector<std::string> sheets;
    };
    auto options = std::make_shared<Options>();
    CLI::App* command = app.add_subcommand("draw", "Makes a drawing with views of parts and assemblies");
    command->add_option("OUT", options->output, "The drawing to be written (.zendrw)")->required();
    command->add_option("--sheet", options->sheets, "A sheet and the model that it shows")
        ->type_name("NAME:SIZE[:landscape]=MODEL")
        ->required();
    command->callback([options] {
        std::vector<DrawInput> sheets;
        for (const std::string& text : options->sheets)
            sheets.push_back(sheetOf(text));
        draw(options->output, sheets);
    });
}

} // namespace zentrel::commands
