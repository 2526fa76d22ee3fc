#include "zentrel/model/Manifest.h"

#include "zentrel/model/ManifestValues.h"

#include <nlohmann/json.hpp>
#include <stdexcept>

namespace zn::zentrel::manifest {

namespace {

constexpr std::pair<DocumentKind, const char*> formats[] = {
    {DocumentKind::Part, "zentrel-part"},
    {DocumentKind::Assembly, "zentrel-assembly"},
    {DocumentKind::Drawing, "zentrel-drawing"},
};

Json directionJson(const gp_Dir& direction) { return {direction.X(), direction.Y(), direction.Z()}; }

gp_Dir directionFrom(const Json& json)
{
    const gp_XYZ xyz(json.at(0).get<double>(), json.at(1).get<double>(), json.at(2).get<double>());
    if (!(xyz.Modulus() > 1e-12))
        throw std::invalid_argument("a view has no direction");
    return gp_Dir(xyz);
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
    if (body.color)
        result["color"] = colorJson(*body.color);
    for (const Text& layer : body.layers)
        result["layers"].push_back(textJson(layer));
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
    if (json.contains("color"))
        body.color = colorFrom(json.at("color"));
    if (json.contains("faceColors")) {
        for (const Json& entry : json.at("faceColors"))
            body.faceColors[entry.at("face").get<int>()] = colorFrom(entry.at("color"));
    }
    for (const Json& layer : json.value("layers", Json::array()))
        body.layers.push_back(textFrom(layer));
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
        Json& entry = configurations.emplace_back(Json{{"name", textJson(configuration.name)}, {"bodies", bodies},
            {"properties", propertiesJson(configuration.properties)}});
        if (configuration.color)
            entry["color"] = colorJson(*configuration.color);
    }
    Json result = {
        {"active", part.active}, {"properties", propertiesJson(part.properties)}, {"configurations", configurations}};
    if (!part.name.empty())
        result["name"] = textJson(part.name);
    return result;
}

PartDocument partFrom(const Json& json, ShapeSource& shapes)
{
    PartDocument part;
    part.name = zn::toText(json.value("name", std::string()));
    part.active = json.at("active").get<std::size_t>();
    part.properties = propertiesFrom(json.at("properties"));
    for (const Json& entry : json.at("configurations")) {
        PartConfiguration& configuration = part.configurations.emplace_back();
        configuration.name = textFrom(entry.at("name"));
        configuration.properties = propertiesFrom(entry.at("properties"));
        if (entry.contains("color"))
            configuration.color = colorFrom(entry.at("color"));
        for (const Json& body : entry.at("bodies"))
            configuration.bodies.push_back(bodyFrom(body, shapes));
    }
    check(part);
    return part;
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
