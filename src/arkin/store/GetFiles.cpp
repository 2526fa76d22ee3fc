#include "arkin/store/GetFiles.h"

#include "arkin/store/Codes.h"

#include <algorithm>
#include <unordered_set>

namespace zn::arkin {

namespace {

/// How many files are looked up in the database at a time.
constexpr std::size_t chunkSize = 1000;

struct Wanted {
    Place place;
    FileRow file;
    VersionRow version;
    std::optional<CheckOutRow> checkOut;
    std::optional<LocalCopy> known;
};

/// What fails for one file and would fail for all; a damaged content is that file's own.
constexpr auto concernsAll = {E_ARK_DISK_FULL};

std::vector<Wanted> lookUp(Vault& vault, std::span<const GetRequest> all, std::vector<LeftOut>* leftOut)
{
    std::vector<std::int32_t> ids;
    std::vector<Place> places;
    std::vector<GetRequest> requests;
    for (const GetRequest& request : all)
        worksFor(request.place, leftOut, concernsAll, [&] {
            vault.require(request.place, Right::Read);
            requests.push_back(request);
        });
    for (const GetRequest& request : requests) {
        ids.push_back(request.place.fileId);
        places.push_back(request.place);
    }
    Transaction snapshot(vault.database(), Transaction::Kind::Read);
    const auto files = vault.files().rows(ids);
    std::vector<FileVersion> asked;
    for (std::size_t i = 0; i < requests.size(); ++i) {
        const bool isThere = files[i] && !files[i]->deleted;
        asked.push_back({ids[i], requests[i].version > 0 || !isThere ? requests[i].version : files[i]->latestVersion});
    }
    const auto versions = vault.files().versions(asked);
    const auto checkOuts = vault.files().checkOuts(ids);
    const auto copies = vault.local().copies(places);
    std::vector<Wanted> wanted;
    for (std::size_t i = 0; i < requests.size(); ++i) {
        worksFor(places[i], leftOut, concernsAll, [&] {
            if (!files[i])
                throw zn::StatusError(
                    E_ARK_NOT_IN_VAULT, "The vault has no file number " + std::to_string(ids[i]) + ".");
            const std::string name = "\"" + zn::toUtf8(files[i]->name) + "\"";
            if (files[i]->deleted)
                throw zn::StatusError(E_ARK_NOT_IN_VAULT, name + " was deleted from the vault.");
            if (!versions[i])
                throw zn::StatusError(E_ARK_NO_SUCH_VERSION,
                    name + " has no version " + std::to_string(asked[i].version) + "; its latest is "
                        + std::to_string(files[i]->latestVersion) + ".");
            wanted.push_back({places[i], *files[i], *versions[i], checkOuts[i], copies[i]});
        });
    }
    return wanted;
}

bool isKnownContent(Vault& vault, std::int32_t fileId, const Content& content)
{
    const auto history = vault.files().history(fileId);
    return std::any_of(
        history.begin(), history.end(), [&](const VersionRow& version) { return version.content == content; });
}

bool isCheckedOutHere(Vault& vault, const Place& place, const std::optional<CheckOutRow>& checkOut)
{
    return checkOut && vault.isMine(*checkOut) && checkOut->folderId == place.folderId;
}

/// Whether there is nothing to do: the copy is what is wanted, protected, and recorded.
bool isInOrder(const Wanted& wanted, const std::optional<Content>& standing, const std::filesystem::path& path)
{
    return standing && *standing == wanted.version.content && !wanted.checkOut && wanted.known
        && wanted.known->content == *standing && wanted.known->modifiedNs != 0 && !LocalFile(path).isWritable();
}

/// Brings one file; the copy to record, or none if nothing is new.
std::optional<LocalCopy> bring(
    Vault& vault, const Wanted& wanted, LocalChanges changes, LocalView::MachineFolders& folders)
{
    LocalView& local = vault.local();
    const auto path = local.toMachine(wanted.place.folderId, wanted.file.name, folders);
    const auto standing = local.contentAt(path, wanted.known);
    if (isInOrder(wanted, standing, path))
        return std::nullopt;
    // Looked up again, because another program may have checked the file out while others of the chunk were written.
    const bool isWork = isCheckedOutHere(vault, wanted.place, vault.files().checkOut(wanted.place.fileId));
    if (standing && isWork) {
        local.setReadOnly(path, false);
        return std::nullopt;
    }
    if (standing && *standing == wanted.version.content) {
        local.setReadOnly(path, true);
        return LocalCopy{wanted.place, *standing, LocalFile(path).settledTime()};
    }
    if (standing && changes == LocalChanges::Refuse && !isKnownContent(vault, wanted.place.fileId, *standing))
        throw zn::StatusError(E_ARK_LOCAL_FILE_CHANGED,
            "The local file " + path.string()
                + " holds changes that the vault does not know, and it was left as it is. Move it away or check it in "
                  "first.");
    return local.write(wanted.place, wanted.version.content, path, !isWork);
}

void getChunk(Vault& vault, std::span<const GetRequest> requests, LocalChanges changes, std::vector<LeftOut>* leftOut)
{
    std::vector<LocalCopy> copies;
    LocalView::MachineFolders folders;
    const auto record = [&] {
        if (copies.empty())
            return;
        Transaction transaction(vault.database());
        vault.local().record(copies);
        transaction.commit();
    };
    try {
        for (const Wanted& wanted : lookUp(vault, requests, leftOut))
            worksFor(wanted.place, leftOut, concernsAll, [&] {
                if (auto copy = bring(vault, wanted, changes, folders))
                    copies.push_back(std::move(*copy));
            });
    } catch (...) {
        record();
        throw;
    }
    record();
}

void getInChunks(
    Vault& vault, std::span<const GetRequest> requests, LocalChanges changes, std::vector<LeftOut>* leftOut)
{
    vault.permissions().refresh();
    for (std::size_t start = 0; start < requests.size(); start += chunkSize)
        getChunk(vault, requests.subspan(start, std::min(chunkSize, requests.size() - start)), changes, leftOut);
}

} // namespace

void getFiles(Vault& vault, std::span<const GetRequest> requests, LocalChanges changes)
{
    getInChunks(vault, requests, changes, nullptr);
}

std::vector<LeftOut> getWhatCanBeGot(Vault& vault, std::span<const GetRequest> requests)
{
    std::vector<LeftOut> leftOut;
    getInChunks(vault, requests, LocalChanges::Refuse, &leftOut);
    return leftOut;
}

std::vector<LocalCopyUse> localCopies(Vault& vault, std::span<const GetRequest> requests)
{
    const ReadScope scope(vault.database());
    std::vector<std::int32_t> ids;
    for (const GetRequest& request : requests)
        ids.push_back(request.place.fileId);
    const auto files = vault.files().rows(ids);
    std::vector<LocalCopyUse> copies;
    for (std::size_t i = 0; i < requests.size(); ++i) {
        if (files[i] && !files[i]->deleted)
            copies.push_back({vault.local().pathOf(requests[i].place.folderId, files[i]->name),
                requests[i].version > 0 ? requests[i].version : files[i]->latestVersion});
    }
    return copies;
}

FileTree withReferences(Vault& vault, std::span<const GetRequest> requests, bool asBuilt)
{
    FileTree tree{{requests.begin(), requests.end()}, {}};
    auto& all = tree.files;
    std::unordered_set<std::int32_t> seen;
    for (const GetRequest& request : requests)
        seen.insert(request.place.fileId);
    // Level by level: all files that the last level has brought are asked for their references in one go.
    for (std::size_t start = 0; start < all.size();) {
        const std::span<const GetRequest> level(all.data() + start, all.size() - start);
        std::vector<std::int32_t> ids;
        for (const GetRequest& request : level)
            ids.push_back(request.place.fileId);
        const auto files = vault.files().rows(ids);
        std::vector<FileVersion> asked;
        for (std::size_t i = 0; i < level.size(); ++i)
            asked.push_back({ids[i], level[i].version > 0 || !files[i] ? level[i].version : files[i]->latestVersion});
        start = all.size();
        for (const auto& references : vault.references().from(asked)) {
            for (const ReferenceRow& row : references) {
                tree.references.push_back({row.fileId, row.toFileId});
                if (!seen.insert(row.toFileId).second)
                    continue;
                const auto folders = vault.files().foldersOf(row.toFileId);
                if (folders.empty())
                    continue;
                const bool isStillThere = std::find(folders.begin(), folders.end(), row.toFolderId) != folders.end();
                all.push_back(
                    {{row.toFileId, isStillThere ? row.toFolderId : folders.front()}, asBuilt ? row.toVersion : 0});
            }
        }
    }
    return tree;
}

} // namespace zn::arkin
