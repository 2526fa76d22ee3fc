#include "zentrel/model/Packets.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/kernel/KernelChild.h"
#include "zentrel/kernel/KernelLimits.h"
#include "zentrel/model/ManifestValues.h"

#include <cstring>
#include <list>
#include <nlohmann/json.hpp>

namespace zn::zentrel {

namespace {

using manifest::Json;

/// Of a stream, for the limit of computing.
constexpr std::size_t bytesAPiece = 20000;

/// What is kept of streams that came, so that a document isn't read when it is opened and again when it is saved.
constexpr std::size_t mostKept = std::size_t{32} << 20;

Json bytesJson(const std::string& bytes) { return Json::binary({bytes.begin(), bytes.end()}); }

std::string bytesFrom(const Json& json)
{
    const auto& bytes = json.get_binary();
    return {bytes.begin(), bytes.end()};
}

Json factsJson(const GeometryFacts& facts) { return {facts.faces, facts.hasSurfaces}; }

GeometryFacts factsFrom(const Json& json) { return {json.at(0).get<std::size_t>(), json.at(1).get<bool>()}; }

Geometry geometryFrom(const Json& json)
{
    Geometry geometry = Geometry::unread(bytesFrom(json.at("bytes")));
    geometry.tellFacts(factsFrom(json.at("facts")));
    return geometry;
}

/// The last streams that came or were made here, with what has become of them.
class KeptGeometry {
public:
    /// Null if no equal stream is kept.
    Geometry find(std::string_view stream)
    {
        for (auto known = m_all.begin(); known != m_all.end(); ++known) {
            if (known->givenStream() == stream) {
                m_all.splice(m_all.begin(), m_all, known);
                return m_all.front();
            }
        }
        return {};
    }

