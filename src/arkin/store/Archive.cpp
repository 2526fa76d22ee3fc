#include "arkin/store/Archive.h"

#include "arkin/store/Codes.h"
#include "arkin/store/Uuid.h"
#include "platform/AtomicFile.h"
#include "platform/PrivateFiles.h"
#include "platform/Sha256.h"

#include <cerrno>
#include <fcntl.h>
#include <fmt/chrono.h>
#include <fstream>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace zn::arkin {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t bufferSize = std::size_t{256} * 1024;
constexpr mode_t contentMode = 0400;
constexpr mode_t sharedContentMode = 0440;
/// From this number on, one sync of the file system is cheaper than one for each file.
constexpr std::size_t manyFiles = 16;

std::string shardOf(const std::string& hash) { return hash.substr(0, 2); }

bool isContentName(const std::string& name)
{
    return name.size() == 64 && name.find_first_not_of("0123456789abcdef") == std::string::npos;
}

void makeFolder(const fs::path& folder, zn::Sharing sharing)
{
    try {
        zn::makePrivateFolder(folder, sharing);
    } catch (const std::system_error& error) {
        throwFileFailure(E_ARK_ARCHIVE, "Could not create the folder", folder, error.code().value());
    }
}

void makeLock(const fs::path& file, zn::Sharing sharing)
{
    try {
        zn::makePrivateFile(file, sharing);
    } catch (const std::system_error& error) {
        throwFileFailure(E_ARK_ARCHIVE, "Could not create", file, error.code().value());
    }
}

void syncFolder(const fs::path& folder) { FileHandle(folder, O_RDONLY | O_DIRECTORY, E_ARK_ARCHIVE).sync(); }

/// Not one behind a link, which somebody may have laid to a folder that is dear to this user.
bool isFolder(const fs::path& path) { return fs::is_directory(fs::symlink_status(path)); }

void removeFiles(const std::vector<fs::path>& files)
{
    for (const fs::path& file : files) {
        if (unlink(file.c_str()) != 0 && errno != ENOENT)
            throwFileFailure(E_ARK_ARCHIVE, "Could not remove", file);
    }
}

std::string dayOf(std::int64_t time) { return fmt::format("{:%Y-%m-%d}", fmt::gmtime(time)); }

/// Deletes the contents that were set aside before a day. Whatever else lies in the folder stays.
int deleteDaysBefore(const fs::path& removed, const std::string& firstKept)
{
    int count = 0;
    if (!isFolder(removed))
        return count;
    for (const auto& day : fs::directory_iterator(removed)) {
        const std::string name = day.path().filename();
        if (name.size() != firstKept.size() || name >= firstKept || !isFolder(day.path()))
            continue;
        std::vector<fs::path> contents;
        for (const auto& file : fs::directory_iterator(day.path())) {
            if (isContentName(file.path().filename()))
                contents.push_back(file.path());
        }
        removeFiles(contents);
        count += static_cast<int>(contents.size());
        rmdir(day.path().c_str());
    }
    return count;
}

void takeSharedLock(FileHandle& lock, const fs::path& path)
{
    while (flock(lock.get(), LOCK_SH) != 0) {
        if (errno != EINTR)
            throwFileFailure(E_ARK_ARCHIVE, "Could not lock", path);
    }
}

} // namespace

Content copyAndHash(FileHandle& source, FileHandle* destination)
{
    std::vector<char> buffer(bufferSize);
    Sha256 hash;
    Content content;
    while (const std::size_t count = source.read(buffer)) {
        const std::span bytes(buffer.data(), count);
        hash.update(bytes);
        if (destination)
            destination->writeAll(bytes);
        content.size += static_cast<std::int64_t>(count);
    }
    content.hash = hash.finish();
    return content;
}

Archive::Archive(const fs::path& folder)
    : m_folder(folder)
    , m_sharing(zn::sharingOf(fs::absolute(folder).parent_path()))
{
    const bool isNew = !fs::exists(folder / "incoming");
    makeFolder(folder, m_sharing);
    makeFolder(folder / "incoming", m_sharing);
    makeLock(folder / "lock", m_sharing);
    if (isNew) {
        syncFolder(folder);
        syncFolder(fs::absolute(folder).parent_path());
    }
}

std::string Archive::identity() const
{
    std::ifstream file(m_folder / "identity");
    std::string line;
    std::getline(file, line);
    return line;
}

