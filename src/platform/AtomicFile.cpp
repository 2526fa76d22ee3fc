#include "platform/AtomicFile.h"

#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <mutex>
#include <random>
#include <set>
#include <string>
#include <sys/stat.h>
#include <system_error>

namespace zn {

namespace {

void require(bool success)
{
    if (!success)
        throw std::system_error(errno, std::generic_category());
}

/// Short, so that a target with the longest allowed name has room beside it. A process that died and whose number was
/// given again may have left a name with the same count.
std::filesystem::path temporaryBeside(const std::filesystem::path& target)
{
    static const unsigned start = std::random_device{}();
    static std::atomic<unsigned> counter{start};
    return target.parent_path() / ("~$zn" + std::to_string(getpid()) + "." + std::to_string(++counter) + ".tmp");
}

/// Whether a process that has gone has left this file. On a folder that machines share, the process may be another
/// machine's; nobody there writes at one file for a day.
bool isLeftOver(const std::filesystem::path& path)
{
    constexpr std::string_view prefix = "~$zn";
    constexpr time_t day = time_t{24} * 60 * 60;
    const std::string name = path.filename().string();
    pid_t writer = 0;
    if (name.starts_with(prefix) && name.ends_with(".tmp"))
        std::from_chars(name.data() + prefix.size(), name.data() + name.size(), writer);
    struct stat facts { };
    return writer > 0 && ::kill(writer, 0) != 0 && errno == ESRCH && ::lstat(path.c_str(), &facts) == 0
        && S_ISREG(facts.st_mode) && facts.st_uid == ::geteuid() && facts.st_mtime + day < ::time(nullptr);
}

/// Once a process for each of the last folders that it has written to.
void removeLeftOvers(const std::filesystem::path& folder)
{
    constexpr std::size_t mostRemembered = 1000;
    static std::mutex guard;
    static std::set<std::filesystem::path> seen;
    {
        const std::lock_guard lock(guard);
        if (seen.size() >= mostRemembered)
            seen.clear();
        if (!seen.insert(folder).second)
            return;
    }
    std::error_code ignored;
    for (std::filesystem::directory_iterator entry(folder, ignored), end; entry != end; entry.increment(ignored))
        if (isLeftOver(entry->path()))
            std::filesystem::remove(entry->path(), ignored);
}

} // namespace

int syncPath(const std::filesystem::path& path)
{
    const FileDescriptor file(::open(path.empty() ? "." : path.c_str(), O_RDONLY | O_CLOEXEC));
    const int number = file && ::fsync(file.number()) == 0 ? 0 : errno;
    return number == EINVAL || number == ENOTSUP ? 0 : number;
}

AtomicFile::AtomicFile(std::filesystem::path target)
    : m_target(std::move(target))
    , m_temporary(temporaryBeside(m_target))
    , m_file(::open(m_temporary.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666))
{
    require(bool(m_file));
    removeLeftOvers(m_target.parent_path().empty() ? "." : m_target.parent_path());
}

AtomicFile::~AtomicFile()
{
    if (!m_committed)
        ::unlink(m_temporary.c_str());
}

void AtomicFile::write(std::string_view bytes) { require(m_file.writeAll(bytes)); }

void AtomicFile::commit(Sync sync)
{
    require(m_file.close());
    if (const int number = sync == Sync::Yes ? syncPath(m_temporary) : 0)
        throw std::system_error(number, std::generic_category());
    require(::rename(m_temporary.c_str(), m_target.c_str()) == 0);
    m_committed = true;
    if (const int number = sync == Sync::Yes ? syncPath(m_target.parent_path()) : 0)
        throw std::system_error(number, std::generic_category());
}

} // namespace zn
