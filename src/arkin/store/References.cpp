#include "arkin/store/References.h"

#include <soci/soci.h>

namespace zn::arkin {

std::vector<std::vector<ReferenceRow>> References::from(std::span<const FileVersion> asked)
{
    const ReadScope scope(m_database);
    ReferenceRow row;
    soci::statement statement
        = (m_database.session().prepare << "SELECT to_file_id, to_folder_id, to_version FROM file_references "
                                           "WHERE file_id = :f AND version = :v ORDER BY to_file_id",
            soci::use(row.fileId), soci::use(row.version), soci::into(row.toFileId), soci::into(row.toFolderId),
            soci::into(row.toVersion));
    std::vector<std::vector<ReferenceRow>> all;
    all.reserve(asked.size());
    for (const FileVersion& wanted : asked) {
        row.fileId = wanted.fileId;
        row.version = wanted.version;
        std::vector<ReferenceRow>& list = all.emplace_back();
        statement.execute();
        while (statement.fetch())
            list.push_back(row);
    }
    return all;
}

std::vector<ReferenceRow> References::from(std::int32_t fileId, std::int32_t version)
{
    const FileVersion asked{fileId, version};
    return from({&asked, 1}).front();
}

std::vector<ReferenceRow> References::to(std::int32_t fileId)
{
    ReferenceRow row;
    soci::statement statement = (m_database.session().prepare
            << "SELECT file_id, version, to_file_id, to_folder_id, to_version FROM file_references "
               "WHERE to_file_id = :f ORDER BY file_id, version",
        soci::use(fileId), soci::into(row.fileId), soci::into(row.version), soci::into(row.toFileId),
        soci::into(row.toFolderId), soci::into(row.toVersion));
    statement.execute();
    std::vector<ReferenceRow> rows;
    while (statement.fetch())
        rows.push_back(row);
    return rows;
}

void References::write(std::span<const ReferenceRow> references)
{
    ReferenceRow row;
    soci::session& session = m_database.session();
    soci::statement remove
        = (session.prepare << "DELETE FROM file_references WHERE file_id = :f AND version = :v AND to_file_id = :t",
            soci::use(row.fileId), soci::use(row.version), soci::use(row.toFileId));
    soci::statement insert
        = (session.prepare << "INSERT INTO file_references (file_id, version, to_file_id, to_folder_id, to_version) "
                              "VALUES (:f, :v, :t, :d, :w)",
            soci::use(row.fileId), soci::use(row.version), soci::use(row.toFileId), soci::use(row.toFolderId),
            soci::use(row.toVersion));
    for (const ReferenceRow& reference : references) {
        row = reference;
        remove.execute(true);
        insert.execute(true);
    }
}

void References::copy(std::int32_t fileId, std::int32_t fromVersion, std::int32_t toVersion)
{
    m_database.session() << "INSERT INTO file_references (file_id, version, to_file_id, to_folder_id, to_version) "
                            "SELECT file_id, :t, to_file_id, to_folder_id, to_version FROM file_references "
                            "WHERE file_id = :f AND version = :v",
        soci::use(toVersion), soci::use(fileId), soci::use(fromVersion);
}

} // namespace zn::arkin