void Archive::setIdentity(const std::string& identity)
{
    const fs::path path = m_folder / "identity";
    try {
        zn::AtomicFile file(path);
        file.write(identity + "\n");
        file.commit(zn::AtomicFile::Sync::Yes);
        zn::makePrivateFile(path, m_sharing);
    } catch (const std::system_error& error) {
        errno = error.code().value();
        throwFileFailure(E_ARK_ARCHIVE, "Could not write", path);
    }
}

bool Archive::empty() const
{
    bool isEmpty = true;
    forEach([&](const std::string&) { isEmpty = false; });
    return isEmpty;
}

fs::path Archive::ownPathOf(const std::string& hash) const { return m_folder / shardOf(hash) / hash; }

fs::path Archive::pathOf(const std::string& hash) const
{
    fs::path own = ownPathOf(hash);
    if (m_behind.empty() || access(own.c_str(), F_OK) == 0)
        return own;
    const fs::path behind = m_behind / shardOf(hash) / hash;
    return access(behind.c_str(), F_OK) == 0 ? behind : own;
}

bool Archive::holds(const std::string& hash) const { return access(pathOf(hash).c_str(), F_OK) == 0; }

bool Archive::holdsSized(const Content& content) const
{
    struct stat status { };
    return stat(pathOf(content.hash).c_str(), &status) == 0 && status.st_size == content.size;
}

void Archive::copyOut(const Content& content, FileHandle& destination) const
{
    FileHandle source(pathOf(content.hash), O_RDONLY, E_ARK_ARCHIVE);
    if (copyAndHash(source, &destination) != content)
        throw zn::StatusError(E_ARK_ARCHIVE,
            "The archive's copy of a file is damaged: " + pathOf(content.hash).string()
                + ". Bring it back from a backup.");
}

std::optional<std::string> Archive::problemOf(const Content& content) const
{
    if (!holds(content.hash))
        return "its content is missing in the archive: " + pathOf(content.hash).string();
    FileHandle source(pathOf(content.hash), O_RDONLY, E_ARK_ARCHIVE);
    if (copyAndHash(source, nullptr) != content)
        return "its content is damaged in the archive: " + pathOf(content.hash).string();
    return std::nullopt;
}

void Archive::forEach(const std::function<void(const std::string& hash)>& visit) const
{
    for (const auto& shard : fs::directory_iterator(m_folder)) {
        if (shard.path().filename().native().size() != 2 || !isFolder(shard.path()))
            continue;
        for (const auto& file : fs::directory_iterator(shard.path())) {
            if (isContentName(file.path().filename()))
                visit(file.path().filename());
        }
    }
}

void Archive::removeArrivals()
{
    if (arrivals().empty())
        return;
    FileHandle lock(m_folder / "lock", O_RDWR | O_CREAT, E_ARK_ARCHIVE);
    if (flock(lock.get(), LOCK_EX | LOCK_NB) == 0)
        removeFiles(arrivals());
}

template <class Visit> bool Archive::forEachLeftover(const IsNeeded& isNeeded, const Visit& visit) const
{
    FileHandle lock(m_folder / "lock", O_RDWR | O_CREAT, E_ARK_ARCHIVE);
    if (flock(lock.get(), LOCK_EX | LOCK_NB) != 0)
        return false;
    std::vector<std::string> leftovers;
    forEach([&](const std::string& hash) {
        if (!isNeeded(hash))
            leftovers.push_back(hash);
    });
    for (const std::string& hash : leftovers)
        visit(hash);
    return true;
}

std::optional<int> Archive::countLeftovers(const IsNeeded& isNeeded) const
{
    int count = 0;
    return forEachLeftover(isNeeded, [&](const std::string&) { ++count; }) ? std::optional(count) : std::nullopt;
}

std::optional<Archive::SetAside> Archive::setAside(const IsNeeded& isNeeded, std::int64_t before, std::int64_t now)
{
    SetAside done;
    const fs::path removed = m_folder / "removed";
    const fs::path today = removed / dayOf(now);
    const bool alone = forEachLeftover(isNeeded, [&](const std::string& hash) {
        const fs::path path = ownPathOf(hash);
        struct stat status { };
        if (stat(path.c_str(), &status) != 0 || status.st_mtime >= before) {
            ++done.tooNew;
            return;
        }
        makeFolder(removed, m_sharing);
        makeFolder(today, m_sharing);
        if (rename(path.c_str(), (today / hash).c_str()) != 0)
            throwFileFailure(E_ARK_ARCHIVE, "Could not set aside", path);
        ++done.moved;
        done.bytes += status.st_size;
    });
    if (!alone)
        return std::nullopt;
    constexpr std::int64_t day = std::int64_t{24} * 60 * 60;
    done.deleted = deleteDaysBefore(removed, dayOf(now - keptDays * day));
    return done;
}

