#include "zentrel/formats/CafModel.h"
#include "zentrel/formats/Read.h"
#include "zentrel/kernel/KernelChild.h"
#include "zentrel/model/Packets.h"

#include <TopLoc_Location.hxx>

namespace zn::zentrel {

namespace {

PartDocument flattened(const Model& model)
{
    PartDocument part;
    PartConfiguration& configuration = part.configurations.emplace_back();
    configuration.name = u"Default";
    for (const PlacedBody& placed : placedBodies(model)) {
        Body& body = configuration.bodies.emplace_back(*placed.body);
        body.shape = body.shape.shape().Moved(TopLoc_Location(placed.placement));
        body.color = placed.color;
    }
    return part;
}

} // namespace

PartDocument asPart(const Document& document, const std::filesystem::path& file, const Text& configuration)
{
    if (const auto* part = std::get_if<PartDocument>(&document))
        return *part;
    const auto& assembly = std::get<AssemblyDocument>(document);
    const ModelRef model = ModelLoader().load(assembly, file, configuration);
    const KernelTask task{"making one part of", file, computingLimit(countFaces(*model))};
    PartDocument part
        = std::get<PartDocument>(unpackDocument(runInChild(task, [&] { return packDocument(flattened(*model)); })));
    part.name = assembly.name;
    part.properties = assembly.properties;
    return part;
}

} // namespace zn::zentrel
