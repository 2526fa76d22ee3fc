#include "zentrel/model/Describe.h"

#include "zentrel/model/Bounds.h"

#include <algorithm>
#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>

namespace zn::zentrel {

namespace {

double volumeOf(const TopoDS_Shape& shape)
{
    double volume = 0.0;
    for (TopExp_Explorer solids(shape, TopAbs_SOLID); solids.More(); solids.Next()) {
        GProp_GProps properties;
        BRepGProp::VolumeProperties(solids.Current(), properties);
        volume += properties.Mass();
    }
    return volume;
}

double areaOf(const TopoDS_Shape& shape)
{
    GProp_GProps properties;
    BRepGProp::SurfaceProperties(shape, properties);
    return properties.Mass();
}

void count(std::vector<PartCount>& counts, const Text& name)
{
    const auto known
        = std::find_if(counts.begin(), counts.end(), [&](const PartCount& one) { return one.name == name; });
    if (known == counts.end())
        counts.push_back({name, 1});
    else
        ++known->count;
}

void countParts(const Model& model, std::vector<std::pair<const Model*, std::size_t>>& counts)
{
    for (const Model::Child& child : model.children) {
        if (child.model->bodies.empty()) {
            countParts(*child.model, counts);
            continue;
        }
        const auto known = std::find_if(
            counts.begin(), counts.end(), [&](const auto& count) { return count.first == child.model.get(); });
        if (known == counts.end())
            counts.emplace_back(child.model.get(), 1);
        else
            ++known->second;
    }
}

std::vector<PartCount> partsOf(const Model& model)
{
    std::vector<std::pair<const Model*, std::size_t>> counts;
    countParts(model, counts);
    std::vector<PartCount> parts;
    parts.reserve(counts.size());
    for (const auto& [part, count] : counts)
        parts.push_back({part->name, count});
    return parts;
}

ConfigurationInfo configurationInfo(const Text& name, const Properties& properties, const Model& model)
{
    ConfigurationInfo info;
    info.name = name;
    info.properties = properties;
    for (const PlacedBody& placed : placedBodies(model)) {
        TopTools_IndexedMapOfShape faces;
        TopExp::MapShapes(placed.body->shape, TopAbs_FACE, faces);
        ++info.bodies;
        info.faces += static_cast<std::size_t>(faces.Extent());
        info.volume += volumeOf(placed.body->shape);
        info.area += areaOf(placed.body->shape);
        count(info.bodyNames, placed.body->name);
    }
    info.parts = partsOf(model);
    const Bnd_Box box = boundsOf(model);
    if (!box.IsVoid() && !box.IsOpen()) {
        const gp_XYZ size = box.CornerMax().XYZ() - box.CornerMin().XYZ();
        info.size = {size.X(), size.Y(), size.Z()};
    }
    return info;
}

template <class ModelDocument>
void describeConfigurations(DocumentInfo& info, const ModelDocument& document, const std::filesystem::path& file)
{
    ModelLoader loader;
    info.active = document.configurations[document.active].name;
    for (const auto& configuration : document.configurations)
        info.configurations.push_back(configurationInfo(
            configuration.name, configuration.properties, *loader.load(document, file, configuration.name)));
}

void describeContent(DocumentInfo& info, const PartDocument& part, const std::filesystem::path& file)
{
    describeConfigurations(info, part, file);
}

void describeContent(DocumentInfo& info, const AssemblyDocument& assembly, const std::filesystem::path& file)
{
    bool complete = true;
    for (const Component& component : assembly.components) {
        ComponentInfo& entry = info.components.emplace_back();
        entry.name = component.name;
        entry.path = component.path;
        entry.isVirtual = component.isVirtual();
        entry.isMissing = !entry.isVirtual && !std::filesystem::exists(component.path);
        complete = complete && !entry.isMissing;
    }
    if (complete) {
        describeConfigurations(info, assembly, file);
        return;
    }
    info.active = assembly.configurations[assembly.active].name;
    for (const AssemblyConfiguration& configuration : assembly.configurations)
        info.configurations.push_back(configurationInfo(configuration.name, configuration.properties, Model()));
}

void describeContent(DocumentInfo& info, const DrawingDocument& drawing, const std::filesystem::path&)
{
    info.active = drawing.sheets[drawing.active].name;
    for (const Sheet& sheet : drawing.sheets) {
        SheetInfo& entry = info.sheets.emplace_back();
        entry.name = sheet.name;
        entry.paper = sheet.paper;
        entry.landscape = sheet.landscape;
        entry.scale = sheet.scale;
        for (const View& view : sheet.views) {
            if (std::find(entry.models.begin(), entry.models.end(), view.model) == entry.models.end())
                entry.models.push_back(view.model);
        }
    }
}

} // namespace

DocumentInfo describe(const std::filesystem::path& file)
{
    DocumentInfo info = describe(readDocument(file), file);
    info.version = readContainerInfo(file).version;
    return info;
}

DocumentInfo describe(const Document& document, const std::filesystem::path& file)
{
    DocumentInfo info;
    info.kind = static_cast<DocumentKind>(document.index() + 1);
    std::visit(
        [&](const auto& content) {
            info.properties = content.properties;
            describeContent(info, content, file);
        },
        document);
    return info;
}

} // namespace zn::zentrel
