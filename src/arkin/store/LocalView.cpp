#include "arkin/store/LocalView.h"

#include "arkin/store/Codes.h"
#include "base/Paths.h"
#include "platform/AtomicFile.h"
#include "platform/Sha256.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <soci/soci.h>
#include <system_error>

namespace zn::arkin {

namespace fs = std::filesystem;

namespace {

constexpr mode_t readOnlyMode = 0444;
constexpr mode_t writableMode = 0644;
/// File systems count a file's time in steps of some milliseconds; two changes within a step look like one.
constexpr std::int64_t timeStepNs = 50'000'000;

std::int64_t nowNs()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::system_clock::now().time_since_epoch())
        .count();
}

void makeFolders(const fs::path& folder)
{
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        throw zn::StatusError(
            E_ARK_LOCAL_FILE_FAILED, "Could not create the folder " + folder.string() + ": " + error.message() + ".");
}

} // namespace

LocalView::LocalView(Database& database, Folders& folders, const Archive& archive, zn::FileSystem& files,
    zn::TextView root, std::string machine)
    : m_database(database)
    , m_folders(folders)
    , m_archive(archive)
    , m_files(files)
    , m_root(zn::withoutTrailingSeparators(root))
    , m_machine(std::move(machine))
{
}

std::optional<zn::Text> LocalView::relativePath(zn::TextView path) const
{
    const zn::Text whole = zn::canonicalPath(path);
    if (!zn::isInFolder(whole, m_root))
        return std::nullopt;
    return zn::withoutTrailingSeparators(zn::TextView(whole).substr(std::min(m_root.size() + 1, whole.size())));
}

zn::Text LocalView::pathOf(std::int32_t folderId, zn::TextView name)
{
    zn::Text path = m_root;
    const zn::Text folder = m_folders.pathOf(folderId);
    for (const zn::TextView part : {zn::TextView(folder), name}) {
        if (!part.empty())
            path.append(u"\\").append(part);
    }
    return path;
}

fs::path LocalView::toMachine(std::int32_t folderId, zn::TextView name, MachineFolders& folders)
{
    const auto [folder, isNew] = folders.try_emplace(folderId);
    if (isNew)
        folder->second = toMachine(pathOf(folderId, u""));
    fs::path path = folder->second / zn::toUtf8(name);
    // Another spelling of the name is looked for only when this one isn't there.
    return access(path.c_str(), F_OK) == 0 ? path : toMachine(pathOf(folderId, name));
}

std::vector<std::optional<LocalCopy>> LocalView::copies(std::span<const Place> places)
{
    const ReadScope scope(m_database);
    LocalCopy copy;
    long long size = 0, modified = 0;
    soci::statement statement
        = (m_database.session().prepare << "SELECT content, content_size, modified_ns FROM local_copies "
                                           "WHERE machine = :m AND folder_id = :d AND file_id = :f",
            soci::use(m_machine), soci::use(copy.place.folderId), soci::use(copy.place.fileId),
            soci::into(copy.content.hash), soci::into(size), soci::into(modified));
    std::vector<std::optional<LocalCopy>> copies;
    copies.reserve(places.size());
    for (const Place& place : places) {
        copy.place = place;
        const bool found = statement.execute(true);
        copy.content.size = size;
        copy.modifiedNs = modified;
        copies.push_back(found ? std::optional(copy) : std::nullopt);
    }
    return copies;
}

void LocalView::requireRoot()
{
    const std::string root = zn::toUtf8(m_root);
    const std::int32_t folder = m_folders.rootId();
    std::string stored;
    m_database.session() << "SELECT v.root FROM vaults v JOIN folders f ON f.vault_id = v.id WHERE f.id = :i",
        soci::use(folder), soci::into(stored);
    if (stored != root)
        throw zn::StatusError(E_ARK_LOCAL_FILE_FAILED,
            "The vault's folder isn't " + shown(m_root) + " any more. Start this program again.");
}

