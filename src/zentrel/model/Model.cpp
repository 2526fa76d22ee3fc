#include "zentrel/model/Model.h"

#include "contracts/documents/DocumentError.h"

#include <algorithm>
#include <BRep_Builder.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS_Compound.hxx>

namespace zn::zentrel {

namespace {

std::filesystem::path normal(const std::filesystem::path& file)
{
    return std::filesystem::absolute(file).lexically_normal();
}

/// What is placed and how many faces that has, each model walked through once.
struct Amount {
    std::size_t placed = 1;
    std::size_t faces = 0;
};

constexpr std::size_t mostPlaced = 1'000'000;
constexpr std::size_t mostFaces = 10'000'000;

Amount amountOf(const Model& model, std::map<const Model*, Amount>& known, const std::filesystem::path& file)
{
    if (const auto found = known.find(&model); found != known.end())
        return found->second;
    Amount amount;
    const auto add = [&](const Amount& more) {
        amount.placed += more.placed;
        amount.faces += more.faces;
        if (amount.placed > mostPlaced || amount.faces > mostFaces)
            throw DocumentError(ErrorKind::Unsupported,
                "The file " + quoted(file) + " is too large: it places more than " + std::to_string(mostPlaced)
                    + " bodies or " + std::to_string(mostFaces) + " faces.");
    };
    for (const Body& body : model.bodies)
        add({1, body.shape.facts().faces});
    for (const Model::Child& child : model.children)
        add(amountOf(*child.model, known, file));
    return known.emplace(&model, amount).first->second;
}

/// The model, unless it is too large for any work on it.
ModelRef bounded(ModelRef model, const std::filesystem::path& file)
{
    std::map<const Model*, Amount> known;
    amountOf(*model, known, file);
    return model;
}

Text stemOf(const std::filesystem::path& file) { return zn::toText(file.stem().string()); }

ModelRef partModel(
    const PartDocument& part, const Text& name, const Text& configuration, const std::filesystem::path& document)
{
    const PartConfiguration& chosen = part.configurations[configurationIndex(part, configuration, document)];
    auto model = std::make_shared<Model>();
    model->name = part.name.empty() ? name : part.name;
    model->bodies = chosen.bodies;
    model->color = chosen.color;
    return model;
}

/// `inherited` is what the models above give, `placing` what the child has that places the model.
void collectBodies(const Model& model, const gp_Trsf& placement, const std::optional<Color>& placing,
    const std::optional<Color>& inherited, std::vector<PlacedBody>& bodies)
{
    const std::optional<Color> color = placing ? placing : model.color ? model.color : inherited;
    for (const Body& body : model.bodies)
        bodies.push_back({&body, placement, body.color ? body.color : color});
    for (const Model::Child& child : model.children)
        collectBodies(*child.model, placement * child.placement, child.color, color, bodies);
}

} // namespace

const Document& ModelLoader::document(const std::filesystem::path& file)
{
    if (const auto known = m_documents.find(file); known != m_documents.end())
        return known->second;
    return m_documents.emplace(file, readDocument(file)).first->second;
}

ModelRef ModelLoader::load(const std::filesystem::path& file, const Text& configuration)
{
    const std::filesystem::path whole = normal(file);
    const auto key = std::pair(whole, configuration);
    if (const auto known = m_models.find(key); known != m_models.end())
        return known->second;
    const Document& found = document(whole);
    ModelRef model;
    if (const auto* part = std::get_if<PartDocument>(&found))
        model = load(*part, whole, configuration);
    else if (const auto* assembly = std::get_if<AssemblyDocument>(&found))
        model = load(*assembly, whole, configuration);
    else
        throw DocumentError(ErrorKind::Unsupported, "The file " + quoted(file) + " is a drawing, not a model.");
    m_models.emplace(key, model);
    return model;
}

ModelRef ModelLoader::load(const PartDocument& part, const std::filesystem::path& file, const Text& configuration)
{
    return bounded(partModel(part, stemOf(file), configuration, file), file);
}

ModelRef ModelLoader::load(
    const AssemblyDocument& assembly, const std::filesystem::path& file, const Text& configuration)
{
    const std::filesystem::path whole = normal(file);
    if (std::find(m_open.begin(), m_open.end(), whole) != m_open.end())
        throw DocumentError(ErrorKind::Damaged, "The assembly " + quoted(whole) + " contains itself.");
    m_open.push_back(whole);
    // An exception ends the operation that this loader serves, but the loader may be asked for another file.
    struct Leave {
        std::vector<std::filesystem::path>& open;
        ~Leave() { open.pop_back(); }
    } leave{m_open};

    return bounded(assemblyModel(assembly, whole, stemOf(whole), configuration), whole);
}

ModelRef ModelLoader::assemblyModel(
    const AssemblyDocument& assembly, const std::filesystem::path& file, const Text& name, const Text& configuration)
{
    const AssemblyConfiguration& chosen = assembly.configurations[configurationIndex(assembly, configuration, file)];
    auto model = std::make_shared<Model>();
    model->name = assembly.name.empty() ? name : assembly.name;
    for (std::size_t index = 0; index < assembly.components.size(); ++index) {
        const Component& component = assembly.components[index];
        const ComponentState& state = chosen.states[index];
        if (!state.suppressed && !state.hidden)
            model->children.push_back({component.name, component.placement, childModel(component, state, file),
                component.color, component.isVirtual()});
    }
    return model;
}

ModelRef ModelLoader::childModel(
    const Component& component, const ComponentState& state, const std::filesystem::path& assembly)
{
    if (!component.isVirtual())
        return load(component.path, state.configuration);
    const PartDocument* part = component.embedded->part();
    const Text& own = part ? part->name : component.embedded->assembly()->name;
    const VirtualKey key(component.embedded, state.configuration, own.empty() ? component.name : own);
    if (const auto known = m_virtual.find(key); known != m_virtual.end())
        return known->second;
    ModelRef model = part
        ? partModel(*part, component.name, state.configuration, assembly)
        : assemblyModel(*component.embedded->assembly(), assembly, component.name, state.configuration);
    m_virtual.emplace(key, model);
    return model;
}

TopoDS_Shape compoundOf(const Model& model)
{
    const std::vector<PlacedBody> bodies = placedBodies(model);
    if (bodies.empty())
        return {};
    TopoDS_Compound compound;
    BRep_Builder builder;
    builder.MakeCompound(compound);
    for (const PlacedBody& placed : bodies)
        builder.Add(compound, placed.body->shape.shape().Moved(TopLoc_Location(placed.placement)));
    return compound;
}

std::vector<PlacedBody> placedBodies(const Model& model)
{
    std::vector<PlacedBody> bodies;
    collectBodies(model, gp_Trsf(), {}, {}, bodies);
    return bodies;
}

} // namespace zn::zentrel
