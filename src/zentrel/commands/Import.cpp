#include "zentrel/commands/Command.h"

#include "zentrel/formats/BuildPart.h"
#include "zentrel/model/Container.h"

#include <iostream>

namespace zn::zentrel::commands {

namespace {

struct Import {
    std::filesystem::path input;
    std::filesystem::path output;
    std::vector<std::string> configurations;

    void declare(Arguments& take)
    {
        take.option("IN", input, "STEP or IGES file of the configuration \"Default\"").required();
        take.option("OUT", output, "What to write: a part (.zenprt), or an assembly with the levels of IN (.zenasm)")
            .required();
        take.option("--configuration", configurations, "A further configuration and its file").shownAs("NAME=IN");
    }

    Remarks import(const std::vector<ImportInput>& inputs) const
    {
        if (kindFromExtension(output) != DocumentKind::Assembly)
            return importPart(inputs, output);
        if (!configurations.empty())
            throw WrongUse("--configuration: an assembly is made from one file");
        return importAssembly(input, output);
    }

    int run() const
    {
        std::vector<ImportInput> inputs{{input, u"Default"}};
        for (const std::string& text : configurations) {
            const std::size_t sign = text.find('=');
            if (sign == 0 || sign == std::string::npos || sign + 1 == text.size())
                throw WrongUse("--configuration: '" + text + "' must have the form NAME=IN");
            inputs.push_back({text.substr(sign + 1), zn::toText(text.substr(0, sign))});
        }
        for (const std::string& remark : import(inputs))
            std::cerr << "zentrel: " << remark << '\n';
        return zn::commandline::done;
    }
};

} // namespace

Subcommand importCommand()
{
    return subcommand<Import>("import", "Makes a part or an assembly from STEP or IGES files");
}

} // namespace zn::zentrel::commands
