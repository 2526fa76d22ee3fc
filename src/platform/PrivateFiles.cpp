#include "platform/PrivateFiles.h"

#include "platform/FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace zn {

namespace {

constexpr mode_t everyRight = 07777;

[[noreturn]] void fail(const std::filesystem::path& path, int reason)
{
    throw std::system_error(reason, std::system_category(), path.string());
}

mode_t folderMode(Sharing sharing) { return sharing == Sharing::Group ? S_ISGID | 0770 : 0700; }

mode_t fileMode(Sharing sharing) { return sharing == Sharing::Group ? 0660 : 0600; }

/// What belongs to another user is that user's to close.
void close(const std::filesystem::path& path, const struct stat& status, mode_t wanted)
{
    const bool isOpen = (status.st_mode & everyRight & ~wanted) != 0;
    if (isOpen && status.st_uid == ::geteuid() && ::chmod(path.c_str(), wanted) != 0)
        fail(path, errno);
}

} // namespace

Sharing sharingOf(const std::filesystem::path& folder)
{
    struct stat status { };
    constexpr mode_t shared = S_ISGID | S_IWGRP;
    const bool isShared = ::stat(folder.c_str(), &status) == 0 && (status.st_mode & shared) == shared;
    return isShared ? Sharing::Group : Sharing::Nobody;
}

void makePrivateFolder(const std::filesystem::path& folder, Sharing sharing)
{
    if (folder.has_parent_path())
        std::filesystem::create_directories(folder.parent_path());
    const mode_t wanted = folderMode(sharing);
    if (::mkdir(folder.c_str(), 0700) == 0) {
        // The mode of a new folder has neither what the user's mask takes nor the bit for its group.
        if (::chmod(folder.c_str(), wanted) != 0)
            fail(folder, errno);
        return;
    }
    if (errno != EEXIST)
        fail(folder, errno);
    struct stat status { };
    // Not through a link, which somebody may have laid to a folder that is dear to this user.
    if (::lstat(folder.c_str(), &status) != 0)
        fail(folder, errno);
    if (!S_ISDIR(status.st_mode))
        fail(folder, S_ISLNK(status.st_mode) ? ELOOP : ENOTDIR);
    close(folder, status, wanted);
}

void makePrivateFile(const std::filesystem::path& file, Sharing sharing)
{
    struct stat status { };
    if (::stat(file.c_str(), &status) == 0)
        return close(file, status, fileMode(sharing));
    if (errno != ENOENT)
        fail(file, errno);
    const FileDescriptor made(::open(file.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600));
    if (!made || ::fchmod(made.number(), fileMode(sharing)) != 0)
        fail(file, errno);
}

} // namespace zn
