#pragma once

#include "base/Status.h"
#include "platform/FileDescriptor.h"

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <span>
#include <sys/stat.h>

namespace zn::arkin {

/// An open file. Failures are raised as `StatusError` with the status that the owner chose (E_ARK_ARCHIVE
/// or E_ARK_LOCAL_FILE_FAILED), or E_ARK_DISK_FULL, and a sentence that names the file and the system's reason.
class FileHandle {
public:
    /// Opens with the flags of `open(2)`; close-on-exec is added. `mode` is for a file that this creates.
    FileHandle(const std::filesystem::path& path, int flags, zn::Status failure, mode_t mode = 0644);
    int get() const { return m_descriptor.number(); }
    struct stat status() const;
    /// Reads at most `buffer.size()` bytes; 0 at the end.
    std::size_t read(std::span<char> buffer);
    void writeAll(std::span<const char> bytes);
    void sync();
    /// Syncs the whole file system that holds the file.
    void syncFileSystem();

private:
    std::filesystem::path m_path;
    zn::Status m_failure;
    zn::FileDescriptor m_descriptor;
};

/// Raises a `StatusError` for the system's error number: "<what> <path>: <the system's reason>."
[[noreturn]] void throwFileFailure(
    zn::Status failure, const char* what, const std::filesystem::path& path, int reason = errno);

/// Time of the last change in nanoseconds of Unix time.
std::int64_t modifiedNanoseconds(const struct stat& status);

} // namespace zn::arkin
