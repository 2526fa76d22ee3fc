#include "arkin/commands/frame/Measures.h"

#include "arkin/store/CopyOut.h"
#include "arkin/tasks/PictureProgram.h"
#include "platform/linux/RunProgram.h"
#include "platform/WholeFile.h"
#include "platform/WorkFolder.h"

#include <chrono>

namespace zn::arkin {

namespace {

constexpr std::chrono::seconds longest{60};
constexpr std::uintmax_t largest = 64'000'000; // bytes
constexpr int pixels = 512;                    // which measures have none of

} // namespace

std::string measuresOf(Session& session, const Place& place, std::int32_t version)
{
    auto& vault = session.vault();
    auto& machine = session.platform();
    const auto name = vault.file(place.fileId).name;
    const zn::WorkFolder folder(std::filesystem::temp_directory_path(), "arkin-measure");
    const auto file = folder.path() / "files" / zn::toUtf8(name);
    const auto json = folder.path() / "measures.json";
    const auto words = pictureProgram(machine.registry(), machine.files(), file, json, pixels);
    if (words.empty() || file.extension() == ".pdf")
        return {};
    const bool asBuilt = version != vault.file(place.fileId).latestVersion;
    const GetRequest request{place, version};
    copyOut(vault, withReferences(vault, {&request, 1}, asBuilt).files, file.parent_path(), false);
    if (const auto problem = zn::runProgram({words, {}, {}, longest}, machine.clock()); !problem.empty())
        throw zn::StatusError(
            zn::E_FAIL, "\"" + zn::toUtf8(name) + "\", version " + std::to_string(version) + ": " + problem);
    return zn::readWholeFile(json, largest, "The measures");
}

} // namespace zn::arkin
