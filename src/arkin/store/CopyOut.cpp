#include "arkin/store/CopyOut.h"

#include "arkin/store/Codes.h"
#include "platform/AtomicFile.h"

#include <fcntl.h>
#include <map>
#include <system_error>

namespace zn::arkin {

namespace fs = std::filesystem;

namespace {

/// What goes where.
std::map<fs::path, Content> planOf(Vault& vault, std::span<const GetRequest> requests, const fs::path& folder)
{
    std::map<fs::path, Content> plan;
    for (const GetRequest& request : requests) {
        vault.require(request.place, Right::Read);
        const fs::path path = folder / zn::toUtf8(vault.file(request.place.fileId).name);
        const Content content = vault.version(request.place.fileId, request.version).content;
        if (!plan.emplace(path, content).second)
            throw zn::StatusError(E_ARK_LOCAL_FILE_CHANGED,
                "Two of the files are named '" + path.filename().string() + "': take them into folders of their own.");
    }
    return plan;
}

void write(Vault& vault, const fs::path& path, const Content& content)
{
    try {
        zn::AtomicFile whole(path);
        {
            FileHandle file(whole.temporary(), O_WRONLY, E_ARK_LOCAL_FILE_FAILED);
            vault.archive().copyOut(content, file);
        }
        whole.commit(zn::AtomicFile::Sync::No);
    } catch (const std::system_error& error) {
        throwFileFailure(E_ARK_LOCAL_FILE_FAILED, "Could not write", path, error.code().value());
    }
}

} // namespace

std::vector<fs::path> copyOut(Vault& vault, std::span<const GetRequest> requests, const fs::path& folder, bool replace)
{
    const auto plan = planOf(vault, requests, folder);
    for (const auto& [path, content] : plan)
        if (!replace && fs::exists(fs::symlink_status(path)))
            throw zn::StatusError(E_ARK_LOCAL_FILE_CHANGED,
                path.string() + " is there already: take another folder, or --discard to replace it.");
    std::error_code failure;
    fs::create_directories(folder, failure);
    if (failure)
        throwFileFailure(E_ARK_LOCAL_FILE_FAILED, "Could not make", folder, failure.value());
    std::vector<fs::path> paths;
    for (const auto& [path, content] : plan) {
        write(vault, path, content);
        paths.push_back(path);
    }
    return paths;
}

} // namespace zn::arkin
