#include "arkin/store/MoveFiles.h"

#include "arkin/store/CheckOut.h"
#include "base/Paths.h"

#include <algorithm>
#include <fmt/format.h>
#include <soci/soci.h>
#include <system_error>

namespace zn::arkin {

namespace fs = std::filesystem;

namespace {

/// Where a row says of a folder that something is, or was, in it.
struct FolderColumn {
    const char* table;
    const char* column;
};
const FolderColumn folderColumns[]
    = {{"file_folders", "folder_id"}, {"file_references", "to_folder_id"}, {"permissions", "folder_id"},
        {"deleted_places", "folder_id"}, {"given_back", "folder_id"}, {"local_copies", "folder_id"}};

/// A copy, or a folder of them, that follows on this machine's disk.
struct LocalMove {
    fs::path from;
    fs::path to;
    std::optional<LocalCopy> copy; ///< of a file, at its new place
};

std::string inQuotes(zn::TextView name) { return "\"" + zn::toUtf8(name) + "\""; }

/// Moves in one transaction; what happens on the disk follows its commit.
class Moving {
public:
    explicit Moving(Vault& vault)
        : m_vault(vault)
        , m_session(vault.database().session())
    {
    }

    void file(const FileMove& move);
    void folder(const FolderMove& move);
    std::vector<BrokenReference> follow();
    void moveLocalCopies();

private:
    void requireNotCheckedOut(std::int32_t fileId);
    void requireFree(std::int32_t folderId, zn::TextView name);
    void planLocal(const Place& from, zn::TextView fromName, const Place& to, zn::TextView toName);
    void requireUnchanged(const fs::path& path, const std::optional<LocalCopy>& copy);
    std::int32_t renumber(std::int32_t folderId, std::int32_t parentId, zn::TextView name);
    void takeOver(std::int32_t folderId, zn::TextView pathBefore, std::int32_t newId);
    void record(std::int32_t fileId, zn::TextView from, zn::TextView to);
    zn::Text relative(std::int32_t folderId, zn::TextView name)
    {
        return zn::pathAppend(m_vault.folders().pathOf(folderId), name);
    }

