#include "zentrel/model/PartPacket.h"

#include "zentrel/model/Manifest.h"

#include <nlohmann/json.hpp>

namespace zn::zentrel {

std::string packPart(const PartDocument& part)
{
    ShapeStreams shapes;
    manifest::Json json = {{"part", manifest::toJson(part, shapes)}, {"streams", manifest::Json::object()}};
    for (const auto& [name, content] : shapes.contents())
        json["streams"][name] = manifest::Json::binary({content.begin(), content.end()});
    std::string packet;
    manifest::Json::to_cbor(json, packet);
    return packet;
}

PartDocument unpackPart(const std::string& packet)
{
    const manifest::Json json = manifest::Json::from_cbor(packet);
    const manifest::Json& streams = json.at("streams");
    ShapeSource shapes([&](const std::string& name) {
        const auto& content = streams.at(name).get_binary();
        return std::string(content.begin(), content.end());
    });
    return manifest::partFrom(json.at("part"), shapes);
}

} // namespace zn::zentrel
