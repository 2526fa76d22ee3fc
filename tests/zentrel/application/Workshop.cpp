#include "tests/zentrel/application/Workshop.h"

#include "zentrel/model/Build.h"

namespace zn::zentrel::test {

namespace {

PartDocument boxes(const std::vector<Text>& configurations)
{
    std::vector<std::pair<Text, Body>> bodies;
    for (const Text& name : configurations)
        bodies.emplace_back(name, Body{u"Box", box(10.0 * static_cast<double>(bodies.size() + 1), 20, 30), {}, {}});
    return partOf(bodies);
}

} // namespace

Workshop::Workshop(std::function<bool()> stopRequested)
    : platform(zn::Home::open(folder / "home"))
{
    application = std::make_shared<Application>(Surroundings{
        .files = platform.files(),
        .printers = platform.printers(),
        .workFolder = folder / "work",
        .log = [this](const std::string& line) { log.push_back(line); },
        .stopRequested = std::move(stopRequested),
        .exit = {},
        .print = [this](const std::string& line) { printed.push_back(line); },
        .readAhead =
            [this](const std::vector<std::filesystem::path>& files, std::optional<MeshQuality> mesh) {
                expected = files;
                expectedMesh = mesh;
            },
    });
}

std::filesystem::path Workshop::makePart(const std::string& name, const std::vector<Text>& configurations)
{
    writeDocument(boxes(configurations), file(name));
    return file(name);
}

std::filesystem::path Workshop::makeAssembly(const std::string& name)
{
    const auto plate = makePart("Plate.zenprt", {u"Default"});
    const auto bolt = makePart("Bolt.zenprt", {u"Short", u"Long"});
    assemble(file(name), {{plate, false}, {bolt, true}});
    std::filesystem::remove(bolt);
    return file(name);
}

std::filesystem::path Workshop::makeDrawing(const std::string& name, const std::vector<Text>& sheets)
{
    const auto model = makePart("Drawn.zenprt", {u"Default"});
    std::vector<DrawInput> inputs;
    for (const Text& sheet : sheets)
        inputs.push_back(
            {.name = sheet, .paper = PaperSize::A3, .landscape = true, .model = model, .configuration = {}});
    draw(file(name), inputs);
    return file(name);
}

DispatchRef Workshop::open(const Text& path, DocumentKind kind)
{
    const auto documentSpec = objectOf(*application, u"GetOpenDocSpec", {Value(path)});
    documentSpec->put(u"DocumentType", static_cast<std::int32_t>(kind));
    documentSpec->put(u"ReadOnly", true);
    auto document = objectOf(*application, u"OpenDoc7", {Value(documentSpec)});
    if (!document)
        throw std::runtime_error("not opened: " + zn::toUtf8(path));
    return document;
}

std::vector<Value> callWithResults(
    DispatchObject& object, const Text& name, std::vector<Value> arguments, Value* result)
{
    MemberCall call{name, MemberUse::Call, std::move(arguments), {}};
    *result = object.invoke(call);
    return std::move(call.arguments);
}

std::string macroWith(const char* name, const std::map<std::string, std::string>& settings)
{
    std::string text = readFile(ZN_SOURCE_DIR "/resources/macros/" + std::string(name));
    for (const auto& [setting, value] : settings)
        for (std::size_t at = 0; (at = text.find(setting, at)) != std::string::npos; at += value.size())
            text.replace(at, setting.size(), value);
    for (std::size_t at = 0; (at = text.find('[', at)) != std::string::npos;)
        text.replace(at, text.find(']', at) + 1 - at, "0");
    return text;
}
DispatchRef objectOf(DispatchObject& object, const Text& name, std::vector<Value> arguments)
{
    return zn::query<DispatchObject>(object.call(name, std::move(arguments)).toObject());
}

} // namespace zn::zentrel::test
