#include "zentrel/formats/BuildPart.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/Read.h"
#include "zentrel/model/Container.h"

namespace zn::zentrel {

void importPart(const std::vector<ImportInput>& inputs, const std::filesystem::path& output)
{
    if (inputs.empty())
        throw DocumentError(ErrorKind::InvalidArgument, "The part " + quoted(output) + " needs at least one file.");
    PartDocument part;
    for (const ImportInput& input : inputs) {
        PartConfiguration configuration = std::move(readForeign(input.file).configurations.front());
        if (!input.configuration.empty())
            configuration.name = input.configuration;
        part.configurations.push_back(std::move(configuration));
    }
    writeDocument(part, output);
}

} // namespace zn::zentrel
