#pragma once

#include "arkin/store/Files.h"
#include "arkin/store/Folders.h"
#include "platform/FileSystem.h"

#include <unordered_map>

namespace zn::arkin {

/// What this system knows of a file that it has put to, or read from, the local disk.
struct LocalCopy {
    Place place;
    Content content;
    /// The file's time of change then; a file that still has it, and the size, is unchanged. 0 when the file had just
    /// been written and a further change might not show in its time.
    std::int64_t modifiedNs = 0;
};

/// The vault's folders on this machine's disk. A copy is read-only unless the file is checked out here.
class LocalView {
public:
    LocalView(Database& database, Folders& folders, const Archive& archive, zn::FileSystem& files, zn::TextView root,
        std::string machine);

    /// The folder of the local view, without a trailing separator.
    const zn::Text& root() const { return m_root; }
    /// From now on nothing is written here: the folder is another home's.
    void close() { m_isOpen = false; }
    bool isOpen() const { return m_isOpen; }
    /// The part of the path below the root; none if it isn't in the local view.
    std::optional<zn::Text> relativePath(zn::TextView path) const;
    zn::Text pathOf(std::int32_t folderId, zn::TextView name);
    std::filesystem::path toMachine(zn::TextView path) { return m_files.toMachine(path); }
    std::string shown(zn::TextView path) { return m_files.shown(path); }
    zn::Text fromMachine(const std::filesystem::path& path) { return m_files.fromMachine(path); }
    /// The machine's path of a file in a folder, for many files one after the other: `folders` keeps what was found for
    /// their folders.
    using MachineFolders = std::unordered_map<std::int32_t, std::filesystem::path>;
    std::filesystem::path toMachine(std::int32_t folderId, zn::TextView name, MachineFolders& folders);

    std::vector<std::optional<LocalCopy>> copies(std::span<const Place> places);
    /// Inside a write transaction.
    void record(std::span<const LocalCopy> copies);
    void forget(const Place& place);

    /// What stands at the path: its content by the record if it is unchanged since, else by reading it.
    /// None if there is no file.
    std::optional<Content> contentAt(const std::filesystem::path& path, const std::optional<LocalCopy>& known);
    /// Writes the content to the path, replacing what is there, and makes missing folders.
    LocalCopy write(const Place& place, const Content& content, const std::filesystem::path& path, bool readOnly);
    /// Raises E_ARK_LOCAL_FILE_FAILED with a sentence.
    void setReadOnly(const std::filesystem::path& path, bool readOnly);

private:
    /// Raises E_ARK_LOCAL_FILE_FAILED if the vault has another local folder since this was made.
    void requireRoot();

    Database& m_database;
    Folders& m_folders;
    const Archive& m_archive;
    zn::FileSystem& m_files;
    zn::Text m_root;
    std::string m_machine;
    bool m_isOpen = true;
};

/// Opens a file of the local view for reading. Raises E_ARK_LOCAL_FILE_FAILED for what isn't a plain file.
class LocalFile : public FileHandle {
public:
    explicit LocalFile(const std::filesystem::path& path);
    /// The file's time of change for `LocalCopy`, taken before its bytes are read.
    std::int64_t settledTime() const;
    std::int64_t size() const { return m_status.st_size; }
    bool isWritable() const { return (m_status.st_mode & S_IWUSR) != 0; }

private:
    /// As the file was found.
    struct stat m_status { };
};

/// The hash and the size of what an open file still holds.
Content readContent(FileHandle& file);

} // namespace zn::arkin
