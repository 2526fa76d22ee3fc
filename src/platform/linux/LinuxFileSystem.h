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
    bool setReadOnly(TextView path, bool readOnly) override;
    bool removeFile(TextView path) override;
    bool renameFile(TextView from, TextView to) override;
    bool copyFile(TextView from, TextView to) override;
    bool createFolder(TextView path) override;
    bool createFolders(TextView path) override;
    std::vector<Text> list(TextView folder) override;
    std::optional<std::string> readBytes(TextView path) override;
    bool writeBytes(TextView path, const std::string& bytes) override;
    bool appendBytes(TextView path, const std::string& bytes) override;
    Text temporaryFolder() override;
    Text temporaryFile(TextView folder, TextView prefix) override;
    Text lastError() override;

private:
    std::filesystem::path driveRoot(char16_t letter);
    /// Runs `work` on the machine's path; a path that cannot be resolved is a failure like any other.
    template <class Work> auto onMachine(TextView path, const Work& work) -> decltype(work(std::filesystem::path()));

    Registry& m_registry;
};

} // namespace zn
