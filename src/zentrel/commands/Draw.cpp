#include "zentrel/commands/Command.h"

#include "zentrel/kernel/KernelChild.h"
#include "zentrel/model/Build.h"

#include <regex>

namespace zn::zentrel::commands {

namespace {

DrawInput sheetOf(const std::string& text)
{
    // The paper's names tell where the sheet's name ends, which may hold colons itself.
    static const std::regex form("(.+?):([A-Ea-e]|[Aa][0-4])(:landscape)?=(.+)");
    std::smatch parts;
    if (!std::regex_match(text, parts, form))
        throw WrongUse("--sheet: '" + text
            + "' must have the form NAME:SIZE[:landscape]=MODEL, with a size of A to E or A0 to A4");
    return {.name = zn::toText(parts[1].str()),
        .paper = paperFromName(zn::toText(parts[2].str())).value(),
        .landscape = parts[3].matched,
        .model = parts[4].str(),
        .configuration = {}};
}

struct Draw {
    std::filesystem::path output;
    std::vector<std::string> sheets;

    void declare(Arguments& take)
    {
        take.option("OUT", output, "The drawing to be written (.zendrw)").required();
        take.option("--sheet", sheets, "A sheet and the model that it shows")
            .shownAs("NAME:SIZE[:landscape]=MODEL")
            .required();
    }

    int run() const
    {
        std::vector<DrawInput> inputs;
        for (const std::string& text : sheets)
            inputs.push_back(sheetOf(text));
        runInChild({"laying out", output, computingLimit(inputs.size())}, [&] {
            draw(output, inputs);
            return std::string();
        });
        return zn::commandline::done;
    }
};

} // namespace

Subcommand drawCommand() { return subcommand<Draw>("draw", "Makes a drawing with views of parts and assemblies"); }

} // namespace zn::zentrel::commands
