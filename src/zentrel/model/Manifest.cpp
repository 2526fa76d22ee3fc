#include "zentrel/model/Manifest.h"
#include <cmath>

#include <nlohmann/json.hpp>
#include <Standard_Failure.hxx>
#include <stdexcept>

namespace zn::zentrel::manifest {

namespace {

constexpr std::pair<DocumentKind, const char*> formats[] = {
    {DocumentKind::Part, "zentrel-part"},
    {DocumentKind::Assembly, "zentrel-assembly"},
    {DocumentKind::Drawing, "zentrel-drawing"},
};

Json textJson(const Text& text) { return zn::toUtf8(text); }

Text textFrom(const Json& json) { return zn::toText(json.get<std::string>()); }

Json propertiesJson(const Properties& properties)
{
    Json result = Json::object();
    for (const auto& [name, value] : properties)
        result[zn::toUtf8(name)] = zn::toUtf8(value);
    return result;
}

Properties propertiesFrom(const Json& json)
{
    Properties result;
    for (const auto& [name, value] : json.items())
        result[zn::toText(name)] = textFrom(value);
    return result;
}

Json colorJson(const Color& color) { return {color.red, color.green, color.blue}; }

Color colorFrom(const Json& json)
{
    return {json.at(0).get<double>(), json.at(1).get<double>(), json.at(2).get<double>()};
}

Json directionJson(const gp_Dir& direction) { return {direction.X(), direction.Y(), direction.Z()}; }

gp_Dir directionFrom(const Json& json)
{
    const gp_XYZ xyz(json.at(0).get<double>(), json.at(1).get<double>(), json.at(2).get<double>());
    if (!(xyz.Modulus() > 1e-12))
        throw std::invalid_argument("a view has no direction");
    return gp_Dir(xyz);
}

Json placementJson(const gp_Trsf& placement)
{
    Json rows = Json::array();
    for (int row = 1; row <= 3; ++row) {
        Json values = Json::array();
        for (int column = 1; column <= 4; ++column)
            values.push_back(placement.Value(row, column));
        rows.push_back(values);
    }
    return rows;
}

void checkRigid(const gp_Trsf& placement)
{
    if (std::abs(placement.ScaleFactor() - 1.0) > 1e-9 || placement.IsNegative())
        throw std::invalid_argument("a component's placement scales or mirrors");
}

gp_Trsf placementFrom(const Json& json)
{
    double v[3][4];
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 4; ++column)
            v[row][column] = json.at(row).at(column).get<double>();
    }
    gp_Trsf placement;
    try {
        placement.SetValues(
            v[0][0], v[0][1], v[0][2], v[0][3], v[1][0], v[1][1], v[1][2], v[1][3], v[2][0], v[2][1], v[2][2], v[2][3]);
    } catch (const Standard_Failure&) {
        throw std::invalid_argument("a component's placement is no placement");
    }
    // Reading the matrix gives a scale of 1 but for rounding, which the kernel would take for a scaled shape.
    checkRigid(placement);
    placement.SetScaleFactor(1.0);
    return placement;
}

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

Json componentJson(const Component& component, ShapeStreams& shapes, const std::filesystem::path& folder)
{
    Json result = {{"name", textJson(component.name)}, {"placement", placementJson(component.placement)}};
    if (component.isVirtual())
        result["part"] = toJson(*component.embedded, shapes);
    else
        result["path"] = storedPath(component.path, folder);
    return result;
}

Component componentFrom(const Json& json, ShapeSource& shapes, const std::filesystem::path& folder)
{
    Component component;
    component.name = textFrom(json.at("name"));
    component.placement = placementFrom(json.at("placement"));
    if (json.contains("part"))
        component.embedded = std::make_shared<PartDocument>(partFrom(json.at("part"), shapes));
    else
        component.path = resolvedPath(json.at("path").get<std::string>(), folder);
    return component;
}

Json viewJson(const View& view, const std::filesystem::path& folder)
{
    return {{"name", textJson(view.name)}, {"model", storedPath(view.model, folder)},
        {"configuration", textJson(view.configuration)}, {"direction", directionJson(view.direction)},
        {"up", directionJson(view.up)}, {"x", view.x}, {"y", view.y}, {"scale", view.scale},
        {"hiddenLines", view.hiddenLines}};
}

View viewFrom(const Json& json, const std::filesystem::path& folder)
{
    View view;
    view.name = textFrom(json.at("name"));
    view.model = resolvedPath(json.at("model").get<std::string>(), folder);
    view.configuration = textFrom(json.at("configuration"));
    view.direction = directionFrom(json.at("direction"));
    view.up = directionFrom(json.at("up"));
    view.x = json.at("x").get<double>();
    view.y = json.at("y").get<double>();
    view.scale = json.at("scale").get<double>();
    view.hiddenLines = json.at("hiddenLines").get<bool>();
    return view;
}

} // namespace

Json bodyJson(const Body& body, ShapeStreams& shapes)
{
    Json result = {{"name", textJson(body.name)}, {"shape", shapes.nameOf(body.shape)}};
    if (body.sound)
        result["sound"] = true;
    if (body.color)
        result["color"] = colorJson(*body.color);
    if (!body.faceColors.empty()) {
        Json& colors = result["faceColors"] = Json::array();
        for (const auto& [face, color] : body.faceColors)
            colors.push_back({{"face", face}, {"color", colorJson(color)}});
    }
    return result;
}

