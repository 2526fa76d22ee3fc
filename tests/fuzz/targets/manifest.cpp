// A document's manifest, each shape of which is one and the same cube: documents keep their rules, and what was read is
// written, and read again, the same.
#include "zentrel/model/Manifest.h"
#include "tests/fuzz/Promise.h"

#include <BRepPrimAPI_MakeBox.hxx>

using namespace zentrel;
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
    ShapeSource shapes([](const std::string&) { return cube(); });
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        const Json json = Json::parse(data, data + size);
        const auto kind = manifest::kindOfFormat(json.at("format").get<std::string>());
        if (!kind)
            return 0;
        const Document document = documentFrom(json, *kind);
        const Json written = jsonOf(document);
        const Json again = jsonOf(documentFrom(Json::parse(written.dump()), *kind));
        promise(again == written, "a document comes back as it was");
    } catch (const Json::exception&) {
        return 0;
    } catch (const std::invalid_argument& error) {
        promise(*error.what() != '\0', "a refusal says why");
    }
    return 0;
}