    Vault& m_vault;
    soci::session& m_session;
    std::vector<Place> m_moved; ///< at their new places
    std::vector<LocalMove> m_local;
};

void Moving::requireNotCheckedOut(std::int32_t fileId)
{
    const auto checkOut = m_vault.files().checkOut(fileId);
    if (!checkOut)
        return;
    if (!m_vault.isMine(*checkOut))
        throw checkedOutElsewhere(m_vault, *checkOut);
    throw zn::StatusError(E_ARK_CHECKED_OUT,
        inQuotes(m_vault.file(fileId).name) + " is checked out by you. Check it in, or undo that, before it is moved.");
}

void Moving::requireFree(std::int32_t folderId, zn::TextView name)
{
    const Files::NameInFolder wanted{folderId, zn::Text(name)};
    if (m_vault.files().find({&wanted, 1}).front() != 0)
        throw zn::StatusError(E_ARK_NAME_ALREADY_EXISTS,
            "A file named " + inQuotes(name) + " stands in the folder \\"
                + zn::toUtf8(m_vault.folders().pathOf(folderId)) + " already.");
}

/// What was changed there without a check-out is in no version.
void Moving::requireUnchanged(const fs::path& path, const std::optional<LocalCopy>& copy)
{
    const auto standing = m_vault.local().contentAt(path, copy);
    if (standing && (!copy || standing->hash != copy->content.hash))
        throw zn::StatusError(E_ARK_LOCAL_FILE_CHANGED,
            "The local copy " + path.string()
                + " holds what the vault doesn't know. Move that away, or get the file anew, before it is moved.");
}

void Moving::planLocal(const Place& from, zn::TextView fromName, const Place& to, zn::TextView toName)
{
    LocalView& local = m_vault.local();
    LocalMove move{local.toMachine(local.pathOf(from.folderId, fromName)), {}, local.copies({&from, 1}).front()};
    requireUnchanged(move.from, move.copy);
    local.forget(from);
    if (!move.copy)
        return;
    move.to = local.toMachine(local.pathOf(to.folderId, u"")) / zn::toUtf8(toName);
    move.copy->place = to;
    m_local.push_back(std::move(move));
}

void Moving::file(const FileMove& move)
{
    const FileRow file = m_vault.file(move.from.fileId);
    const auto folders = m_vault.files().foldersOf(file.id);
    if (std::find(folders.begin(), folders.end(), move.from.folderId) == folders.end())
        throw zn::StatusError(E_ARK_NOT_IN_VAULT, "The folder does not show " + inQuotes(file.name) + " any more.");
    const bool renamed = move.toName != file.name;
    if (renamed)
        requireGoodNewName(move.toName);
    else if (move.toFolderId == move.from.folderId)
        return;
    m_vault.require(move.from, Right::Delete);
    m_vault.permissions().require(move.toFolderId, Right::Add);
    requireNotCheckedOut(file.id);

    // A file has one name in all of its folders.
    for (const std::int32_t folderId : folders) {
        const bool moves = folderId == move.from.folderId;
        if (!moves && !renamed)
            continue;
        const Place from{file.id, folderId}, to{file.id, moves ? move.toFolderId : folderId};
        if (!moves)
            m_vault.require(from, Right::Add);
        m_session << "DELETE FROM file_folders WHERE folder_id = :d AND file_id = :f", soci::use(from.folderId),
            soci::use(file.id);
        requireFree(to.folderId, move.toName);
        planLocal(from, file.name, to, move.toName);
        const std::string key = nameKey(move.toName);
        m_session << "INSERT INTO file_folders (folder_id, name_key, file_id) VALUES (:d, :k, :f)",
            soci::use(to.folderId), soci::use(key), soci::use(file.id);
        m_session << "UPDATE file_references SET to_folder_id = :n WHERE to_file_id = :f AND to_folder_id = :o",
            soci::use(to.folderId), soci::use(file.id), soci::use(from.folderId);
        m_moved.push_back(to);
    }
    const std::string name = zn::toUtf8(move.toName);
    m_session << "UPDATE files SET name = :n WHERE id = :f", soci::use(name), soci::use(file.id);
    record(file.id, relative(move.from.folderId, file.name), relative(move.toFolderId, move.toName));
}

void Moving::folder(const FolderMove& move)
{
    Folders& folders = m_vault.folders();
    if (move.folderId == folders.rootId())
        throw zn::StatusError(zn::E_INVALIDARG, "The vault's root folder can't be moved.");
    const zn::Text before = folders.pathOf(move.folderId);
    const zn::Text after = relative(move.toParentId, move.toName);
    if (before == after)
        return;
    requireGoodNewName(move.toName);
    for (std::int32_t above = move.toParentId; above != 0; above = folders.parentOf(above))
        if (above == move.folderId)
            throw zn::StatusError(
                zn::E_INVALIDARG, "The folder \\" + zn::toUtf8(before) + " can't be moved into itself.");
    if (folders.find(after))
        throw zn::StatusError(E_ARK_NAME_ALREADY_EXISTS,
            "The vault has a folder \\" + zn::toUtf8(after)
                + (zn::equalNoCase(before, after)
                        ? " already, but for upper and lower case; give it another name first."
                        : " already."));
    LocalMove local{m_vault.local().toMachine(m_vault.local().pathOf(move.folderId, u"")), {}, {}};
    local.to = m_vault.local().toMachine(m_vault.local().pathOf(move.toParentId, u"")) / zn::toUtf8(move.toName);
    if (fs::exists(local.to))
        throw zn::StatusError(E_ARK_LOCAL_FILE_CHANGED,
            "The folder " + local.to.string() + " stands on this machine's disk and isn't the vault's. Move it away.");
    m_vault.permissions().require(move.toParentId, Right::Add);
    renumber(move.folderId, move.toParentId, move.toName);
    m_local.push_back(std::move(local));
}

/// Makes the folder with its sub-folders anew, under new numbers, and lets all that is in it be there.
std::int32_t Moving::renumber(std::int32_t folderId, std::int32_t parentId, zn::TextView name)
{
    Folders& folders = m_vault.folders();
    m_vault.permissions().require(folderId, Right::Delete);
    const zn::Text before = folders.pathOf(folderId);
    const std::int32_t newId = folders.ensure(relative(parentId, name));
    for (const std::int32_t child : folders.children(folderId))
        renumber(child, newId, zn::pathFileName(folders.pathOf(child)));
    takeOver(folderId, before, newId);
    m_session << "DELETE FROM folders WHERE id = :i", soci::use(folderId);
    return newId;
}

void Moving::takeOver(std::int32_t folderId, zn::TextView pathBefore, std::int32_t newId)
{
    for (const FileRow& file : m_vault.files().inFolder(folderId)) {
        requireNotCheckedOut(file.id);
        m_moved.push_back({file.id, newId});
        record(file.id, zn::pathAppend(pathBefore, file.name), relative(newId, file.name));
    }
    for (const FolderColumn& place : folderColumns)
        m_session << "UPDATE " << place.table << " SET " << place.column << " = :n WHERE " << place.column << " = :o",
            soci::use(newId), soci::use(folderId);
}

void Moving::record(std::int32_t fileId, zn::TextView from, zn::TextView to)
{
    const long long now = m_vault.clock().now();
    const std::string before = zn::toUtf8(from), after = zn::toUtf8(to);
    m_session << "INSERT INTO file_moves (file_id, position, moved_at, user_name, from_path, to_path) SELECT :f, "
                 "(SELECT COUNT(*) FROM file_moves WHERE file_id = :g), :t, :u, :a, :b",
        soci::use(fileId), soci::use(fileId), soci::use(now), soci::use(m_vault.caller().user), soci::use(before),
        soci::use(after);
}

std::vector<BrokenReference> Moving::follow()
{
    std::vector<std::int32_t> ids;
    ids.reserve(m_moved.size());
    for (const Place& place : m_moved)
        ids.push_back(place.fileId);
    Outlines outlines(m_vault);
    auto broken = outlines.follow(ids);
    outlines.connect(m_moved);
    return broken;
}

void Moving::moveLocalCopies()
{
    std::vector<LocalCopy> arrived;
    std::string problem;
    for (const LocalMove& move : m_local) {
        std::error_code error;
        if (!fs::exists(fs::symlink_status(move.from, error)))
            continue;
        fs::create_directories(move.to.parent_path(), error);
        // What stands there isn't the vault's; the copy can be had again.
        if (move.copy && fs::exists(fs::symlink_status(move.to)) && !fs::equivalent(move.from, move.to, error)) {
            fs::remove(move.from, error);
        } else {
            fs::rename(move.from, move.to, error);
            if (!error && move.copy)
                arrived.push_back(*move.copy);
        }
        if (error && problem.empty())
            problem = fmt::format("{} is moved in the vault, but its local copy can't follow to {}: {}.",
                move.from.string(), move.to.string(), error.message());
    }
    Transaction transaction(m_vault.database());
    m_vault.local().record(arrived);
    transaction.commit();
    if (!problem.empty())
        throw zn::StatusError(E_ARK_LOCAL_FILE_FAILED, problem);
}

zn::StatusError refusal(Vault& vault, const std::vector<BrokenReference>& broken)
{
    constexpr std::size_t most = 3;
    std::string sentence = "Nothing was moved, since references would break:";
    for (std::size_t i = 0; i < std::min(most, broken.size()); ++i)
        sentence += fmt::format("{} {} refers to {}", i == 0 ? "" : ",", inQuotes(vault.file(broken[i].fileId).name),
            inQuotes(zn::toText(broken[i].path)));
    if (broken.size() > most)
        sentence += fmt::format(" and {} more", broken.size() - most);
    return zn::StatusError(
        E_ARK_REFERENCED, sentence + ". Move the files together, so that they stay beside each other.");
}

} // namespace

std::vector<BrokenReference> moveInVault(
    Vault& vault, std::span<const FileMove> files, std::span<const FolderMove> folders, BrokenReferences broken)
{
    Moving moving(vault);
    std::vector<BrokenReference> found;
    try {
        Transaction transaction(vault.database());
        vault.permissions().refresh();
        for (const FileMove& one : files)
            moving.file(one);
        for (const FolderMove& one : folders)
            moving.folder(one);
        found = moving.follow();
        if (broken == BrokenReferences::Refuse && !found.empty())
            throw refusal(vault, found);
        transaction.commit();
    } catch (...) {
        vault.folders().forget();
        throw;
    }
    vault.folders().forget();
    vault.permissions().refresh();
    moving.moveLocalCopies();
    return found;
}

std::vector<MoveRow> movesOf(Vault& vault, std::int32_t fileId)
{
    std::vector<MoveRow> rows;
    MoveRow row;
    long long at = 0;
    std::string from, to;
    soci::statement statement = (vault.database().session().prepare
            << "SELECT moved_at, user_name, from_path, to_path FROM file_moves WHERE file_id = :f ORDER BY position",
        soci::use(fileId), soci::into(at), soci::into(row.user), soci::into(from), soci::into(to));
    statement.execute();
    while (statement.fetch()) {
        row.movedAt = at;
        row.from = zn::toText(from);
        row.to = zn::toText(to);
        rows.push_back(row);
    }
    return rows;
}

} // namespace zn::arkin
