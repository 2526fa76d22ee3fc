#include "zentrel/formats/BuildPart.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/Read.h"
#include "zentrel/model/Container.h"

namespace zn::zentrel {

Remarks importAssembly(const std::filesystem::path& input, const std::filesystem::path& output)
{
    Remarks remarks;
    const Document document = readForeign(input, &remarks);
    if (!std::holds_alternative<AssemblyDocument>(document))
        throw DocumentError(ErrorKind::InvalidArgument,
            "The file " + quoted(input) + " holds a part without components: import it as a part (.zenprt).");
    writeDocument(document, output);
    return remarks;
}

Remarks importPart(const std::vector<ImportInput>& inputs, const std::filesystem::path& output)
{
    if (inputs.empty())
        throw DocumentError(ErrorKind::InvalidArgument, "The part " + quoted(output) + " needs at least one file.");
    Remarks remarks;
    PartDocument part;
    for (const ImportInput& input : inputs) {
        PartConfiguration configuration
            = std::move(asPart(readForeign(input.file, &remarks), input.file).configurations.front());
        if (!input.configuration.empty())
            configuration.name = input.configuration;
        part.configurations.push_back(std::move(configuration));
    }
    writeDocument(part, output);
    return remarks;
}

} // namespace zn::zentrel
