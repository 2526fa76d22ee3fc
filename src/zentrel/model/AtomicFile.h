#pragma once

#include <filesystem>
#include <string_view>

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

    /// Renames the temporary file over the target. With `sync` it also outlives a loss of power: file and folder are
    /// synced, which a document needs and an output file, which can be made again, does not. Raises `NotWritable`.
    void commit(bool sync);

private:
    std::filesystem::path m_target;
    std::filesystem::path m_temporary;
    bool m_committed = false;
};

/// Writes the bytes as a file that takes the target's place whole, without a sync. Raises `NotWritable`.
void writeWhole(const std::filesystem::path& target, std::string_view bytes);

/// `NotWritable` with the machine's reason for the error number `number`: "… can't be written: No space left on
/// device."
[[noreturn]] void raiseNotWritable(const std::filesystem::path& target, int number);

} // namespace zentrel
