// A document's manifest, each shape of which is one and the same cube: documents keep their rules, and what was read is
// written, and read again, the same.
#include "zentrel/model/Manifest.h"
#include "tests/fuzz/Promise.h"

#include <BRepPrimAPI_MakeBox.hxx>
#include <cmath>
#include <nlohmann/json.hpp>

using namespace zn::zentrel;
using manifest::Json;
using zn::fuzz::promise;

namespace {

const std::filesystem::path folder = "/nowhere/at all";

const std::string& cube()
{
    static const std::string stream = [] {
        ShapeStreams streams;
        streams.nameOf(BRepPrimAPI_MakeBox(1.0, 1.0, 1.0).Solid());
        return streams.contents().begin()->second;
    }();
    return stream;
}

Document documentFrom(const Json& json, DocumentKind kind)
{
    ShapeSource shapes([](const std::string&) { return Geometry::unread(cube()); });
    switch (kind) {
    case DocumentKind::Part:
        return manifest::partFrom(json, shapes);
    case DocumentKind::Assembly:
        return manifest::assemblyFrom(json, shapes, folder);
    default:
        return manifest::drawingFrom(json, folder);
    }
}

Json jsonOf(const Document& document)
{
    ShapeStreams shapes;
    if (const auto* part = std::get_if<PartDocument>(&document))
        return manifest::toJson(*part, shapes);
    if (const auto* assembly = std::get_if<AssemblyDocument>(&document))
        return manifest::toJson(*assembly, shapes, folder);
    return manifest::toJson(std::get<DrawingDocument>(document), folder);
}

/// Equal but for the rounding of a direction that is made one unit long each time.
bool isSame(const Json& a, const Json& b)
{
    if (a.is_number_float() && b.is_number_float())
        return std::abs(a.get<double>() - b.get<double>()) <= 1e-12 * (1.0 + std::abs(a.get<double>()));
    if (a.type() != b.type() || a.size() != b.size() || !a.is_structured())
        return a == b;
    for (auto left = a.items().begin(), right = b.items().begin(); left != a.items().end(); ++left, ++right) {
        if (left.key() != right.key() || !isSame(left.value(), right.value()))
            return false;
    }
    return true;
}

bool comesBack(const Json& written, DocumentKind kind)
{
    try {
        return isSame(jsonOf(documentFrom(Json::parse(written.dump()), kind)), written);
    } catch (const std::invalid_argument&) {
        return false;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        const Json json = Json::parse(data, data + size);
        const auto kind = manifest::kindOfFormat(json.at("format").get<std::string>());
        if (!kind)
            return 0;
        promise(comesBack(jsonOf(documentFrom(json, *kind)), *kind), "a document comes back as it was");
    } catch (const Json::exception&) {
        return 0;
    } catch (const std::invalid_argument& error) {
        promise(*error.what() != '\0', "a refusal says why");
    }
    return 0;
}