    Geometry add(Geometry geometry)
    {
        m_size += geometry.givenStream().size();
        m_all.push_front(std::move(geometry));
        for (; m_size > mostKept && m_all.size() > 1; m_all.pop_back())
            m_size -= m_all.back().givenStream().size();
        return m_all.front();
    }

private:
    std::list<Geometry> m_all;
    std::size_t m_size = 0;
};

KeptGeometry& keptGeometry()
{
    static KeptGeometry kept;
    return kept;
}

/// The geometry of an equal stream that came before, or of this one.
Geometry kept(std::string_view stream)
{
    const Geometry known = keptGeometry().find(stream);
    return known.isNull() ? keptGeometry().add(Geometry::unread(std::string(stream))) : known;
}

/// Who reads a file mostly meshes it next, and needs no shape made of the stream again.
Json streamsJson(const std::map<std::string, Geometry>& streams)
{
    Json json = Json::object();
    for (const auto& [name, geometry] : streams) {
        const Geometry both = geometry.givenStream().empty() && isKernelProcess() ? geometry.withStream() : geometry;
        json[name] = {{"bytes", bytesJson(both.stream())}, {"facts", factsJson(both.facts())}};
        if (isKernelProcess() && keptGeometry().find(both.givenStream()).isNull())
            keptGeometry().add(both);
    }
    return json;
}

/// As it lies in memory, but for four bytes that have no meaning: equal models make equal packets, by which results
/// are found again.
std::string placementBytes(const gp_Trsf& placement)
{
    constexpr std::size_t behindForm = sizeof(double) + sizeof(gp_TrsfForm);
    constexpr std::size_t meaningless = 2 * sizeof(double) - behindForm;
    static_assert(sizeof(gp_Trsf) == 14 * sizeof(double));
    std::string bytes(sizeof placement, '\0');
    std::memcpy(bytes.data(), &placement, sizeof placement);
    return bytes.replace(behindForm, meaningless, meaningless, '\0');
}

/// Every distinct model once, those that others stand on before them.
std::size_t addModel(
    const Model& model, Json& models, ShapeStreams& shapes, std::map<const Model*, std::size_t>& places)
{
    if (const auto known = places.find(&model); known != places.end())
        return known->second;
    Json json = {{"name", zn::toUtf8(model.name)}, {"bodies", Json::array()}, {"children", Json::array()}};
    for (const Body& body : model.bodies)
        json["bodies"].push_back(manifest::bodyJson(body, shapes));
    for (const Model::Child& child : model.children) {
        const std::string placement = placementBytes(child.placement);
        Json& entry
            = json["children"].emplace_back(Json{{"name", zn::toUtf8(child.name)}, {"placement", bytesJson(placement)},
                {"inside", child.isInside}, {"model", addModel(*child.model, models, shapes, places)}});
        if (child.color)
            entry["color"] = manifest::colorJson(*child.color);
    }
    if (model.color)
        json["color"] = manifest::colorJson(*model.color);
    models.push_back(std::move(json));
    return places.emplace(&model, models.size() - 1).first->second;
}

ModelRef modelFrom(const Json& json, ShapeSource& shapes, const std::vector<ModelRef>& others)
{
    auto model = std::make_shared<Model>();
    model->name = zn::toText(json.at("name").get<std::string>());
    if (json.contains("color"))
        model->color = manifest::colorFrom(json.at("color"));
    for (const Json& body : json.at("bodies"))
        model->bodies.push_back(manifest::bodyFrom(body, shapes));
    for (const Json& entry : json.at("children")) {
        Model::Child& child = model->children.emplace_back();
        child.name = zn::toText(entry.at("name").get<std::string>());
        const std::string placement = bytesFrom(entry.at("placement"));
        static_assert(std::is_trivially_copyable_v<gp_Trsf>);
        std::memcpy(&child.placement, placement.data(), std::min(placement.size(), sizeof child.placement));
        child.isInside = entry.at("inside").get<bool>();
        if (entry.contains("color"))
            child.color = manifest::colorFrom(entry.at("color"));
        child.model = others.at(entry.at("model").get<std::size_t>());
    }
    return model;
}

/// Of a request for facts; behind it stand the path of the file and the name of the stream, then the stream.
struct FactsHead {
    std::size_t file = 0;
    std::size_t name = 0;
};

std::string factsRequest(const std::filesystem::path& file, const std::string& name, std::string_view stream)
{
    const std::string path = file.string();
    const FactsHead head{path.size(), name.size()};
    std::string request;
    // A stream may be as large as memory allows: it is copied once.
    request.reserve(sizeof head + path.size() + name.size() + stream.size());
    request.append(reinterpret_cast<const char*>(&head), sizeof head);
    return request.append(path).append(name).append(stream);
}

std::string answerFacts(std::string_view request)
{
    FactsHead head;
    std::memcpy(&head, request.data(), sizeof head);
    request.remove_prefix(sizeof head);
    const std::filesystem::path file(request.substr(0, head.file));
    const std::string name(request.substr(head.file, head.name));
    try {
        const GeometryFacts facts = kept(request.substr(head.file + head.name)).facts();
        return {reinterpret_cast<const char*>(&facts), sizeof facts};
    } catch (const std::invalid_argument& error) {
        throw DocumentError(ErrorKind::Damaged,
            "The file " + quoted(file) + " is damaged: its part '" + name + "' can't be read (" + error.what() + ").");
    }
}

} // namespace

std::string packDocument(const Document& document)
{
    ShapeStreams shapes;
    Json json = {{"assembly", std::holds_alternative<AssemblyDocument>(document)}};
    if (const auto* assembly = std::get_if<AssemblyDocument>(&document))
        json["document"] = manifest::toJson(*assembly, shapes, {});
    else
        json["document"] = manifest::toJson(std::get<PartDocument>(document), shapes);
    json["streams"] = streamsJson(shapes.all());
    std::string packet;
    Json::to_cbor(json, packet);
    return packet;
}

Document unpackDocument(std::string_view packet)
{
    const Json json = Json::from_cbor(packet);
    ShapeSource shapes([&](const std::string& name) { return geometryFrom(json.at("streams").at(name)); });
    if (json.at("assembly").get<bool>())
        return manifest::assemblyFrom(json.at("document"), shapes, {});
    return manifest::partFrom(json.at("document"), shapes);
}

std::string packModel(const Model& model)
{
    ShapeStreams shapes;
    std::map<const Model*, std::size_t> places;
    Json json = {{"models", Json::array()}};
    addModel(model, json["models"], shapes, places);
    json["streams"] = streamsJson(shapes.all());
    std::string packet;
    Json::to_cbor(json, packet);
    return packet;
}

ModelRef unpackModel(std::string_view packet)
{
    const Json json = Json::from_cbor(packet);
    ShapeSource shapes(
        [&](const std::string& name) { return kept(bytesFrom(json.at("streams").at(name).at("bytes"))); });
    std::vector<ModelRef> models;
    for (const Json& model : json.at("models"))
        models.push_back(modelFrom(model, shapes, models));
    return models.at(models.size() - 1);
}

void requireReadable(const std::map<std::string, Geometry>& streams, const std::filesystem::path& file)
{
    for (const auto& [name, geometry] : streams) {
        const std::string_view stream = geometry.givenStream();
        const KernelTask task{"reading", file, computingLimit(stream.size() / bytesAPiece)};
        const std::string answer = askKernel(task, answerFacts, factsRequest(file, name, stream));
        GeometryFacts facts;
        std::memcpy(&facts, answer.data(), sizeof facts);
        geometry.tellFacts(facts);
    }
}

} // namespace zn::zentrel