void LocalView::record(std::span<const LocalCopy> copies)
{
    requireRoot();
    LocalCopy row;
    long long size = 0, modified = 0;
    soci::session& session = m_database.session();
    soci::statement remove
        = (session.prepare << "DELETE FROM local_copies WHERE machine = :m AND folder_id = :d AND file_id = :f",
            soci::use(m_machine), soci::use(row.place.folderId), soci::use(row.place.fileId));
    soci::statement insert = (session.prepare
            << "INSERT INTO local_copies (machine, folder_id, file_id, content, content_size, modified_ns) "
               "VALUES (:m, :d, :f, :c, :s, :t)",
        soci::use(m_machine), soci::use(row.place.folderId), soci::use(row.place.fileId), soci::use(row.content.hash),
        soci::use(size), soci::use(modified));
    for (const LocalCopy& copy : copies) {
        row = copy;
        size = copy.content.size;
        modified = copy.modifiedNs;
        remove.execute(true);
        insert.execute(true);
    }
}

void LocalView::forget(const Place& place)
{
    m_database.session() << "DELETE FROM local_copies WHERE folder_id = :d AND file_id = :f", soci::use(place.folderId),
        soci::use(place.fileId);
}

std::optional<Content> LocalView::contentAt(const fs::path& path, const std::optional<LocalCopy>& known)
{
    struct stat status { };
    if (lstat(path.c_str(), &status) != 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            return std::nullopt;
        throwFileFailure(E_ARK_LOCAL_FILE_FAILED, "Could not look at", path);
    }
    if (known && known->modifiedNs != 0 && known->modifiedNs == modifiedNanoseconds(status)
        && known->content.size == status.st_size)
        return known->content;
    LocalFile file(path);
    return readContent(file);
}

LocalCopy LocalView::write(const Place& place, const Content& content, const fs::path& path, bool readOnly)
{
    if (!m_isOpen)
        throw zn::StatusError(E_ARK_LOCAL_FILE_FAILED,
            "Another home works with the folder " + shown(m_root)
                + ". Give this one a folder of its own by 'arkin vault relocate DIR'.");
    makeFolders(path.parent_path());
    LocalCopy copy{place, content, 0};
    try {
        zn::AtomicFile whole(path);
        {
            FileHandle file(whole.temporary(), O_WRONLY, E_ARK_LOCAL_FILE_FAILED);
            m_archive.copyOut(content, file);
            copy.modifiedNs = modifiedNanoseconds(file.status());
            if (fchmod(file.get(), readOnly ? readOnlyMode : writableMode) != 0)
                throwFileFailure(E_ARK_LOCAL_FILE_FAILED, "Could not set the rights of", whole.temporary());
        }
        // What is lost here with the machine's power is fetched again.
        whole.commit(zn::AtomicFile::Sync::No);
    } catch (const std::system_error& error) {
        throwFileFailure(E_ARK_LOCAL_FILE_FAILED, "Could not write", path, error.code().value());
    }
    // A file that others may change at once has to be looked at again later.
    if (!readOnly)
        copy.modifiedNs = 0;
    return copy;
}

void LocalView::setReadOnly(const fs::path& path, bool readOnly)
{
    if (chmod(path.c_str(), readOnly ? readOnlyMode : writableMode) != 0)
        throwFileFailure(E_ARK_LOCAL_FILE_FAILED, "Could not set the rights of", path);
}

LocalFile::LocalFile(const fs::path& path)
    // Opening a named pipe would wait for its writer without O_NONBLOCK.
    : FileHandle(path, O_RDONLY | O_NONBLOCK, E_ARK_LOCAL_FILE_FAILED)
{
    m_status = status();
    if (!S_ISREG(m_status.st_mode))
        throw zn::StatusError(E_ARK_LOCAL_FILE_FAILED, path.string() + " is not a file. Only files go into a vault.");
}

std::int64_t LocalFile::settledTime() const
{
    const std::int64_t modified = modifiedNanoseconds(m_status);
    return modified + timeStepNs < nowNs() ? modified : 0;
}

Content readContent(FileHandle& file)
{
    std::vector<char> buffer(std::size_t{256} * 1024);
    Sha256 hash;
    Content content;
    while (const std::size_t count = file.read(buffer)) {
        hash.update(std::span(buffer.data(), count));
        content.size += static_cast<std::int64_t>(count);
    }
    content.hash = hash.finish();
    return content;
}

} // namespace zn::arkin
