#include "arkin/store/Restore.h"

#include "arkin/store/CheckIn.h"
#include "arkin/store/CheckOut.h"
#include "arkin/store/Codes.h"
#include "arkin/store/GetFiles.h"
#include "arkin/store/Outlines.h"

#include <soci/soci.h>

namespace zn::arkin {

std::vector<DeletedFile> deletedFiles(Vault& vault, std::int32_t folderId)
{
    std::vector<DeletedFile> files;
    DeletedFile row;
    row.folderId = folderId;
    std::string name;
    long long at = 0;
    soci::statement statement = (vault.database().session().prepare
            << "SELECT files.id, files.name, files.latest_version, files.deleted_at, files.deleted_by FROM files "
               "JOIN deleted_places ON deleted_places.file_id = files.id WHERE deleted_places.folder_id = :d "
               "AND files.deleted_at <> 0 ORDER BY files.deleted_at DESC, files.id DESC",
        soci::use(folderId), soci::into(row.fileId), soci::into(name), soci::into(row.latestVersion), soci::into(at),
        soci::into(row.deletedBy));
    statement.execute();
    while (statement.fetch()) {
        row.name = zn::toText(name);
        row.deletedAt = at;
        files.push_back(row);
    }
    return files;
}

Place restoreFile(Vault& vault, const DeletedFile& file)
{
    const Place place{file.fileId, file.folderId};
    {
        Transaction transaction(vault.database());
        vault.permissions().refresh();
        vault.permissions().require(file.folderId, Right::Add);
        const Files::NameInFolder taken{file.folderId, file.name};
        if (vault.files().find({&taken, 1}).front() != 0)
            throw zn::StatusError(E_ARK_NAME_ALREADY_EXISTS,
                "Another file named \"" + zn::toUtf8(file.name)
                    + "\" has taken its place. Rename or delete that first.");
        soci::session& session = vault.database().session();
        const std::string key = nameKey(file.name);
        session << "UPDATE files SET deleted_at = 0, deleted_by = '' WHERE id = :f", soci::use(file.fileId);
        session << "DELETE FROM deleted_places WHERE file_id = :f", soci::use(file.fileId);
        session << "INSERT INTO file_folders (folder_id, name_key, file_id) VALUES (:d, :k, :f)",
            soci::use(file.folderId), soci::use(key), soci::use(file.fileId);
        Outlines(vault).connect({&place, 1});
        transaction.commit();
    }
    const GetRequest latest{place, file.latestVersion};
    getFiles(vault, {&latest, 1});
    return place;
}

std::int32_t restoreVersion(Vault& vault, const Place& place, std::int32_t version)
{
    const FileRow file = vault.file(place.fileId);
    const VersionRow old = vault.version(place.fileId, version);
    if (version == file.latestVersion)
        throw zn::StatusError(zn::E_INVALIDARG,
            "Version " + std::to_string(version) + " of \"" + zn::toUtf8(file.name) + "\" is the latest already.");
    checkOut(vault, place);
    try {
        const auto path = vault.local().toMachine(vault.pathOf(place));
        vault.local().write(place, old.content, path, false);
        const zn::Text comment = zn::toText("Version " + std::to_string(version) + " restored");
        return checkIn(vault, planCheckIn(vault, {&place, 1}), comment).front().version;
    } catch (...) {
        const Failure failure = currentFailure();
        try {
            undoCheckOut(vault, place.fileId);
        } catch (...) {
            throw zn::StatusError(
                failure.status, failure.sentence + " The file stays checked out; 'arkin undo' gives it back.");
        }
        throw;
    }
}

} // namespace zn::arkin
