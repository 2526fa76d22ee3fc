#include "arkin/store/LocalStatus.h"

#include "arkin/store/FindFiles.h"
#include "base/Paths.h"

namespace zn::arkin {

namespace {

LocalState stateOf(Vault& vault, const FoundFile& file, const std::optional<LocalCopy>& copy,
    const std::optional<VersionRow>& wanted, LocalView::MachineFolders& folders)
{
    if (!copy)
        return LocalState::NotHere;
    const auto path = vault.local().toMachine(file.place.folderId, zn::pathFileName(file.path), folders);
    const auto content = vault.local().contentAt(path, copy);
    if (!content)
        return LocalState::Gone;
    if (wanted && *content == wanted->content)
        return LocalState::AsInVault;
    return *content == copy->content ? LocalState::Older : LocalState::Changed;
}

} // namespace

std::vector<FileStatus> localStatus(Vault& vault, std::int32_t folderId)
{
    FileQuery query;
    query.folderId = folderId;
    const std::vector<FoundFile> files = findFiles(vault, query);
    std::vector<Place> places;
    std::vector<std::int32_t> ids;
    for (const FoundFile& file : files) {
        places.push_back(file.place);
        ids.push_back(file.place.fileId);
    }
    const auto copies = vault.local().copies(places);
    const auto checkOuts = vault.files().checkOuts(ids);
    std::vector<FileVersion> asked;
    for (std::size_t index = 0; index < files.size(); ++index) {
        const bool isMine = checkOuts[index] && vault.isMine(*checkOuts[index]);
        asked.push_back({ids[index], isMine ? checkOuts[index]->baseVersion : files[index].version});
    }
    const auto versions = vault.files().versions(asked);
    std::vector<FileStatus> result;
    LocalView::MachineFolders folders;
    for (std::size_t index = 0; index < files.size(); ++index) {
        const LocalState local = stateOf(vault, files[index], copies[index], versions[index], folders);
        if (checkOuts[index] || local > LocalState::AsInVault)
            result.push_back({places[index], files[index].path, local, checkOuts[index]});
    }
    return result;
}

} // namespace zn::arkin
