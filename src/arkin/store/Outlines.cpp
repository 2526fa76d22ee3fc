#include "arkin/store/Outlines.h"

#include "base/Paths.h"
#include "contracts/documents/DocumentError.h"

#include <set>
#include <soci/soci.h>

namespace zn::arkin {

namespace {

/// The latest version of a file, seen in the first of its folders.
struct Latest {
    FileVersion file;
    Place place;
    zn::Text name;
    Content content;
};

std::vector<Latest> latestDocuments(Vault& vault)
{
    std::vector<Latest> all;
    Latest row;
    std::string name;
    long long size = 0;
    soci::statement statement = (vault.database().session().prepare
            << "SELECT files.id, files.latest_version, MIN(file_folders.folder_id), files.name, versions.content, "
               "versions.content_size FROM files JOIN file_folders ON file_folders.file_id = files.id "
               "JOIN versions ON versions.file_id = files.id AND versions.version = files.latest_version "
               "WHERE files.vault_id = :v AND files.deleted_at = 0 "
               "GROUP BY files.id, files.latest_version, files.name, versions.content, versions.content_size "
               "ORDER BY files.id",
        soci::use(vault.info().id), soci::into(row.file.fileId), soci::into(row.file.version),
        soci::into(row.place.folderId), soci::into(name), soci::into(row.content.hash), soci::into(size));
    statement.execute();
    while (statement.fetch()) {
        row.place.fileId = row.file.fileId;
        row.name = zn::toText(name);
        row.content.size = size;
        if (hasOutline(row.name))
            all.push_back(row);
    }
    return all;
}

/// By which a waiting reference is found again: its last component.
std::string keyOf(const std::string& path) { return nameKey(zn::pathFileName(zn::toText(path))); }

} // namespace

KnownOutline Outlines::read(const FileVersion& file, const Place& place, zn::TextView name, const Content& content)
{
    KnownOutline known{file, place.folderId, {}, {}};
    if (!hasOutline(name))
        return known;
    try {
        const auto shown = m_vault.local().toMachine(m_vault.local().pathOf(place.folderId, name));
        known.outline = readOutline(m_vault.archive().pathOf(content.hash), shown);
    } catch (const DocumentError& error) {
        known.problem = std::string(error.what())
            + " So the vault doesn't know its configurations or sheets and the files that it needs.";
    }
    return known;
}

void Outlines::keep(const KnownOutline& known, std::int32_t base)
{
    if (!known.outline)
        return;
    const FileVersion& file = known.file;
    soci::session& session = m_vault.database().session();
    // What a version refers to already keeps the version of its target, as built.
    std::set<std::int32_t> standing;
    if (base == file.version)
        for (const ReferenceRow& row : m_vault.references().from(file.fileId, file.version))
            standing.insert(row.toFileId);
    else if (base != 0)
        session
            << "DELETE FROM file_references WHERE file_id = :f AND version = :v AND to_file_id IN (SELECT to_file_id "
               "FROM document_references WHERE file_id = :g AND version = :b)",
            soci::use(file.fileId), soci::use(file.version), soci::use(file.fileId), soci::use(base);
    forget(file);
    std::int32_t position = 0;
    std::string text;
    soci::statement part
        = (session.prepare << "INSERT INTO document_parts (file_id, version, position, name) VALUES (:f, :v, :p, :n)",
            soci::use(file.fileId), soci::use(file.version), soci::use(position), soci::use(text));
    for (const zn::Text& name : known.outline->parts) {
        text = zn::toUtf8(name);
        part.execute(true);
        ++position;
    }
    position = 0;
    std::string key;
    std::int32_t toFile = 0;
    soci::statement reference = (session.prepare
            << "INSERT INTO document_references (file_id, version, position, path, name_key, to_file_id) "
               "VALUES (:f, :v, :p, :n, :k, :t)",
        soci::use(file.fileId), soci::use(file.version), soci::use(position), soci::use(text), soci::use(key),
        soci::use(toFile));
    for (const std::string& path : known.outline->references) {
        const Place found = target(known.folderId, path);
        text = path;
        key = keyOf(path);
        toFile = found.fileId == file.fileId ? 0 : found.fileId;
        reference.execute(true);
        ++position;
        if (toFile != 0 && !standing.contains(toFile))
            refer(file, found);
    }
}

void Outlines::connect(std::span<const Place> arrived)
{
    soci::session& session = m_vault.database().session();
    const std::int32_t vaultId = m_vault.info().id;
    for (const Place& place : arrived) {
        const std::string key = nameKey(m_vault.file(place.fileId).name);
        struct Waiting {
            FileVersion file;
            std::int32_t position = 0;
            std::string path;
        };
        Waiting row;
        std::vector<Waiting> waiting;
        soci::statement statement
            = (session.prepare << "SELECT waiting.file_id, waiting.version, waiting.position, waiting.path "
                                  "FROM document_references waiting JOIN files ON files.id = waiting.file_id "
                                  "AND files.latest_version = waiting.version AND files.deleted_at = 0 "
                                  "WHERE waiting.name_key = :k AND waiting.to_file_id = 0 AND files.vault_id = :vault",
                soci::use(key), soci::use(vaultId), soci::into(row.file.fileId), soci::into(row.file.version),
                soci::into(row.position), soci::into(row.path));
        statement.execute();
        while (statement.fetch())
            waiting.push_back(row);
        for (const Waiting& one : waiting) {
            const auto folders = m_vault.files().foldersOf(one.file.fileId);
            if (folders.empty() || one.file.fileId == place.fileId
                || target(folders.front(), one.path).fileId != place.fileId)
                continue;
            session << "UPDATE document_references SET to_file_id = :t WHERE file_id = :f AND version = :v AND "
                       "position = :p",
                soci::use(place.fileId), soci::use(one.file.fileId), soci::use(one.file.version),
                soci::use(one.position);
            refer(one.file, place);
        }
    }
}

/// A reference as it is kept.
struct Outlines::Standing {
    FileVersion file;
    std::int32_t position = 0;
    std::string path;
    std::int32_t toFileId = 0;
};

/// The references of a file's latest version, or those of others' latest versions to it.
std::vector<Outlines::Standing> Outlines::standing(std::int32_t fileId, bool asTarget)
{
    Standing row;
    std::vector<Standing> rows;
    soci::statement statement = (m_vault.database().session().prepare
            << "SELECT r.file_id, r.version, r.position, r.path, r.to_file_id FROM document_references r "
               "JOIN files ON files.id = r.file_id AND files.latest_version = r.version AND files.deleted_at = 0 WHERE "
            << (asTarget ? "r.to_file_id" : "r.file_id") << " = :f",
        soci::use(fileId), soci::into(row.file.fileId), soci::into(row.file.version), soci::into(row.position),
        soci::into(row.path), soci::into(row.toFileId));
    statement.execute();
    while (statement.fetch())
        rows.push_back(row);
    return rows;
}

std::vector<BrokenReference> Outlines::follow(std::span<const std::int32_t> moved)
{
    std::vector<BrokenReference> broken;
    soci::session& session = m_vault.database().session();
    std::set<std::pair<std::int32_t, std::int32_t>> seen;
    for (const std::int32_t fileId : moved) {
        std::vector<Standing> rows = standing(fileId, false);
        for (Standing& row : standing(fileId, true))
            rows.push_back(std::move(row));
        for (const Standing& row : rows) {
            const auto folders = m_vault.files().foldersOf(row.file.fileId);
            if (folders.empty() || !seen.emplace(row.file.fileId, row.position).second)
                continue;
            const Place found = target(folders.front(), row.path);
            if (found.fileId == row.toFileId || found.fileId == row.file.fileId)
                continue;
            if (row.toFileId != 0)
                broken.push_back({row.file.fileId, row.toFileId, row.path});
            session << "UPDATE document_references SET to_file_id = :t WHERE file_id = :f AND version = :v AND "
                       "position = :p",
                soci::use(found.fileId), soci::use(row.file.fileId), soci::use(row.file.version),
                soci::use(row.position);
            if (found.fileId != 0)
                refer(row.file, found);
        }
    }
    return broken;
}

void Outlines::disconnect(Database& database, std::int32_t fileId)
{
    database.session() << "UPDATE document_references SET to_file_id = 0 WHERE to_file_id = :t", soci::use(fileId);
}

std::vector<zn::Text> Outlines::parts(const FileVersion& file)
{
    std::vector<zn::Text> parts;
    std::string name;
    soci::statement statement = (m_vault.database().session().prepare
            << "SELECT name FROM document_parts WHERE file_id = :f AND version = :v ORDER BY position",
        soci::use(file.fileId), soci::use(file.version), soci::into(name));
    statement.execute();
    while (statement.fetch())
        parts.push_back(zn::toText(name));
    return parts;
}

/// By the rule of the CAD application: the path itself, else a file of its name beside the document.
Place Outlines::target(std::int32_t folderId, const std::string& path)
{
    const zn::Text folder = m_vault.local().pathOf(folderId, {});
    const zn::Text there = path.starts_with('/') ? m_vault.local().fromMachine(path)
                                                 : zn::canonicalPath(zn::pathAppend(folder, zn::toText(path)));
    const zn::Text candidates[] = {there, zn::pathAppend(folder, zn::pathFileName(there))};
    for (const Place& place : m_vault.findAll(candidates)) {
        if (place.fileId != 0)
            return place;
    }
    return {};
}

void Outlines::forget(const FileVersion& file)
{
    for (const char* table : {"document_parts", "document_references"})
        m_vault.database().session() << "DELETE FROM " << table << " WHERE file_id = :f AND version = :v",
            soci::use(file.fileId), soci::use(file.version);
}

void Outlines::refer(const FileVersion& file, const Place& target)
{
    const ReferenceRow row{
        file.fileId, file.version, target.fileId, target.folderId, m_vault.file(target.fileId).latestVersion};
    m_vault.references().write({&row, 1});
}

RefreshReport refreshOutlines(Vault& vault, const std::function<void(std::int64_t, std::int64_t)>& progress)
{
    Outlines outlines(vault);
    RefreshReport report;
    const std::vector<Latest> all = latestDocuments(vault);
    for (const Latest& one : all) {
        progress(report.documents++, static_cast<std::int64_t>(all.size()));
        KnownOutline known = outlines.read(one.file, one.place, one.name, one.content);
        if (!known.problem.empty())
            report.problems.push_back(std::move(known.problem));
        Transaction transaction(vault.database());
        // A version that came meanwhile has been read when it came.
        const auto row = vault.files().row(one.file.fileId);
        if (row && !row->deleted && row->latestVersion == one.file.version)
            outlines.keep(known, one.file.version);
        transaction.commit();
    }
    return report;
}

} // namespace zn::arkin
