#include "arkin/store/FolderListing.h"

#include <soci/soci.h>

namespace zn::arkin {

namespace {

/// Asks for the files that stand where the condition says, with one number to be filled in.
class Listing {
public:
    Listing(Vault& vault, const char* condition)
        : m_statement((vault.database().session().prepare
                << "SELECT f.id, p.folder_id, f.name, f.latest_version, COALESCE(v.content_size, -1), "
                   "COALESCE(v.made_at, 0), COALESCE(v.state, ''), COALESCE(c.user_name, ''), COALESCE(c.machine, '') "
                   "FROM file_folders p JOIN files f ON f.id = p.file_id "
                   "LEFT JOIN versions v ON v.file_id = f.id AND v.version = f.latest_version "
                   "LEFT JOIN check_outs c ON c.file_id = f.id WHERE "
                << condition,
            soci::use(m_number), soci::into(m_row.fileId), soci::into(m_row.folderId), soci::into(m_row.name),
            soci::into(m_row.latestVersion), soci::into(m_size), soci::into(m_madeAt), soci::into(m_row.state),
            soci::into(m_row.checkedOutBy), soci::into(m_row.machine)))
    {
    }

    template <class Use> void forEach(std::int32_t number, Use&& use)
    {
        m_number = number;
        m_statement.execute();
        while (m_statement.fetch()) {
            m_row.size = m_size < 0 ? std::nullopt : std::optional<std::int64_t>(m_size);
            m_row.madeAt = m_madeAt;
            use(m_row);
        }
    }

private:
    ListedFile m_row;
    std::int32_t m_number = 0;
    long long m_size = 0;
    long long m_madeAt = 0;
    soci::statement m_statement;
};

} // namespace

std::vector<ListedFile> listFolder(Vault& vault, std::int32_t folderId)
{
    std::vector<ListedFile> files;
    Listing(vault, "p.folder_id = :d ORDER BY p.name_key").forEach(folderId, [&](const ListedFile& file) {
        files.push_back(file);
    });
    return files;
}

std::vector<ListedFile> listFiles(Vault& vault, std::span<const std::int32_t> fileIds)
{
    const ReadScope scope(vault.database());
    vault.permissions().refresh();
    std::vector<ListedFile> files;
    Listing listing(vault, "p.file_id = :f AND f.deleted_at = 0");
    for (const std::int32_t fileId : fileIds)
        listing.forEach(fileId, [&](const ListedFile& file) {
            if (vault.permissions().allowed(file.folderId, Right::Read))
                files.push_back(file);
        });
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
