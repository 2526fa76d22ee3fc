#pragma once

#include "base/Status.h"
#include "base/Text.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zn {

struct FileAttributes {
    bool readOnly = false;
    bool folder = false;
    std::uint64_t size = 0;
    /// Last change, Unix time in seconds.
    std::int64_t modified = 0;
    /// The same as exactly as the disk keeps it, in nanoseconds.
    std::int64_t modifiedNs = 0;
};

/// How an operation went: true if it was done.
struct FileResult {
    bool done = false;
    /// Why it wasn't, in the operating system's words without a full stop: "No space left on device".
    Text reason;

    explicit operator bool() const { return done; }
};

/// A file's bytes; none with the reason, as above.
struct FileBytes : std::optional<std::string> {
    using optional::optional;
    Text reason;
};

/// Backslash paths on this machine. A drive map turns them into the machine's own: `Z:` is the root of the file
/// system, further drives come from the registry key "Software\Arkin\Drives" of the user (value name the letter,
/// value the machine's folder). A component that exists in another spelling of its case is found; one that doesn't
/// exist keeps the spelling it was given. A relative path is resolved by the process's current folder.
///
/// Operations return false (or none) when the thing isn't there or can't be done.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// The machine's path. Raises `StatusError` for a drive that isn't mapped.
    virtual std::filesystem::path toMachine(TextView path) = 0;
    /// The machine's path as a person is told of it (UTF-8); the path itself if its drive isn't mapped.
    std::string shown(TextView path);
    /// The backslash path of a machine path (made absolute). Raises `StatusError` if a name holds a character
    /// that a backslash path cannot carry (a backslash, or bytes that are no UTF-8).
    virtual Text fromMachine(const std::filesystem::path& path) = 0;

    virtual std::optional<FileAttributes> attributes(TextView path) = 0;
    bool fileExists(TextView path);
    virtual FileResult setReadOnly(TextView path, bool readOnly) = 0;
    /// True if the file is gone afterwards, also if it never was there. A read-only file is not removed.
    virtual FileResult removeFile(TextView path) = 0;
    /// Renames a file; an existing destination is a failure.
    virtual FileResult renameFile(TextView from, TextView to) = 0;
    /// Copies a file with its content only; an existing destination is overwritten.
    virtual FileResult copyFile(TextView from, TextView to) = 0;
    /// Creates one folder whose parent exists. False if it exists already or can't be made.
    virtual FileResult createFolder(TextView path) = 0;
    /// Creates the folder with its parents; true only if the last one was created by this call.
    virtual FileResult createFolders(TextView path) = 0;
    /// Names in a folder, in no order.
    virtual std::vector<Text> list(TextView folder) = 0;

    virtual FileBytes readBytes(TextView path) = 0;
    /// Creates or replaces the file.
    virtual FileResult writeBytes(TextView path, const std::string& bytes) = 0;
    /// Writes at the end of the file, creating it if missing.
    virtual FileResult appendBytes(TextView path, const std::string& bytes) = 0;

    /// The user's temporary folder, without a trailing separator.
    virtual Text temporaryFolder() = 0;
    /// A name in `folder` that begins with `prefix` and ends in ".tmp", made as an empty file, so that it is free.
    /// Raises `StatusError` if the folder takes no file.
    virtual Text temporaryFile(TextView folder, TextView prefix) = 0;
};

} // namespace zn
