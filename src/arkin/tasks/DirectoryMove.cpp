#include "arkin/tasks/DirectoryMove.h"

#include "arkin/store/Codes.h"
#include "arkin/store/FileHandle.h"
#include "base/Status.h"

#include <fcntl.h>
#include <sys/stat.h>

namespace zn::arkin {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void refuse(const std::string& sentence) { throw zn::StatusError(E_ARK_LOCAL_FILE_FAILED, sentence); }

dev_t diskOf(const fs::path& path)
{
    struct stat status { };
    if (stat(path.c_str(), &status) != 0)
        refuse("Could not look at the folder " + path.string() + ": " + std::generic_category().message(errno) + ".");
    return status.st_dev;
}

/// Copies a file's times to its copy: a local copy counts as unchanged as long as it has them.
void copyTimes(const fs::path& from, const fs::path& to)
{
    struct stat status { };
    if (lstat(from.c_str(), &status) != 0)
        return; // it has gone meanwhile; the next look sees that
    const timespec times[] = {status.st_atim, status.st_mtim};
    utimensat(AT_FDCWD, to.c_str(), times, AT_SYMLINK_NOFOLLOW);
}

} // namespace

DirectoryMove::DirectoryMove(fs::path from, fs::path to)
    : m_from(std::move(from))
    , m_to(std::move(to))
{
    std::error_code error;
    if (!fs::is_directory(m_from, error))
        refuse("The folder " + m_from.string()
            + " is missing, so there is nothing to move. 'arkin vault relocate' lets the vault begin anew in another.");
    if (fs::exists(m_to, error) && !(fs::is_directory(m_to, error) && fs::is_empty(m_to, error)))
        refuse("The folder " + m_to.string() + " isn't empty. Choose a new one.");
    fs::create_directories(m_to, error);
    if (error)
        refuse("Could not create the folder " + m_to.string() + ": " + error.message() + ".");
    m_isRename = diskOf(m_from) == diskOf(m_to);
}

void DirectoryMove::prepare(const std::function<void(std::int64_t done, std::int64_t total)>& progress)
{
    if (!m_isRename)
        copyChanged(progress);
}

void DirectoryMove::carryOut()
{
    if (!m_isRename) {
        copyChanged({});
        // Checked-out files stand nowhere else, and the former folder will be removed.
        FileHandle(m_to, O_RDONLY | O_DIRECTORY, E_ARK_LOCAL_FILE_FAILED).syncFileSystem();
        return;
    }
    std::error_code error;
    fs::rename(m_from, m_to, error);
    if (error)
        refuse("Could not move " + m_from.string() + " to " + m_to.string() + ": " + error.message() + ".");
}

void DirectoryMove::undo()
{
    std::error_code ignored;
    if (m_isRename)
        fs::rename(m_to, m_from, ignored);
}

std::string DirectoryMove::removeFormer()
{
    std::error_code error;
    if (!m_isRename)
        fs::remove_all(m_from, error);
    return error ? "The former folder " + m_from.string() + " could not be removed: " + error.message() + "." : "";
}

void DirectoryMove::copyChanged(const std::function<void(std::int64_t done, std::int64_t total)>& progress)
{
    try {
        std::map<fs::path, Seen> now;
        std::vector<fs::directory_entry> changed;
        std::int64_t total = 0, done = 0;
        for (const auto& entry : fs::recursive_directory_iterator(m_from)) {
            const bool isFile = entry.is_regular_file() && !entry.is_symlink();
            const Seen seen{
                isFile ? entry.file_size() : 0, entry.is_symlink() ? fs::file_time_type() : entry.last_write_time()};
            const fs::path relative = entry.path().lexically_relative(m_from);
            now[relative] = seen;
            const auto known = m_copied.find(relative);
            if (known != m_copied.end() && known->second == seen)
                continue;
            changed.push_back(entry);
            total += static_cast<std::int64_t>(seen.size);
        }
        for (auto gone = m_copied.rbegin(); gone != m_copied.rend(); ++gone) {
            if (!now.contains(gone->first))
                fs::remove(m_to / gone->first);
        }
        for (const fs::directory_entry& entry : changed) {
            const fs::path relative = entry.path().lexically_relative(m_from);
            copy(entry, relative);
            done += static_cast<std::int64_t>(now.at(relative).size);
            if (progress)
                progress(done, total);
        }
        // A folder's time changes with what is put into it.
        for (const fs::directory_entry& entry : changed) {
            if (entry.is_directory() && !entry.is_symlink())
                copyTimes(entry.path(), m_to / entry.path().lexically_relative(m_from));
        }
        m_copied = std::move(now);
    } catch (const fs::filesystem_error& error) {
        refuse("Could not copy " + error.path1().string() + " to " + m_to.string() + ": " + error.code().message()
            + ". The vault's folder is as it was; remove what was copied.");
    }
}

void DirectoryMove::copy(const fs::directory_entry& entry, const fs::path& relative)
{
    const fs::path target = m_to / relative;
    if (entry.is_directory() && !entry.is_symlink()) {
        fs::create_directories(target);
        fs::permissions(target, entry.status().permissions());
        return;
    }
    fs::remove(target);
    if (entry.is_symlink())
        fs::copy_symlink(entry.path(), target);
    else if (entry.is_regular_file())
        fs::copy_file(entry.path(), target);
    copyTimes(entry.path(), target);
}

} // namespace zn::arkin
