#include "arkin/store/FileHandle.h"

#include "arkin/store/Codes.h"

#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace zn::arkin {

void throwFileFailure(zn::Status failure, const char* what, const std::filesystem::path& path, int reason)
{
    const bool full = reason == ENOSPC || reason == EDQUOT;
    throw zn::StatusError(full ? E_ARK_DISK_FULL : failure,
        std::string(what) + " " + path.string() + ": " + std::system_category().message(reason) + ".");
}

std::int64_t modifiedNanoseconds(const struct stat& status)
{
    return std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec;
}

FileHandle::FileHandle(const std::filesystem::path& path, int flags, zn::Status failure, mode_t mode)
    : m_path(path)
    , m_failure(failure)
    , m_descriptor(open(path.c_str(), flags | O_CLOEXEC, mode))
{
    if (!m_descriptor)
        throwFileFailure(failure, "Could not open", path);
}

struct stat FileHandle::status() const
{
    struct stat status { };
    if (fstat(get(), &status) != 0)
        throwFileFailure(m_failure, "Could not look at", m_path);
    return status;
}

std::size_t FileHandle::read(std::span<char> buffer)
{
    for (;;) {
        const ssize_t count = ::read(get(), buffer.data(), buffer.size());
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno != EINTR)
            throwFileFailure(m_failure, "Could not read", m_path);
    }
}

void FileHandle::writeAll(std::span<const char> bytes)
{
    if (!m_descriptor.writeAll({bytes.data(), bytes.size()}))
        throwFileFailure(m_failure, "Could not write", m_path);
}

void FileHandle::sync()
{
    if (fsync(get()) != 0)
        throwFileFailure(m_failure, "Could not sync", m_path);
}

void FileHandle::syncFileSystem()
{
    if (syncfs(get()) != 0)
        throwFileFailure(m_failure, "Could not sync the file system of", m_path);
}

} // namespace zn::arkin
