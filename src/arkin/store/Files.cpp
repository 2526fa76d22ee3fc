#include "arkin/store/Files.h"

#include "arkin/store/Folders.h"

#include <soci/soci.h>

namespace zn::arkin {

namespace {

/// A file's row as it comes from the database.
struct RawFile {
    std::int32_t id = 0;
    std::string name;
    std::int32_t latestVersion = 0;
    long long deletedAt = 0;

    FileRow row() const { return {id, zn::toText(name), latestVersion, deletedAt != 0}; }
};

struct RawVersion {
    std::int32_t version = 0;
    std::string hash;
    long long size = 0;
    std::string comment, user;
    long long madeAt = 0;
    std::string revision, state;
    std::int32_t run = 0;

    VersionRow row() const
    {
        return {version, {hash, size}, zn::toText(comment), zn::toText(user), madeAt, zn::toText(revision),
            zn::toText(state), run};
    }
};

const char* const versionColumns
    = "SELECT version, content, content_size, comment_text, user_name, made_at, revision, state, run_id FROM versions ";

} // namespace

std::vector<std::optional<FileRow>> Files::rows(std::span<const std::int32_t> fileIds)
{
    const ReadScope scope(m_database);
    RawFile file;
    std::int32_t id = 0;
    soci::statement statement = (m_database.session().prepare
            << "SELECT id, name, latest_version, deleted_at FROM files WHERE id = :i AND vault_id = :v",
        soci::use(id), soci::use(m_vaultId), soci::into(file.id), soci::into(file.name), soci::into(file.latestVersion),
        soci::into(file.deletedAt));
    std::vector<std::optional<FileRow>> rows;
    rows.reserve(fileIds.size());
    for (const std::int32_t asked : fileIds) {
        id = asked;
        rows.push_back(statement.execute(true) ? std::optional(file.row()) : std::nullopt);
    }
    return rows;
}

std::optional<FileRow> Files::row(std::int32_t fileId) { return rows({&fileId, 1}).front(); }

std::vector<std::optional<VersionRow>> Files::versions(std::span<const FileVersion> asked)
{
    const ReadScope scope(m_database);
    RawVersion version;
    FileVersion key;
    soci::statement statement
        = (m_database.session().prepare << versionColumns << "WHERE file_id = :f AND version = :v",
            soci::use(key.fileId), soci::use(key.version), soci::into(version.version), soci::into(version.hash),
            soci::into(version.size), soci::into(version.comment), soci::into(version.user), soci::into(version.madeAt),
            soci::into(version.revision), soci::into(version.state), soci::into(version.run));
    std::vector<std::optional<VersionRow>> rows;
    rows.reserve(asked.size());
    for (const FileVersion& wanted : asked) {
        key = wanted;
        rows.push_back(statement.execute(true) ? std::optional(version.row()) : std::nullopt);
    }
    return rows;
}

std::optional<VersionRow> Files::version(std::int32_t fileId, std::int32_t version)
{
    const FileVersion asked{fileId, version};
    return versions({&asked, 1}).front();
}

std::vector<VersionRow> Files::history(std::int32_t fileId)
{
    RawVersion version;
    soci::statement statement
        = (m_database.session().prepare << versionColumns << "WHERE file_id = :f ORDER BY version", soci::use(fileId),
            soci::into(version.version), soci::into(version.hash), soci::into(version.size),
            soci::into(version.comment), soci::into(version.user), soci::into(version.madeAt),
            soci::into(version.revision), soci::into(version.state), soci::into(version.run));
    statement.execute();
    std::vector<VersionRow> rows;
    while (statement.fetch())
        rows.push_back(version.row());
    return rows;
}

std::vector<std::optional<CheckOutRow>> Files::checkOuts(std::span<const std::int32_t> fileIds)
{
    const ReadScope scope(m_database);
    CheckOutRow row;
    std::int32_t id = 0;
    int cardOpen = 0, referencesOpen = 0;
    long long takenAt = 0;
    soci::statement statement = (m_database.session().prepare
            << "SELECT file_id, folder_id, user_name, machine, taken_at, base_version, card_open, references_open, "
               "run_id FROM check_outs WHERE file_id = :f",
        soci::use(id), soci::into(row.fileId), soci::into(row.folderId), soci::into(row.user), soci::into(row.machine),
        soci::into(takenAt), soci::into(row.baseVersion), soci::into(cardOpen), soci::into(referencesOpen),
        soci::into(row.run));
    std::vector<std::optional<CheckOutRow>> rows;
    rows.reserve(fileIds.size());
    for (const std::int32_t asked : fileIds) {
        id = asked;
        const bool found = statement.execute(true);
        row.takenAt = takenAt;
        row.cardOpen = cardOpen != 0;
        row.referencesOpen = referencesOpen != 0;
        rows.push_back(found ? std::optional(row) : std::nullopt);
    }
    return rows;
}

std::optional<CheckOutRow> Files::checkOut(std::int32_t fileId) { return checkOuts({&fileId, 1}).front(); }

std::vector<std::int32_t> Files::find(std::span<const NameInFolder> asked)
{
    const ReadScope scope(m_database);
    std::int32_t folderId = 0, fileId = 0;
    std::string key;
    soci::statement statement
        = (m_database.session().prepare << "SELECT file_id FROM file_folders WHERE folder_id = :f AND name_key = :k",
            soci::use(folderId), soci::use(key), soci::into(fileId));
    std::vector<std::int32_t> ids;
    ids.reserve(asked.size());
    for (const NameInFolder& wanted : asked) {
        folderId = wanted.folderId;
        key = nameKey(wanted.name);
        ids.push_back(statement.execute(true) ? fileId : 0);
    }
    return ids;
}

std::vector<FileRow> Files::inFolder(std::int32_t folderId)
{
    RawFile file;
    soci::statement statement = (m_database.session().prepare
            << "SELECT files.id, files.name, files.latest_version, files.deleted_at FROM file_folders "
               "JOIN files ON files.id = file_folders.file_id WHERE file_folders.folder_id = :f "
               "ORDER BY file_folders.name_key",
        soci::use(folderId), soci::into(file.id), soci::into(file.name), soci::into(file.latestVersion),
        soci::into(file.deletedAt));
    statement.execute();
    std::vector<FileRow> rows;
    while (statement.fetch())
        rows.push_back(file.row());
    return rows;
}

std::vector<std::int32_t> Files::foldersOf(std::int32_t fileId)
{
    std::int32_t folderId = 0;
    soci::statement statement
        = (m_database.session().prepare << "SELECT folder_id FROM file_folders WHERE file_id = :f ORDER BY folder_id",
            soci::use(fileId), soci::into(folderId));
    statement.execute();
    std::vector<std::int32_t> ids;
    while (statement.fetch())
        ids.push_back(folderId);
    return ids;
}

} // namespace zn::arkin
