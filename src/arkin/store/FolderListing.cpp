#include "arkin/store/FolderListing.h"

#include <soci/soci.h>

namespace zn::arkin {

std::vector<ListedFile> listFolder(Vault& vault, std::int32_t folderId)
{
    ListedFile row;
    long long size = 0, madeAt = 0;
    soci::statement statement = (vault.database().session().prepare
            << "SELECT f.id, f.name, f.latest_version, COALESCE(v.content_size, -1), COALESCE(v.made_at, 0), "
               "COALESCE(v.state, ''), COALESCE(c.user_name, ''), COALESCE(c.machine, '') "
               "FROM file_folders p JOIN files f ON f.id = p.file_id "
               "LEFT JOIN versions v ON v.file_id = f.id AND v.version = f.latest_version "
               "LEFT JOIN check_outs c ON c.file_id = f.id WHERE p.folder_id = :d ORDER BY p.name_key",
        soci::use(folderId), soci::into(row.fileId), soci::into(row.name), soci::into(row.latestVersion),
        soci::into(size), soci::into(madeAt), soci::into(row.state), soci::into(row.checkedOutBy),
        soci::into(row.machine));
    statement.execute();
    std::vector<ListedFile> files;
    while (statement.fetch()) {
        row.size = size < 0 ? std::nullopt : std::optional<std::int64_t>(size);
        row.madeAt = madeAt;
        files.push_back(row);
    }
    return files;
}

std::unordered_map<std::int32_t, std::string> cardTextsOf(Vault& vault, std::int32_t folderId)
{
    std::int32_t fileId = 0;
    std::string value;
    soci::statement statement = (vault.database().session().prepare
            << "SELECT c.file_id, c.value_text FROM file_folders p JOIN files f ON f.id = p.file_id "
               "JOIN card_values c ON c.file_id = f.id AND c.version = f.latest_version WHERE p.folder_id = :d",
        soci::use(folderId), soci::into(fileId), soci::into(value));
    statement.execute();
    std::unordered_map<std::int32_t, std::string> texts;
    while (statement.fetch())
        texts[fileId] += zn::toUtf8(zn::foldCase(zn::toText(value))) + '\n';
    return texts;
}

std::unordered_map<std::int32_t, std::string> cardColumnOf(Vault& vault, std::int32_t folderId, std::int32_t variableId)
{
    std::int32_t fileId = 0;
    std::string value;
    soci::statement statement = (vault.database().session().prepare
            << "SELECT c.file_id, c.value_text FROM file_folders p JOIN files f ON f.id = p.file_id "
               "JOIN card_values c ON c.file_id = f.id AND c.version = f.latest_version AND c.variable_id = :v "
               "AND c.configuration = '@' WHERE p.folder_id = :d",
        soci::use(variableId), soci::use(folderId), soci::into(fileId), soci::into(value));
    statement.execute();
    std::unordered_map<std::int32_t, std::string> values;
    while (statement.fetch())
        values[fileId] = value;
    return values;
}

} // namespace zn::arkin