std::optional<Archive::SetAside> Archive::removeLeftovers(const IsNeeded& isNeeded)
{
    SetAside done;
    const bool alone = forEachLeftover(isNeeded, [&](const std::string& hash) {
        const fs::path path = ownPathOf(hash);
        struct stat status { };
        done.bytes += lstat(path.c_str(), &status) == 0 ? status.st_size : 0;
        removeFiles({path});
        ++done.moved;
    });
    return alone ? std::optional(done) : std::nullopt;
}

std::vector<fs::path> Archive::arrivals() const
{
    std::vector<fs::path> files;
    for (const auto& file : fs::directory_iterator(m_folder / "incoming"))
        files.push_back(file.path());
    return files;
}

ArchiveBatch::ArchiveBatch(const Archive& archive)
    : m_archive(archive)
    , m_lock(archive.m_folder / "lock", O_RDWR | O_CREAT, E_ARK_ARCHIVE)
    , m_name(newUuid())
{
    takeSharedLock(m_lock, archive.m_folder / "lock");
}

ArchiveBatch::~ArchiveBatch()
{
    for (const Arrival& arrival : m_arrivals)
        unlink(arrival.path.c_str());
}

Content ArchiveBatch::takeIn(FileHandle& source)
{
    const fs::path path = m_archive.m_folder / "incoming" / (m_name + "-" + std::to_string(++m_count));
    FileHandle destination(path, O_WRONLY | O_CREAT | O_EXCL, E_ARK_ARCHIVE, contentMode);
    m_arrivals.push_back({path, {}});
    try {
        if (m_archive.m_sharing == zn::Sharing::Group && fchmod(destination.get(), sharedContentMode) != 0)
            throwFileFailure(E_ARK_ARCHIVE, "Could not share", path);
        Content content = copyAndHash(source, &destination);
        m_arrivals.back().hash = content.hash;
        return content;
    } catch (...) {
        dropLast(); // the batch may go on without it
        throw;
    }
}

void ArchiveBatch::dropLast()
{
    unlink(m_arrivals.back().path.c_str());
    m_arrivals.pop_back();
}

Content ArchiveBatch::put(FileHandle& source)
{
    Content content = takeIn(source);
    // A content whose size is wrong was damaged later; putting it again repairs it.
    if (m_archive.holdsSized(content)) {
        dropLast();
        m_sharedFolders.insert(shardOf(content.hash));
    }
    return content;
}

bool ArchiveBatch::putAs(const Content& content, FileHandle& source)
{
    if (takeIn(source) == content)
        return true;
    dropLast();
    return false;
}

void ArchiveBatch::publish()
{
    // First the bytes, then the names: a name in a shard always stands for a whole content, also after a power cut.
    syncArrivals();
    std::unordered_set<std::string> folders = std::move(m_sharedFolders);
    m_sharedFolders.clear();
    while (!m_arrivals.empty()) {
        const Arrival& arrival = m_arrivals.back();
        const fs::path final = m_archive.ownPathOf(arrival.hash);
        if (folders.insert(shardOf(arrival.hash)).second)
            makeFolder(final.parent_path(), m_archive.m_sharing);
        if (rename(arrival.path.c_str(), final.c_str()) != 0)
            throwFileFailure(E_ARK_ARCHIVE, "Could not put a content to", final);
        m_arrivals.pop_back();
    }
    syncFolders(folders);
}

void ArchiveBatch::syncArrivals()
{
    if (m_arrivals.size() >= manyFiles) {
        FileHandle(m_archive.m_folder, O_RDONLY | O_DIRECTORY, E_ARK_ARCHIVE).syncFileSystem();
        return;
    }
    for (const Arrival& arrival : m_arrivals)
        FileHandle(arrival.path, O_RDONLY, E_ARK_ARCHIVE).sync();
}

void ArchiveBatch::syncFolders(const std::unordered_set<std::string>& folders)
{
    if (folders.size() >= manyFiles) {
        FileHandle(m_archive.m_folder, O_RDONLY | O_DIRECTORY, E_ARK_ARCHIVE).syncFileSystem();
        return;
    }
    if (folders.empty())
        return;
    for (const std::string& folder : folders)
        syncFolder(m_archive.m_folder / folder);
    syncFolder(m_archive.m_folder);
}

} // namespace zn::arkin
