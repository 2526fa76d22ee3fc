#include "zentrel/model/AtomicFile.h"

#include "zentrel/model/DocumentError.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zentrel {

namespace {

/// Short, so that a target with the longest allowed name has room beside it.
std::filesystem::path temporaryBeside(const std::filesystem::path& target)
{
    static std::atomic<unsigned> counter{0};
    return target.parent_path() / ("~$zn" + std::to_string(getpid()) + "." + std::to_string(++counter) + ".tmp");
}

/// Syncs a file or a folder. 0, or the machine's error number.
int syncPath(const std::filesystem::path& path)
{
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return errno;
    const int number = fsync(file) == 0 ? 0 : errno;
    close(file);
    // Some file systems have no sync for folders; what they do by themselves is then all there is.
    return number == EINVAL || number == ENOTSUP ? 0 : number;
}

} // namespace

void raiseNotWritable(const std::filesystem::path& target, int number)
{
    throw DocumentError(
        ErrorKind::NotWritable, "The file " + quoted(target) + " can't be written: " + std::strerror(number) + ".");
}

AtomicFile::AtomicFile(std::filesystem::path target)
    : m_target(std::move(target))
    , m_temporary(temporaryBeside(m_target))
{
    std::error_code ignored;
    if (std::filesystem::is_directory(m_target, ignored))
        raiseNotWritable(m_target, EISDIR);
    // A read-only file says that nobody may replace it, which a rename alone would not respect.
    if (access(m_target.c_str(), F_OK) == 0 && access(m_target.c_str(), W_OK) != 0)
        raiseNotWritable(m_target, errno);
    const int file = open(m_temporary.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
    if (file < 0)
        raiseNotWritable(m_target, errno);
    close(file);
}

AtomicFile::~AtomicFile()
{
    std::error_code ignored;
    if (!m_committed)
        std::filesystem::remove(m_temporary, ignored);
}

void AtomicFile::commit(bool sync)
{
    if (const int number = sync ? syncPath(m_temporary) : 0)
        raiseNotWritable(m_target, number);
    if (rename(m_temporary.c_str(), m_target.c_str()) != 0)
        raiseNotWritable(m_target, errno);
    m_committed = true;
    const std::filesystem::path folder = m_target.parent_path();
    if (const int number = sync ? syncPath(folder.empty() ? "." : folder) : 0)
        raiseNotWritable(m_target, number);
}

void writeWhole(const std::filesystem::path& target, std::string_view bytes)
{
    AtomicFile whole(target);
    const int file = open(whole.temporary().c_str(), O_WRONLY | O_CLOEXEC);
    int number = file < 0 ? errno : 0;
    while (number == 0 && !bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), bytes.size());
        if (count >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            number = errno;
    }
    if (file >= 0 && close(file) != 0 && number == 0)
        number = errno;
    if (number != 0)
        raiseNotWritable(target, number);
    whole.commit(false);
}

} // namespace zentrel
