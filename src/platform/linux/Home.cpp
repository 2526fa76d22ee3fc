#include "platform/Home.h"

#include "base/Status.h"
#include "platform/linux/Errors.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fmt/format.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zn {

namespace {

// A socket's path has 108 bytes with its terminator, and the longest name there needs 47 with its separator.
constexpr std::size_t longestRuntimeFolder = 60;

std::filesystem::path fromEnvironment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

std::filesystem::path conventionalHome()
{
    // The convention leaves relative paths out of account.
    if (const auto data = fromEnvironment("XDG_DATA_HOME"); data.is_absolute())
        return data / "arkin";
    const auto user = fromEnvironment("HOME");
    if (user.empty())
        throw StatusError(E_FAIL, "There is no home folder. Set ARKIN_HOME to the folder that holds the vault.");
    return user / ".local/share/arkin";
}

/// Stable between programs and builds (FNV-1a).
std::uint64_t hashOf(const std::string& text)
{
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char byte : text)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211ULL;
    return hash;
}

std::string userName(uid_t user)
{
    const passwd* entry = ::getpwuid(user);
    return entry ? entry->pw_name : "user number " + std::to_string(user);
}

void makeFolder(const std::filesystem::path& folder)
{
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    if (failure)
        throw StatusError(systemStatus(failure.value()),
            "The folder '" + folder.string() + "' can't be made: " + failure.message() + ".");
}

void makePrivateFolder(const std::filesystem::path& folder)
{
    makeFolder(folder.parent_path());
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST)
        throw systemFailure("The folder '" + folder.string() + "' can't be made");
    struct stat status { };
    // Not through a link: in a temporary folder anyone may have laid one to a folder of this user's.
    if (::lstat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        throw StatusError(E_ACCESSDENIED,
            "'" + folder.string() + "' is in the way of a folder with running programs. Set ARKIN_HOME elsewhere.");
    // Whoever it belongs to may be working with it at this moment.
    if (status.st_uid != ::geteuid())
        throw StatusError(E_ACCESSDENIED,
            "'" + folder.string() + "' belongs to " + userName(status.st_uid)
                + ". Work as that user, or set ARKIN_HOME to a folder of your own.");
    if ((status.st_mode & 077) != 0 && ::chmod(folder.c_str(), 0700) != 0)
        throw systemFailure("The folder '" + folder.string() + "' can't be closed to others");
}

std::filesystem::path makeRuntimeFolder(const std::filesystem::path& home, bool conventional)
{
    const auto session = fromEnvironment("XDG_RUNTIME_DIR");
    std::filesystem::path folder = home / "run";
    if (conventional && session.is_absolute() && std::filesystem::is_directory(session))
        folder = session / "arkin";
    if (folder.string().size() > longestRuntimeFolder) {
        const auto own = std::filesystem::path("/tmp") / fmt::format("arkin-{}", ::geteuid());
        makePrivateFolder(own);
        folder = own / fmt::format("{:016x}", hashOf(home.string()));
    }
    makePrivateFolder(folder);
    return folder;
}

std::filesystem::path tidy(const std::filesystem::path& path)
{
    auto result = std::filesystem::absolute(path).lexically_normal();
    return result.has_filename() ? result : result.parent_path();
}

} // namespace

Home Home::open(const std::filesystem::path& chosen)
{
    std::filesystem::path folder = chosen;
    if (folder.empty())
        folder = fromEnvironment("ARKIN_HOME");
    Home home;
    home.m_folder = tidy(folder.empty() ? conventionalHome() : folder);
    makeFolder(home.m_folder);
    // The same home has the same runtime folder, however it was named.
    const bool conventional = folder.empty()
        || ((std::getenv("HOME") || std::getenv("XDG_DATA_HOME")) && home.m_folder == tidy(conventionalHome()));
    home.m_runtime = makeRuntimeFolder(home.m_folder, conventional);
    return home;
}

void Home::passToChildren() const { ::setenv("ARKIN_HOME", m_folder.c_str(), 1); }

} // namespace zn
