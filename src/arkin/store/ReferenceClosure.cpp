#include "arkin/store/ReferenceClosure.h"

#include "arkin/store/Vault.h"
#include "base/NaturalOrder.h"
#include "base/Paths.h"

#include <algorithm>
#include <fmt/format.h>
#include <soci/soci.h>

namespace zn::arkin {

namespace {

/// What a row of the query tells; the meaning of its numbers stands beside each part of the query.
enum Kind { FolderKind, FileKind, StartKind, ReferenceKind, DrawingKind, SheetKind };

/// The whole query. {0}: the noted files, {1}: the noted folders, as rows of numbers; {2}: the vault;
/// {3}: the version in which a reference's target comes. The names are those of the tables, and it asks nothing that
/// is special to a server. The plus before a column keeps a server from walking all files of a vault for each folder.
constexpr const char* closureQuery = R"(
WITH RECURSIVE
noted(position, file_id, folder_id, version) AS ({0}),
noted_folders(position, id) AS ({1}),
tree(position, id) AS (
    SELECT position, id FROM noted_folders
    UNION
    SELECT tree.position, folders.id FROM tree JOIN folders ON folders.vault_id = {2} AND folders.parent_id = tree.id),
starts(position, file_id, folder_id, version) AS (
    SELECT noted.position, noted.file_id, noted.folder_id,
           CASE WHEN noted.version > 0 THEN noted.version ELSE files.latest_version END
    FROM noted JOIN file_folders ON file_folders.file_id = noted.file_id AND file_folders.folder_id = noted.folder_id
    JOIN files ON files.id = noted.file_id AND files.vault_id = {2}
    UNION ALL
    SELECT tree.position, files.id, tree.id, files.latest_version
    FROM tree JOIN file_folders ON file_folders.folder_id = tree.id
    JOIN files ON files.id = file_folders.file_id AND +files.vault_id = {2}),
reached(file_id, version) AS (
    SELECT file_id, version FROM starts
    UNION
    SELECT target.id, {3} FROM reached
    JOIN file_references made ON made.file_id = reached.file_id AND made.version = reached.version
    JOIN files target ON target.id = made.to_file_id AND target.deleted_at = 0),
targets(file_id, version, to_file_id, to_folder_id, to_version) AS (
    SELECT made.file_id, made.version, target.id,
           COALESCE((SELECT folder_id FROM file_folders
                     WHERE file_id = made.to_file_id AND folder_id = made.to_folder_id),
                    (SELECT MIN(folder_id) FROM file_folders WHERE file_id = made.to_file_id)), {3}
    FROM reached
    JOIN file_references made ON made.file_id = reached.file_id AND made.version = reached.version
    JOIN files target ON target.id = made.to_file_id AND target.deleted_at = 0),
drawings(file_id, drawing_id, folder_id, version) AS (
    SELECT DISTINCT model.file_id, drawing.id,
           (SELECT MIN(folder_id) FROM file_folders WHERE file_id = drawing.id), drawing.latest_version
    FROM (SELECT DISTINCT file_id FROM reached) model
    JOIN file_references made ON made.to_file_id = model.file_id
    JOIN files drawing ON drawing.id = made.file_id AND drawing.latest_version = made.version
    WHERE drawing.deleted_at = 0 AND (LOWER(drawing.name) LIKE '%.zendrw' OR LOWER(drawing.name) LIKE '%.drw')),
listed(file_id, version) AS (
    SELECT file_id, version FROM reached UNION SELECT drawing_id, version FROM drawings),
chain(id, parent_id, name) AS (
    SELECT id, parent_id, name FROM folders WHERE id IN (
        SELECT folder_id FROM starts UNION SELECT to_folder_id FROM targets UNION SELECT folder_id FROM drawings)
    UNION
    SELECT folders.id, folders.parent_id, folders.name FROM chain JOIN folders ON folders.id = chain.parent_id)
-- id, parent; name
SELECT 0, id, parent_id, 0, 0, 0, name FROM chain
UNION ALL
-- id, latest version; name
SELECT 1, id, latest_version, 0, 0, 0, name FROM files WHERE id IN (SELECT file_id FROM listed)
UNION ALL
-- position, file, folder, version
SELECT 2, position, file_id, folder_id, version, 0, '' FROM starts
UNION ALL
-- file, version, target, its folder, its version
SELECT 3, file_id, version, to_file_id, to_folder_id, to_version, '' FROM targets
UNION ALL
-- file, drawing, its folder, its version
SELECT 4, file_id, drawing_id, folder_id, version, 0, '' FROM drawings
UNION ALL
-- drawing, version, position in the drawing; sheet
SELECT 5, listed.file_id, listed.version, parts.position, 0, 0, parts.name
FROM listed JOIN files ON files.id = listed.file_id
    AND (LOWER(files.name) LIKE '%.zendrw' OR LOWER(files.name) LIKE '%.drw')
JOIN document_parts parts ON parts.file_id = listed.file_id AND parts.version = listed.version
UNION ALL
-- of drawings that tell nothing of themselves what their cards know
SELECT DISTINCT 5, listed.file_id, listed.version, 0, 0, 0, card_values.configuration
FROM listed JOIN files ON files.id = listed.file_id
    AND (LOWER(files.name) LIKE '%.zendrw' OR LOWER(files.name) LIKE '%.drw')
JOIN card_values ON card_values.file_id = listed.file_id AND card_values.version = listed.version
    AND card_values.configuration NOT IN ('', '@')
WHERE NOT EXISTS (SELECT 1 FROM document_parts
                  WHERE file_id = listed.file_id AND version = listed.version)
)";

/// One row of the query.
struct Row {
    int kind = 0;
    std::int32_t a = 0, b = 0, c = 0, d = 0, e = 0;
    std::string name;
};

/// Rows of numbers as a table of the query.
std::string tableOf(const std::string& rows, const char* emptyTable)
{
    return rows.empty() ? std::string(emptyTable) : "VALUES " + rows;
}

std::string queryFor(Vault& vault, std::span<const ClosureStart> starts, bool asBuilt)
{
    std::string files, folders;
    for (std::size_t i = 0; i < starts.size(); ++i) {
        const ClosureStart& start = starts[i];
        if (start.fileId != 0)
            files += fmt::format(
                "{}({},{},{},{})", files.empty() ? "" : ",", i, start.fileId, start.folderId, start.version);
        else
            folders += fmt::format("{}({},{})", folders.empty() ? "" : ",", i, start.folderId);
    }
    return fmt::format(fmt::runtime(closureQuery), tableOf(files, "SELECT 0, 0, 0, 0 WHERE 1 = 0"),
        tableOf(folders, "SELECT 0, 0 WHERE 1 = 0"), vault.info().id,
        asBuilt ? "made.to_version" : "target.latest_version");
}

/// A drawing's sheet with its place in the drawing.
struct Sheet {
    int position = 0;
    zn::Text name;
};
using Sheets = std::unordered_map<std::int64_t, std::vector<Sheet>>;

void take(ReferenceClosure& closure, Sheets& sheets, Folders& folders, const Row& row)
{
    switch (row.kind) {
    case FolderKind:
        folders.keep(row.a, row.b, zn::toText(row.name));
        break;
    case FileKind:
        closure.files[row.a] = {zn::toText(row.name), row.b};
        break;
    case StartKind:
        closure.starts.push_back({static_cast<std::size_t>(row.a), {row.b, row.c}, row.d});
        break;
    case ReferenceKind:
        closure.references[ReferenceClosure::key(row.a, row.b)].push_back({{row.c, row.d}, row.e});
        break;
    case DrawingKind:
        closure.drawings[row.a].push_back({{row.b, row.c}, row.d});
        break;
    case SheetKind:
        sheets[ReferenceClosure::key(row.a, row.b)].push_back({row.c, zn::toText(row.name)});
        break;
    }
}

/// In the drawings' order; names without one as people count, 2 before 10.
void sortSheets(ReferenceClosure& closure, Sheets& sheets)
{
    for (auto& [key, all] : sheets) {
        std::sort(all.begin(), all.end(), [](const Sheet& a, const Sheet& b) {
            return a.position != b.position ? a.position < b.position : zn::naturallyLess(a.name, b.name);
        });
        for (Sheet& sheet : all)
            closure.sheets[key].push_back(std::move(sheet.name));
    }
}

} // namespace

bool isDrawing(zn::TextView name)
{
    const zn::Text extension = zn::foldCase(zn::pathExtension(name));
    return extension == u".zendrw" || extension == u".drw";
}

ReferenceClosure readReferenceClosure(Vault& vault, std::span<const ClosureStart> starts, bool asBuilt)
{
    ReferenceClosure closure;
    if (starts.empty())
        return closure;
    Sheets sheets;
    Row row;
    soci::statement statement = (vault.database().session().prepare << queryFor(vault, starts, asBuilt),
        soci::into(row.kind), soci::into(row.a), soci::into(row.b), soci::into(row.c), soci::into(row.d),
        soci::into(row.e), soci::into(row.name));
    statement.execute();
    while (statement.fetch())
        take(closure, sheets, vault.folders(), row);
    sortSheets(closure, sheets);
    return closure;
}

} // namespace zn::arkin
