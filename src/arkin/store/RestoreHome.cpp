#include "arkin/store/RestoreHome.h"

#include "arkin/store/Codes.h"
#include "platform/WorkFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace zn::arkin {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t contentsAtOnce = 500;

[[noreturn]] void refuse(const std::string& sentence) { throw zn::StatusError(zn::E_INVALIDARG, sentence); }

/// Whether only this program can have made it.
bool isUnfinishedHome(const fs::path& folder)
{
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename();
        if (name != "archive" && !name.starts_with(BackupCopy::database) && !name.starts_with(BackupCopy::registry)
            && !name.starts_with("run"))
            return false;
    }
    return true;
}

class HomeRestore {
public:
    HomeRestore(BackupFolder& backup, const fs::path& home, const RestoreSetting& setting)
        : m_backup(backup)
        , m_setting(setting)
        , m_home(fs::absolute(home).lexically_normal())
    {
        if (!m_home.has_filename())
            m_home = m_home.parent_path();
        m_staging = m_home.string() + ".restoring";
    }

    RestoreReport run(const Progress& progress)
    {
        const BackupCopy copy = m_backup.copyAt(m_setting.at);
        if (const auto problems = copy.problems(); !problems.empty())
            throw zn::StatusError(E_ARK_DATABASE, problems.front() + " Choose another backup with --at.");
        m_report.copy = copy.name();
        requireFreePlace();
        const zn::FileDescriptor lock = beginStaging();
        // The archive first, with the identity: until the database is there, nobody can open the half of it.
        bringContents(copy, progress);
        bringFile(copy, BackupCopy::registry);
        bringFile(copy, BackupCopy::database);
        FileHandle(m_staging, O_RDONLY | O_DIRECTORY, E_ARK_ARCHIVE).syncFileSystem();
        takePlace();
        return std::move(m_report);
    }

private:
    bool isFree() const { return !fs::exists(m_home) || (fs::is_directory(m_home) && fs::is_empty(m_home)); }

    void requireFreePlace()
    {
        const fs::file_status status = fs::symlink_status(m_home);
        if (fs::is_symlink(status))
            refuse(m_home.string() + " is a link. Name the folder itself.");
        if (fs::exists(status) && !fs::is_directory(status))
            refuse(m_home.string() + " is no folder.");
        if (!isFree() && !m_setting.replace)
            refuse("The home " + m_home.string()
                + " is there already. Name another one, or give --replace to move it aside.");
    }

    /// A new folder beside the home, shared as an empty home that waits for it.
    zn::FileDescriptor beginStaging()
    {
        if (fs::exists(fs::symlink_status(m_staging))) {
            const zn::FileDescriptor lock = zn::lockOwnFolder(m_staging);
            if (!lock || !isUnfinishedHome(m_staging))
                refuse(m_staging.string()
                    + " is in the way: another restore makes it, or it is something else. Try again when that has "
                      "ended, or remove it.");
            fs::remove_all(m_staging);
        }
        zn::makePrivateFolder(m_staging, zn::Sharing::Nobody);
        zn::FileDescriptor lock = zn::lockOwnFolder(m_staging);
        if (!lock)
            refuse("Another restore makes " + m_staging.string() + ". Try again when it has ended.");
        struct stat status { };
        if (zn::sharingOf(m_home) == zn::Sharing::Group && ::stat(m_home.c_str(), &status) == 0) {
            if (::fchown(lock.number(), static_cast<uid_t>(-1), status.st_gid) != 0)
                throwFileFailure(E_ARK_ARCHIVE, "Could not share", m_staging);
            if (::fchmod(lock.number(), S_ISGID | 0770) != 0)
                throwFileFailure(E_ARK_ARCHIVE, "Could not share", m_staging);
        }
        return lock;
    }

    void bringContents(const BackupCopy& copy, const Progress& progress)
    {
        Archive archive(m_staging / "archive");
        archive.setIdentity(copy.identity());
        const auto holders = copy.contents();
        for (std::size_t i = 0; i < holders.size(); i += contentsAtOnce) {
            ArchiveBatch batch(archive);
            for (std::size_t j = i; j < std::min(i + contentsAtOnce, holders.size()); ++j) {
                bring(batch, holders[j]);
                if (progress)
                    progress(static_cast<std::int64_t>(j) + 1, static_cast<std::int64_t>(holders.size()));
            }
            batch.publish();
        }
    }

    void bring(ArchiveBatch& batch, const Holder& holder)
    {
        bool whole = false;
        try {
            FileHandle source(m_backup.archive().pathOf(holder.content.hash), O_RDONLY | O_NOFOLLOW, E_ARK_ARCHIVE);
            whole = batch.putAs(holder.content, source);
        } catch (const zn::StatusError&) {
            if (!problemOf(m_backup.archive(), holder))
                throw; // it is the home that can't be written
        }
        if (whole) {
            ++m_report.contents;
            m_report.bytes += holder.content.size;
        } else {
            m_report.problems.push_back(
                problemOf(m_backup.archive(), holder).value_or("\"" + holder.name + "\" was changed in the backup."));
        }
    }

    void bringFile(const BackupCopy& copy, const char* name)
    {
        const fs::path target = m_staging / name;
        zn::makePrivateFile(target, zn::sharingOf(m_staging));
        FileHandle source(copy.folder() / name, O_RDONLY | O_NOFOLLOW, E_ARK_ARCHIVE);
        FileHandle destination(target, O_WRONLY, E_ARK_ARCHIVE);
        copyAndHash(source, &destination);
    }

    void takePlace()
    {
        if (!isFree()) {
            m_report.replaced = m_home.string() + ".replaced";
            for (int count = 2; fs::exists(fs::symlink_status(m_report.replaced)); ++count)
                m_report.replaced = m_home.string() + ".replaced" + std::to_string(count);
            moveFolder(m_home, m_report.replaced);
        }
        moveFolder(m_staging, m_home); // takes the place of an empty folder, and of nothing else
        syncPlace(m_home.parent_path());
    }

    BackupFolder& m_backup;
    const RestoreSetting& m_setting;
    fs::path m_home, m_staging;
    RestoreReport m_report;
};

} // namespace

RestoreReport restoreHome(
    const fs::path& backup, const fs::path& home, const RestoreSetting& setting, const Progress& progress)
{
    BackupFolder folder(backup, BackupFolder::Use::Read);
    return HomeRestore(folder, home, setting).run(progress);
}

} // namespace zn::arkin
