#pragma once

#include "platform/FileSystem.h"

namespace zn {

class Registry;

/// Backslash paths on a POSIX file system. Names are looked up on the disk each time, so nothing goes stale when other
/// programs work in the same folders. Names that a backslash path cannot carry are left out of listings.
/// A file without any write permission bit is read-only, also for a superuser.
class LinuxFileSystem : public FileSystem {
public:
    /// `registry` holds the drive map and outlives this object.
    explicit LinuxFileSystem(Registry& registry)
        : m_registry(registry)
    {
    }

    std::filesystem::path toMachine(TextView path) override;
    Text fromMachine(const std::filesystem::path& path) override;
    std::optional<FileAttributes> attributes(TextView path) override;
    FileResult setReadOnly(TextView path, bool readOnly) override;
    FileResult removeFile(TextView path) override;
    FileResult renameFile(TextView from, TextView to) override;
    FileResult copyFile(TextView from, TextView to) override;
    FileResult createFolder(TextView path) override;
    FileResult createFolders(TextView path) override;
    std::vector<Text> list(TextView folder) override;
    FileBytes readBytes(TextView path) override;
    FileResult writeBytes(TextView path, const std::string& bytes) override;
    FileResult appendBytes(TextView path, const std::string& bytes) override;
    Text temporaryFolder() override;
    Text temporaryFile(TextView folder, TextView prefix) override;

private:
    std::filesystem::path driveRoot(char16_t letter);
    /// Runs `work` on the machine's path; a path that cannot be resolved is a failure like any other.
    template <class Work> auto onMachine(TextView path, const Work& work) -> decltype(work(std::filesystem::path()));

    Registry& m_registry;
};

} // namespace zn
