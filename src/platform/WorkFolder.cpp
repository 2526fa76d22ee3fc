#include "platform/WorkFolder.h"

#include "base/Status.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>

namespace zn {

namespace {

constexpr std::string_view pattern = "-XXXXXX";
/// Each other process that starts at the same moment can cost one.
constexpr int mostTries = 100;

void removeLeftovers(const std::filesystem::path& parent, const std::string& kind)
{
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(parent, ignored)) {
        const std::string name = entry.path().filename();
        if (name.size() != kind.size() + pattern.size() || !name.starts_with(kind + "-"))
            continue;
        if (const FileDescriptor lock = lockOwnFolder(entry.path()))
            std::filesystem::remove_all(entry.path(), ignored); // which follows no link either
    }
}

} // namespace

FileDescriptor lockOwnFolder(const std::filesystem::path& folder)
{
    FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat status { };
    if (!opened || ::fstat(opened.number(), &status) != 0 || status.st_uid != ::geteuid()
        || ::flock(opened.number(), LOCK_EX | LOCK_NB) != 0)
        return {};
    // Until it was locked another process may have taken it for a leftover.
    struct stat named { };
    const bool same = ::lstat(folder.c_str(), &named) == 0 && named.st_ino == status.st_ino;
    return same ? std::move(opened) : FileDescriptor();
}

WorkFolder::WorkFolder(const std::filesystem::path& parent, const std::string& kind)
{
    removeLeftovers(parent, kind);
    for (int tries = 0; tries < mostTries && !m_lock; ++tries) {
        std::string name = (parent / kind).string() + std::string(pattern);
        if (!::mkdtemp(name.data()))
            break;
        m_path = name;
        m_lock = lockOwnFolder(m_path);
    }
    if (!m_lock)
        throw StatusError(E_FAIL,
            "A folder for temporary files can't be made in " + parent.string() + ": " + std::strerror(errno)
                + ". Set TMPDIR to a folder that takes files.");
}

WorkFolder::~WorkFolder()
{
    std::error_code ignored; // the next of its kind removes what is left
    std::filesystem::remove_all(m_path, ignored);
}

} // namespace zn