Body bodyFrom(const Json& json, ShapeSource& shapes)
{
    Body body;
    body.name = textFrom(json.at("name"));
    body.shape = shapes.geometry(json.at("shape").get<std::string>());
    body.sound = json.value("sound", false);
    if (json.contains("color"))
        body.color = colorFrom(json.at("color"));
    if (json.contains("faceColors")) {
        for (const Json& entry : json.at("faceColors"))
            body.faceColors[entry.at("face").get<int>()] = colorFrom(entry.at("color"));
    }
    return body;
}

const char* formatName(DocumentKind kind)
{
    for (const auto& [known, name] : formats) {
        if (known == kind)
            return name;
    }
    throw std::invalid_argument("it is of no kind");
}

std::optional<DocumentKind> kindOfFormat(const std::string& format)
{
    for (const auto& [kind, name] : formats) {
        if (format == name)
            return kind;
    }
    return {};
}

Json toJson(const PartDocument& part, ShapeStreams& shapes)
{
    Json configurations = Json::array();
    for (const PartConfiguration& configuration : part.configurations) {
        Json bodies = Json::array();
        for (const Body& body : configuration.bodies)
            bodies.push_back(bodyJson(body, shapes));
        configurations.push_back({{"name", textJson(configuration.name)}, {"bodies", bodies},
            {"properties", propertiesJson(configuration.properties)}});
    }
    return {
        {"active", part.active}, {"properties", propertiesJson(part.properties)}, {"configurations", configurations}};
}

PartDocument partFrom(const Json& json, ShapeSource& shapes)
{
    PartDocument part;
    part.active = json.at("active").get<std::size_t>();
    part.properties = propertiesFrom(json.at("properties"));
    for (const Json& entry : json.at("configurations")) {
        PartConfiguration& configuration = part.configurations.emplace_back();
        configuration.name = textFrom(entry.at("name"));
        configuration.properties = propertiesFrom(entry.at("properties"));
        for (const Json& body : entry.at("bodies"))
            configuration.bodies.push_back(bodyFrom(body, shapes));
    }
    check(part);
    return part;
}

Json toJson(const AssemblyDocument& assembly, ShapeStreams& shapes, const std::filesystem::path& folder)
{
    Json components = Json::array();
    for (const Component& component : assembly.components)
        components.push_back(componentJson(component, shapes, folder));
    Json configurations = Json::array();
    for (const AssemblyConfiguration& configuration : assembly.configurations) {
        Json states = Json::array();
        for (const ComponentState& state : configuration.states)
            states.push_back(stateJson(state));
        configurations.push_back({{"name", textJson(configuration.name)}, {"states", states},
            {"properties", propertiesJson(configuration.properties)}});
    }
    return {{"active", assembly.active}, {"properties", propertiesJson(assembly.properties)},
        {"components", components}, {"configurations", configurations}};
}

AssemblyDocument assemblyFrom(const Json& json, ShapeSource& shapes, const std::filesystem::path& folder)
{
    AssemblyDocument assembly;
    assembly.active = json.at("active").get<std::size_t>();
    assembly.properties = propertiesFrom(json.at("properties"));
    for (const Json& entry : json.at("components"))
        assembly.components.push_back(componentFrom(entry, shapes, folder));
    for (const Json& entry : json.at("configurations")) {
        AssemblyConfiguration& configuration = assembly.configurations.emplace_back();
        configuration.name = textFrom(entry.at("name"));
        configuration.properties = propertiesFrom(entry.at("properties"));
        for (const Json& state : entry.at("states"))
            configuration.states.push_back(stateFrom(state));
    }
    check(assembly);
    return assembly;
}

Json toJson(const DrawingDocument& drawing, const std::filesystem::path& folder)
{
    Json sheets = Json::array();
    for (const Sheet& sheet : drawing.sheets) {
        Json views = Json::array();
        for (const View& view : sheet.views)
            views.push_back(viewJson(view, folder));
        sheets.push_back({{"name", textJson(sheet.name)}, {"paper", paperName(sheet.paper)},
            {"landscape", sheet.landscape}, {"scale", sheet.scale}, {"views", views}});
    }
    return {{"active", drawing.active}, {"properties", propertiesJson(drawing.properties)}, {"sheets", sheets}};
}

DrawingDocument drawingFrom(const Json& json, const std::filesystem::path& folder)
{
    DrawingDocument drawing;
    drawing.active = json.at("active").get<std::size_t>();
    drawing.properties = propertiesFrom(json.at("properties"));
    for (const Json& entry : json.at("sheets")) {
        Sheet& sheet = drawing.sheets.emplace_back();
        sheet.name = textFrom(entry.at("name"));
        const auto paper = paperFromName(textFrom(entry.at("paper")));
        if (!paper)
            throw std::invalid_argument("the sheet '" + zn::toUtf8(sheet.name) + "' has an unknown paper");
        sheet.paper = *paper;
        sheet.landscape = entry.at("landscape").get<bool>();
        sheet.scale = entry.at("scale").get<double>();
        for (const Json& view : entry.at("views"))
            sheet.views.push_back(viewFrom(view, folder));
    }
    check(drawing);
    return drawing;
}

} // namespace zn::zentrel::manifest
