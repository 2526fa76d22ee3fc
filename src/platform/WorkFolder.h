#pragma once

#include "platform/FileDescriptor.h"

#include <filesystem>
#include <string>

namespace zn {

/// Locks a folder until the descriptor is closed. None if another process has it locked, if it isn't there, or if it is
/// a link, a file or somebody else's.
FileDescriptor lockOwnFolder(const std::filesystem::path& folder);

/// A folder for files that only this process needs, below a folder into which everybody may write: its name can't be
/// guessed, it is this user's alone (0700), and it goes with the object. A lock on it says that its process lives, and
/// the next of its kind removes what a killed one has left: a folder of this user's that nobody locks. Links are never
/// followed.
class WorkFolder {
public:
    /// Makes "KIND-XXXXXX" in the folder `parent`. Raises `StatusError` with a sentence.
    WorkFolder(const std::filesystem::path& parent, const std::string& kind);
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    ~WorkFolder();

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
    FileDescriptor m_lock;
};

} // namespace zn
