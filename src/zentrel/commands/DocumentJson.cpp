#include "zentrel/commands/DocumentJson.h"

namespace zn::zentrel::commands {

using commandline::Json;
using zn::toUtf8;

namespace {

Json propertiesJson(const Properties& properties)
{
    Json json = Json::object();
    for (const auto& [name, value] : properties)
        json[toUtf8(name)] = toUtf8(value);
    return json;
}

Json countsJson(const std::vector<PartCount>& counts)
{
    Json json = Json::array();
    for (const PartCount& one : counts)
        json.push_back({{"name", toUtf8(one.name)}, {"count", one.count}});
    return json;
}

} // namespace

const char* kindName(DocumentKind kind)
{
    constexpr const char* names[] = {"", "part", "assembly", "drawing"};
    return names[static_cast<int>(kind)];
}

Json documentJson(const DocumentInfo& info)
{
    Json json = {{"kind", kindName(info.kind)}, {"version", info.version}, {"active", toUtf8(info.active)},
        {"properties", propertiesJson(info.properties)}};
    for (const ConfigurationInfo& one : info.configurations) {
        json["configurations"].push_back({{"name", toUtf8(one.name)}, {"bodies", one.bodies}, {"faces", one.faces},
            {"size", std::span<const double>(one.size)}, {"volume", one.volume}, {"area", one.area},
            {"bodyNames", countsJson(one.bodyNames)}, {"properties", propertiesJson(one.properties)},
            {"parts", countsJson(one.parts)}});
    }
    for (const ComponentInfo& one : info.components)
        json["components"].push_back({{"name", toUtf8(one.name)}, {"path", one.path.string()},
            {"virtual", one.isVirtual}, {"missing", one.isMissing}});
    for (const SheetInfo& one : info.sheets) {
        Json models = Json::array();
        for (const auto& model : one.models)
            models.push_back(model.string());
        json["sheets"].push_back({{"name", toUtf8(one.name)}, {"paper", paperName(one.paper)},
            {"landscape", one.landscape}, {"scale", one.scale}, {"models", models}});
    }
    return json;
}

} // namespace zn::zentrel::commands
