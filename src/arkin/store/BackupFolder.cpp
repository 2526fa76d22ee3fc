#include "arkin/store/BackupFolder.h"

#include "arkin/store/Codes.h"
#include "platform/AtomicFile.h"
#include "platform/Sqlite.h"

#include <algorithm>
#include <ctime>
#include <fcntl.h>
#include <fmt/chrono.h>
#include <fstream>
#include <soci/soci.h>
#include <sys/file.h>

namespace zn::arkin {

namespace fs = std::filesystem;

namespace {

constexpr const char* making = "making";   ///< a copy that isn't whole yet
constexpr const char* retired = "retired"; ///< copies that are being removed
constexpr const char* nameForm = "%Y-%m-%dT%H-%M-%SZ";
constexpr std::size_t nameLength = 20;

/// The moment of a copy of this name; none for any other name.
std::optional<std::int64_t> timeOf(const std::string& name)
{
    std::tm parts{};
    const char* end = name.size() == nameLength ? strptime(name.c_str(), nameForm, &parts) : nullptr;
    return end && *end == '\0' ? std::optional<std::int64_t>(timegm(&parts)) : std::nullopt;
}

std::string nameAt(std::int64_t time) { return fmt::format("{:%Y-%m-%dT%H-%M-%SZ}", fmt::gmtime(time)); }

/// Raises what `work` raises of the system as a sentence.
template <class Work> auto onDisk(const fs::path& path, const char* what, const Work& work)
{
    try {
        return work();
    } catch (const std::system_error& error) {
        throwFileFailure(E_ARK_ARCHIVE, what, path, error.code().value());
    }
}

void removeTree(const fs::path& folder)
{
    onDisk(folder, "Could not remove", [&] { return fs::remove_all(folder); });
}

[[noreturn]] void refuse(const std::string& sentence) { throw zn::StatusError(zn::E_INVALIDARG, sentence); }

/// Only what a backup is made of may be there. A lock alone is what the first backup leaves when it is killed early.
void requireBackup(const fs::path& folder, bool mayBeEmpty)
{
    bool empty = true;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename();
        if (name != "archive" && name != "copies" && name != "lock" && name != "lost+found")
            refuse("The folder " + folder.string() + " holds other things than backups (" + name
                + "). Choose another folder.");
        empty = false;
    }
    if (!mayBeEmpty && (empty || !fs::is_directory(folder / "archive") || !fs::is_directory(folder / "copies")))
        refuse("There is no backup in " + folder.string() + ".");
}

void requireClosed(const fs::path& folder)
{
    struct stat status { };
    if (::stat(folder.c_str(), &status) != 0)
        throwFileFailure(zn::E_INVALIDARG, "Could not look at", folder);
    const bool toGroup = (status.st_mode & S_IWGRP) != 0 && zn::sharingOf(folder) == zn::Sharing::Nobody;
    if ((status.st_mode & S_IWOTH) != 0 || toGroup)
        throw zn::StatusError(zn::E_ACCESSDENIED,
            "Others may write to the backup's folder '" + folder.string() + "'. Close it with 'chmod go-w'.");
}

void makeFolder(const fs::path& folder)
{
    onDisk(folder, "Could not make the folder",
        [&] { zn::makePrivateFolder(folder, zn::sharingOf(folder.parent_path())); });
}

zn::FileDescriptor takeLock(const fs::path& folder, BackupFolder::Use use)
{
    const bool write = use == BackupFolder::Use::Write;
    const fs::path path = folder / "lock";
    if (write)
        onDisk(path, "Could not make", [&] { zn::makePrivateFile(path, zn::sharingOf(folder)); });
    zn::FileDescriptor lock(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    if (!lock)
        throwFileFailure(E_ARK_ARCHIVE, "Could not open", path);
    if (::flock(lock.number(), (write ? LOCK_EX : LOCK_SH) | LOCK_NB) != 0)
        throw zn::StatusError(E_ARK_ARCHIVE,
            "Another program is working with the backup in " + folder.string() + ". Try again when it has ended.");
    return lock;
}

std::string digitsOf(const std::string& text)
{
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits), [](char c) { return c >= '0' && c <= '9'; });
    return digits;
}

} // namespace

void moveFolder(const fs::path& from, const fs::path& to)
{
    if (::rename(from.c_str(), to.c_str()) != 0)
        throwFileFailure(E_ARK_ARCHIVE, ("Could not rename " + from.string() + " to").c_str(), to);
}

void syncPlace(const fs::path& path)
{
    if (const int reason = zn::syncPath(path))
        throwFileFailure(E_ARK_ARCHIVE, "Could not sync", path, reason);
}

Content contentOf(const fs::path& file)
{
    FileHandle source(file, O_RDONLY | O_NOFOLLOW, E_ARK_ARCHIVE);
    return copyAndHash(source, nullptr);
}

