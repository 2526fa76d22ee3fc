#include "arkin/store/DeleteFile.h"

#include "arkin/store/CheckOut.h"
#include "arkin/store/Codes.h"
#include "arkin/store/Outlines.h"

#include <algorithm>
#include <soci/soci.h>

namespace zn::arkin {

namespace {

bool isVersionOf(const std::vector<VersionRow>& history, const Content& content)
{
    return std::any_of(
        history.begin(), history.end(), [&](const VersionRow& version) { return version.content == content; });
}

void removeFromFolder(Vault& vault, const Place& place)
{
    soci::session& session = vault.database().session();
    session << "DELETE FROM file_folders WHERE folder_id = :d AND file_id = :f", soci::use(place.folderId),
        soci::use(place.fileId);
    vault.local().forget(place);
    if (!vault.files().foldersOf(place.fileId).empty())
        return;
    const long long now = vault.clock().now();
    session << "UPDATE files SET deleted_at = :t, deleted_by = :u WHERE id = :f", soci::use(now),
        soci::use(vault.caller().user), soci::use(place.fileId);
    Outlines::disconnect(vault.database(), place.fileId);
    session << "DELETE FROM deleted_places WHERE file_id = :f", soci::use(place.fileId);
    session << "INSERT INTO deleted_places (file_id, folder_id) VALUES (:f, :d)", soci::use(place.fileId),
        soci::use(place.folderId);
}

} // namespace

void deleteFile(Vault& vault, const Place& place)
{
    const FileRow file = vault.file(place.fileId);
    const auto path = vault.local().toMachine(vault.local().pathOf(place.folderId, file.name));
    const auto standing = vault.local().contentAt(path, vault.local().copies({&place, 1}).front());
    {
        Transaction transaction(vault.database());
        vault.permissions().refresh();
        vault.require(place, Right::Delete);
        const auto folders = vault.files().foldersOf(place.fileId);
        if (std::find(folders.begin(), folders.end(), place.folderId) == folders.end())
            throw zn::StatusError(
                E_ARK_NOT_IN_VAULT, "The folder does not show \"" + zn::toUtf8(file.name) + "\" any more.");
        if (const auto checkOut = vault.files().checkOut(place.fileId)) {
            if (!vault.isMine(*checkOut))
                throw checkedOutElsewhere(vault, *checkOut);
            if (folders.size() == 1 || checkOut->folderId == place.folderId)
                dropCheckOut(vault.database(), *checkOut);
        }
        removeFromFolder(vault, place);
        transaction.commit();
    }
    if (standing && isVersionOf(vault.files().history(place.fileId), *standing)) {
        std::error_code error;
        std::filesystem::remove(path, error);
        if (error)
            throw zn::StatusError(E_ARK_LOCAL_FILE_FAILED,
                "Could not remove the local copy " + path.string() + ": " + error.message() + ".");
    }
}

} // namespace zn::arkin
