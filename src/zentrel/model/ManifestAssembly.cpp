#include "zentrel/model/ManifestValues.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

namespace zn::zentrel::manifest {

namespace {

Json stateJson(const ComponentState& state)
{
    Json result = Json::object();
    if (state.suppressed)
        result["suppressed"] = true;
    if (state.hidden)
        result["hidden"] = true;
    if (!state.configuration.empty())
        result["configuration"] = textJson(state.configuration);
    return result;
}

ComponentState stateFrom(const Json& json)
{
    ComponentState state;
    state.suppressed = json.value("suppressed", false);
    state.hidden = json.value("hidden", false);
    state.configuration = zn::toText(json.value("configuration", std::string()));
    return state;
}

/// The documents of virtual components, each once, those that others stand on before them.
class VirtualDocuments {
public:
    explicit VirtualDocuments(ShapeStreams& shapes)
        : m_shapes(shapes)
    {
    }

    std::size_t numberOf(const VirtualDocument& document)
    {
        if (const auto known = m_numbers.find(&document); known != m_numbers.end())
            return known->second;
        Json json
            = document.part() ? toJson(*document.part(), m_shapes) : assemblyJson(*document.assembly(), {}, *this);
        m_all.push_back(std::move(json));
        return m_numbers.emplace(&document, m_all.size() - 1).first->second;
    }

    Json componentJson(const Component& component, const std::filesystem::path& folder)
    {
        Json result = {{"name", textJson(component.name)}, {"placement", placementJson(component.placement)}};
        if (component.color)
            result["color"] = colorJson(*component.color);
        if (!component.isVirtual())
            result["path"] = storedPath(component.path, folder);
        else if (m_inPlace)
            result["part"] = toJson(*component.embedded->part(), m_shapes);
        else
            result["document"] = numberOf(*component.embedded);
        return result;
    }

    /// As version 1 has them: each part where its component stands.
    void writeInPlace() { m_inPlace = true; }
    const std::vector<Json>& all() const { return m_all; }

    static Json assemblyJson(
        const AssemblyDocument& assembly, const std::filesystem::path& folder, VirtualDocuments& documents)
    {
        Json components = Json::array();
        for (const Component& component : assembly.components)
            components.push_back(documents.componentJson(component, folder));
        Json configurations = Json::array();
        for (const AssemblyConfiguration& configuration : assembly.configurations) {
            Json states = Json::array();
            for (const ComponentState& state : configuration.states)
                states.push_back(stateJson(state));
            configurations.push_back({{"name", textJson(configuration.name)}, {"states", states},
                {"properties", propertiesJson(configuration.properties)}});
        }
        Json result = {{"active", assembly.active}, {"properties", propertiesJson(assembly.properties)},
            {"components", components}, {"configurations", configurations}};
        if (!assembly.name.empty())
            result["name"] = textJson(assembly.name);
        return result;
    }

private:
    ShapeStreams& m_shapes;
    bool m_inPlace = false;
    std::vector<Json> m_all;
    std::map<const VirtualDocument*, std::size_t> m_numbers;
};

/// Whoever walks through an assembly calls itself for each level.
constexpr std::size_t mostLevels = 1000;

using VirtualDocumentRef = std::shared_ptr<const VirtualDocument>;

/// `documents` are those that stand before whoever names them, so that none can hold itself.
Component componentFrom(const Json& json, ShapeSource& shapes, const std::filesystem::path& folder,
    const std::vector<VirtualDocumentRef>& documents)
{
    Component component;
    component.name = textFrom(json.at("name"));
    component.placement = placementFrom(json.at("placement"));
    if (json.contains("color"))
        component.color = colorFrom(json.at("color"));
    if (json.contains("part")) {
        component.embedded = std::make_shared<VirtualDocument>(VirtualDocument{partFrom(json.at("part"), shapes)});
    } else if (json.contains("document")) {
        const auto number = json.at("document").get<std::size_t>();
        if (number >= documents.size())
            throw std::invalid_argument("the component '" + zn::toUtf8(component.name) + "' has no document");
        component.embedded = documents[number];
    } else {
        component.path = resolvedPath(json.at("path").get<std::string>(), folder);
    }
    return component;
}

AssemblyDocument contentFrom(const Json& json, ShapeSource& shapes, const std::filesystem::path& folder,
    const std::vector<VirtualDocumentRef>& documents)
{
    AssemblyDocument assembly;
    assembly.name = zn::toText(json.value("name", std::string()));
    assembly.active = json.at("active").get<std::size_t>();
    assembly.properties = propertiesFrom(json.at("properties"));
    for (const Json& entry : json.at("components"))
        assembly.components.push_back(componentFrom(entry, shapes, folder, documents));
    for (const Json& entry : json.at("configurations")) {
        AssemblyConfiguration& configuration = assembly.configurations.emplace_back();
        configuration.name = textFrom(entry.at("name"));
        configuration.properties = propertiesFrom(entry.at("properties"));
        for (const Json& state : entry.at("states"))
            configuration.states.push_back(stateFrom(state));
    }
    return assembly;
}

} // namespace

bool sharesDocuments(const AssemblyDocument& assembly)
{
    std::set<const VirtualDocument*> documents;
    for (const Component& component : assembly.components)
        if (component.isVirtual()
            && (component.embedded->assembly() || !documents.insert(component.embedded.get()).second))
            return true;
    return false;
}

Json toJson(const AssemblyDocument& assembly, ShapeStreams& shapes, const std::filesystem::path& folder)
{
    VirtualDocuments documents(shapes);
    if (!sharesDocuments(assembly))
        documents.writeInPlace();
    Json result = VirtualDocuments::assemblyJson(assembly, folder, documents);
    if (!documents.all().empty())
        result["documents"] = documents.all();
    return result;
}

AssemblyDocument assemblyFrom(const Json& json, ShapeSource& shapes, const std::filesystem::path& folder)
{
    std::vector<VirtualDocumentRef> documents;
    std::vector<std::size_t> levels;
    for (const Json& entry : json.value("documents", Json::array())) {
        VirtualDocument document;
        std::size_t below = 0;
        if (entry.contains("components")) {
            document.content = contentFrom(entry, shapes, folder, documents);
            for (const Json& component : entry.at("components"))
                if (component.contains("document"))
                    below = std::max(below, levels.at(component.at("document").get<std::size_t>()));
        } else {
            document.content = partFrom(entry, shapes);
        }
        if (below >= mostLevels)
            throw std::invalid_argument(
                "its components stand on one another in more than " + std::to_string(mostLevels) + " levels");
        levels.push_back(below + 1);
        documents.push_back(std::make_shared<VirtualDocument>(std::move(document)));
    }
    AssemblyDocument assembly = contentFrom(json, shapes, folder, documents);
    check(assembly);
    return assembly;
}

} // namespace zn::zentrel::manifest
