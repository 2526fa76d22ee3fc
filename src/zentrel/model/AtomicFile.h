#pragma once

#include <filesystem>

namespace zentrel {

/// A file that becomes visible whole: it is written under a temporary name in the target's folder and
/// takes the target's place on `commit`. The destructor removes what was not committed.
class AtomicFile {
public:
    /// Creates the empty temporary file. Raises `NotWritable`.
    explicit AtomicFile(std::filesystem::path target);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();

    const std::filesystem::path& target() const { return m_target; }
    const std::filesystem::path& temporary() const { return m_temporary; }

    /// Syncs the temporary file, renames it over the target and syncs the folder. Raises `NotWritable`.
    void commit();

private:
    std::filesystem::path m_target;
    std::filesystem::path m_temporary;
    bool m_committed = false;
};

/// `NotWritable` with the machine's reason for the error number `number`: "… can't be written: No space left on
/// device."
[[noreturn]] void raiseNotWritable(const std::filesystem::path& target, int number);

} // namespace zentrel
