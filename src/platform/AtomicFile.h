#pragma once

#include "platform/FileDescriptor.h"

#include <filesystem>

namespace zn {

/// A file that becomes visible whole: it is written under a temporary name in the target's folder and takes the
/// target's place on `commit`. The destructor removes what was not committed, and never commits.
///
/// Failures are raised as `std::system_error` with the system's reason, which each user turns into a failure of its
/// own kind; the target is then what it was.
class AtomicFile {
public:
    /// Creates the temporary file, empty, with the rights that a plainly created file has.
    explicit AtomicFile(std::filesystem::path target);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();

    const std::filesystem::path& target() const { return m_target; }
    const std::filesystem::path& temporary() const { return m_temporary; }

    void write(std::string_view bytes);

    enum class Sync {
        /// The machine may lose the file if it loses its power: for what can be made again.
        No,
        /// File and folder are synced: after the return they outlive a loss of power.
        Yes,
    };
    /// Renames the temporary file, however it was written, over the target.
    void commit(Sync sync);

private:
    std::filesystem::path m_target;
    std::filesystem::path m_temporary;
    FileDescriptor m_file;
    bool m_committed = false;
};

/// Makes a file's bytes, or the names in a folder, durable; the empty path is the current folder. 0, or the system's
/// error number. Some file systems know no sync of folders: what they do by themselves is then all there is, and
/// counts as done.
int syncPath(const std::filesystem::path& path);

} // namespace zn
