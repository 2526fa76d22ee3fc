#include "contracts/documents/ManifestText.h"

#include "base/JsonShape.h"
#include "contracts/documents/DocumentError.h"

#include <nlohmann/json.hpp>

namespace zn {

namespace {

using Json = nlohmann::json;

// An assembly of a hundred thousand components has 30 MB and three million values; in memory a value takes 16 to 100
// bytes.
constexpr std::uintmax_t largestManifest = std::uintmax_t{64} << 20;
constexpr int mostValues = 5'000'000;
constexpr int deepest = 64;

[[noreturn]] void raiseDamaged(const ArchiveReader& archive, const std::string& what)
{
    throw DocumentError(ErrorKind::Damaged, "The file " + quoted(archive.file()) + " is damaged: its manifest " + what);
}

} // namespace

Json readManifest(ArchiveReader& archive)
{
    const std::string text = archive.entry(manifestEntry, largestManifest);
    const JsonShape shape = jsonShapeOf(text, deepest, mostValues);
    if (shape == JsonShape::TooDeep)
        raiseDamaged(archive, "has more brackets inside one another than any document.");
    if (shape == JsonShape::TooMany)
        raiseDamaged(archive, "has more values than any document.");
    try {
        return Json::parse(text);
    } catch (const Json::exception& error) {
        raiseDamaged(archive, std::string("isn't understood (") + error.what() + ").");
    }
}

} // namespace zn