std::vector<std::string> BackupCopy::problems() const
{
    std::vector<std::string> problems;
    std::ifstream list(m_folder / sums);
    for (const char* wanted : {database, registry}) {
        std::string hash, name;
        list >> hash >> name;
        if (name != wanted)
            problems.push_back((m_folder / sums).string() + " is missing or damaged, so nothing says whether " + wanted
                + " is what was backed up.");
        else if (!fs::exists(m_folder / wanted))
            problems.push_back((m_folder / wanted).string() + " is missing.");
        else if (contentOf(m_folder / wanted).hash != hash)
            problems.push_back((m_folder / wanted).string() + " is damaged.");
    }
    return problems;
}

template <class Read> auto BackupCopy::read(const Read& reading) const
{
    try {
        soci::session session;
        open(session);
        return reading(session);
    } catch (const soci::soci_error& error) {
        throw zn::StatusError(E_ARK_DATABASE,
            "The copy of the database in " + m_folder.string() + " can't be read: " + error.get_error_message() + ".");
    }
}

void BackupCopy::open(soci::session& session) const { zn::openCopy(session, m_folder / database); }

std::string BackupCopy::identity() const
{
    return read([](soci::session& session) {
        std::string identity;
        session << "SELECT id FROM store_identity", soci::into(identity);
        return identity;
    });
}

std::vector<Holder> BackupCopy::contents() const
{
    return read([](soci::session& session) { return heldContents(session); });
}

BackupFolder::BackupFolder(const fs::path& folder, Use use)
    : m_folder(fs::absolute(folder).lexically_normal())
{
    if (!m_folder.has_filename())
        m_folder = m_folder.parent_path();
    const bool write = use == Use::Write;
    if (write && !fs::exists(m_folder))
        makeFolder(m_folder);
    if (!fs::is_directory(m_folder))
        refuse("There is no backup in " + m_folder.string() + ", which is no folder.");
    onDisk(m_folder, "Could not read the folder", [&] { requireBackup(m_folder, write); });
    requireClosed(m_folder);
    m_lock = takeLock(m_folder, use);
    m_archive = std::make_unique<Archive>(m_folder / "archive");
    if (!write)
        return;
    makeFolder(copiesFolder());
    m_wasInterrupted = fs::exists(copiesFolder() / making);
    removeTree(copiesFolder() / making);
    m_archive->removeArrivals();
}

std::vector<BackupCopy> BackupFolder::copies() const
{
    return onDisk(copiesFolder(), "Could not read the folder", [&] {
        std::vector<fs::path> folders;
        for (const auto& entry : fs::directory_iterator(copiesFolder()))
            if (timeOf(entry.path().filename()) && fs::is_directory(entry.symlink_status()))
                folders.push_back(entry.path());
        std::sort(folders.begin(), folders.end());
        return std::vector<BackupCopy>(folders.begin(), folders.end());
    });
}

BackupCopy BackupFolder::copyAt(const std::string& moment) const
{
    const std::string digits = digitsOf(moment);
    if (digits.empty() && !moment.empty())
        refuse("'" + moment + "' is no date; write it as 2026-11-22 or 2026-11-22T19:25.");
    std::vector<BackupCopy> found = copies();
    if (found.empty())
        refuse("There is no whole backup in " + m_folder.string() + ".");
    std::erase_if(found, [&](const BackupCopy& copy) { return !digitsOf(copy.name()).starts_with(digits); });
    if (found.empty())
        refuse("There is no backup of '" + moment + "' in " + m_folder.string()
            + "; 'arkin vault backup DIR --list' lists them.");
    return found.back();
}

fs::path BackupFolder::beginCopy()
{
    fs::path folder = copiesFolder() / making;
    makeFolder(folder);
    return folder;
}

BackupCopy BackupFolder::finishCopy(std::int64_t time)
{
    // The newest copy is the last one also when the clock was set back.
    if (const auto known = copies(); !known.empty())
        time = std::max(time, *timeOf(known.back().name()) + 1);
    const fs::path folder = copiesFolder() / making, final = copiesFolder() / nameAt(time);
    // Contents that were there already may have been put by a backup that was killed before it synced their names.
    FileHandle(m_folder, O_RDONLY | O_DIRECTORY, E_ARK_ARCHIVE).syncFileSystem();
    for (const char* file : {BackupCopy::database, BackupCopy::registry, BackupCopy::sums})
        syncPlace(folder / file);
    syncPlace(folder);
    moveFolder(folder, final);
    for (const fs::path& path : {copiesFolder(), m_folder, m_folder.parent_path()})
        syncPlace(path);
    return BackupCopy(final);
}

void BackupFolder::retire(const BackupCopy& copy)
{
    const fs::path folder = copiesFolder() / retired;
    makeFolder(folder);
    moveFolder(copy.folder(), folder / copy.name());
    syncPlace(folder);
    syncPlace(copiesFolder());
}

bool BackupFolder::mayHoldLeftovers() const { return m_wasInterrupted || fs::exists(copiesFolder() / retired); }

void BackupFolder::removeRetired() { removeTree(copiesFolder() / retired); }

} // namespace zn::arkin
