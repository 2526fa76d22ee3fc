#include "contracts/documents/Outline.h"

#include "base/Paths.h"
#include "contracts/documents/DocumentError.h"
#include "contracts/documents/ManifestText.h"
#include "contracts/documents/StepReferences.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace zn {

namespace {

using Json = nlohmann::json;

constexpr TextView documents[] = {u".zenprt", u".zenasm", u".zendrw", u".prt", u".asm", u".drw"};
constexpr TextView step[] = {u".stp", u".step"};

bool isOneOf(TextView fileName, std::span<const TextView> extensions)
{
    const Text own = pathExtension(fileName);
    return std::any_of(
        extensions.begin(), extensions.end(), [&](TextView extension) { return equalNoCase(own, extension); });
}

void addOnce(std::vector<std::string>& paths, std::string path)
{
    if (!path.empty() && std::find(paths.begin(), paths.end(), path) == paths.end())
        paths.push_back(std::move(path));
}

void addNames(DocumentOutline& outline, const Json& manifest, const char* list)
{
    for (const Json& entry : manifest.value(list, Json::array()))
        outline.parts.push_back(toText(entry.at("name").get<std::string>()));
}

DocumentOutline outlineOf(const Json& manifest)
{
    DocumentOutline outline;
    addNames(outline, manifest, "configurations");
    addNames(outline, manifest, "sheets");
    for (const Json& component : manifest.value("components", Json::array()))
        addOnce(outline.references, component.value("path", std::string()));
    for (const Json& sheet : manifest.value("sheets", Json::array()))
        for (const Json& view : sheet.at("views"))
            addOnce(outline.references, view.at("model").get<std::string>());
    return outline;
}

} // namespace

bool hasOutline(TextView fileName) { return isOneOf(fileName, documents) || isOneOf(fileName, step); }

DocumentOutline readOutline(const std::filesystem::path& file, const std::filesystem::path& shown)
{
    if (isOneOf(toText(shown.filename().string()), step))
        return {{}, stepReferences(file)};
    ArchiveReader archive(file, shown);
    const Json manifest = readManifest(archive);
    try {
        return outlineOf(manifest);
    } catch (const Json::exception& error) {
        throw DocumentError(ErrorKind::Damaged,
            "The file " + quoted(shown) + " is damaged: its manifest isn't understood (" + error.what() + ").");
    }
}

} // namespace zn
