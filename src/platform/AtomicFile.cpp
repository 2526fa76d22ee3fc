#include "platform/AtomicFile.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <random>
#include <string>
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
