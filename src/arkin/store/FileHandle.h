#pragma once

#include "base/Status.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <sys/stat.h>

namespace arkin {

/// An open file descriptor. Failures are raised as `StatusError` with the status that the owner chose (E_ARK_ARCHIVE
/// or E_ARK_LOCAL_FILE_FAILED), or E_ARK_DISK_FULL, and a sentence that names the file and the system's reason.
class FileHandle {
public:
    /// Opens with the flags of `open(2)`; close-on-exec is added. `mode` is for a file that this creates.
    FileHandle(const std::filesystem::path& path, int flags, zn::Status failure, mode_t mode = 0644);
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle();

    int get() const { return m_descriptor; }
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
    int m_descriptor;
};

/// Raises a `StatusError` for `errno`: "<what> <path>: <the system's reason>."
[[noreturn]] void throwFileFailure(zn::Status failure, const char* what, const std::filesystem::path& path);

/// Time of the last change in nanoseconds of Unix time.
std::int64_t modifiedNanoseconds(const struct stat& status);

} // namespace arkin
