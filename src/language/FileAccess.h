#pragma once

#include "base/Status.h"
#include "base/Text.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace zn::language {

// Statuses that implementations raise, and that the language turns into its own error numbers.
inline constexpr Status fileNotFound = statusCode(0x80070002);   // 53
inline constexpr Status pathNotFound = statusCode(0x80070003);   // 76
inline constexpr Status tooManyFiles = statusCode(0x80070004);   // 67
inline constexpr Status fileAccessDenied = E_ACCESSDENIED;       // 70 for a deletion, otherwise 75
inline constexpr Status fileIsShared = statusCode(0x80070020);   // 70: another one has it open
inline constexpr Status pathRefused = statusCode(0x80070041);    // 70, with the sentence that was raised
inline constexpr Status deviceFull = statusCode(0x80070070);     // 61
inline constexpr Status badFileName = statusCode(0x8007007B);    // 52
inline constexpr Status folderNotEmpty = statusCode(0x80070091); // 75
inline constexpr Status fileExists = statusCode(0x800700B7);     // 58 for a file, 75 for a folder

enum FileAttribute : std::uint32_t {
    ReadOnlyAttribute = 1,
    HiddenAttribute = 2,
    SystemAttribute = 4,
    FolderAttribute = 16,
    ArchiveAttribute = 32,
};

struct FileFacts {
    std::uint32_t attributes = 0; ///< `FileAttribute` bits
    std::uint64_t size = 0;       ///< in bytes; 0 for a folder
    double modified = 0;          ///< day count, local time
    double created = 0;           ///< day count, local time; `modified` where the file system keeps no such date
};

struct FolderEntry {
    Text name; ///< without its folder
    FileFacts facts;
};

enum class FileMode {
    Read,      ///< must exist
    Replace,   ///< created, or emptied
    Append,    ///< created if missing; writes go to the end
    ReadWrite, ///< created if missing; reads and writes at the position
};

/// An opened file. Destroying it closes it without reporting; `close` reports.
class OpenedFile {
public:
    virtual ~OpenedFile() = default;

    /// Reads up to `count` bytes; fewer only at the end of the file.
    virtual std::size_t read(char* buffer, std::size_t count) = 0;
    virtual void write(std::string_view bytes) = 0;
    /// Moves the position for reads and writes, counted from 0.
    virtual void seek(std::uint64_t position) = 0;
    virtual std::uint64_t position() = 0;
    virtual std::uint64_t size() = 0;
    virtual void close() = 0;
};

/// The files that a macro can reach. Paths are backslash paths; a relative one counts from `currentFolder`.
/// Every failure is raised as a `StatusError` with one of the statuses above where one fits.
class FileAccess {
public:
    virtual ~FileAccess() = default;

    virtual std::unique_ptr<OpenedFile> open(const Text& path, FileMode mode) = 0;
    /// False if there is no such file or folder.
    virtual bool facts(const Text& path, FileFacts& facts) = 0;
    virtual void setAttributes(const Text& path, std::uint32_t attributes) = 0;
    /// The folder's entries in the order of their names, without "." and "..". Raises `pathNotFound`.
    virtual std::vector<FolderEntry> list(const Text& folder) = 0;
    /// Deletes a file. Raises `fileNotFound`; `fileAccessDenied` for a read-only file.
    virtual void remove(const Text& path) = 0;
    /// Raises `fileExists`, or `pathNotFound` if the parent is missing.
    virtual void createFolder(const Text& path) = 0;
    /// Removes an empty folder.
    virtual void removeFolder(const Text& path) = 0;
    /// Moves a file or folder. Raises `fileExists` if the target is there already.
    virtual void rename(const Text& from, const Text& to) = 0;
    /// Copies a file, replacing a target that isn't read-only.
    virtual void copy(const Text& from, const Text& to) = 0;
    virtual Text currentFolder() = 0;
    virtual void setCurrentFolder(const Text& path) = 0;
    /// The folder for temporary files, without a trailing separator.
    virtual Text temporaryFolder() = 0;
};

} // namespace zn::language
