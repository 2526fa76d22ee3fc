#include "platform/Home.h"

#include "base/Status.h"
#include "platform/linux/Errors.h"
#include "platform/PrivateFiles.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fmt/format.h>
#include <pwd.h>
#include <sys/stat.h>
#include <system_error>
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

/// Closed to others, if it is new. One that is there may hold other things, too, so it stays as open as it is, but
/// nobody else may write to it: what lies in a home names the libraries that are loaded.
void makeHomeFolder(const std::filesystem::path& folder)
{
    struct stat status { };
    if (::stat(folder.c_str(), &status) != 0) {
        try {
            makePrivateFolder(folder, Sharing::Nobody);
        } catch (const std::system_error& error) {
            throw StatusError(systemStatus(error.code().value()),
                "The folder '" + folder.string() + "' can't be made: " + error.code().message() + ".");
        }
        return;
    }
    const std::string subject = "Others may write to the home folder '" + folder.string() + "'. ";
    if ((status.st_mode & S_IWOTH) != 0)
        throw StatusError(
            E_ACCESSDENIED, subject + "Close it with 'chmod o-w', or set ARKIN_HOME to a folder of your own.");
    if ((status.st_mode & S_IWGRP) != 0 && sharingOf(folder) == Sharing::Nobody)
        throw StatusError(
            E_ACCESSDENIED, subject + "Close it with 'chmod g-w', or let its group share it with 'chmod 2770'.");
}

void makeRuntimeFolder(const std::filesystem::path& folder)
{
    std::error_code failure;
    std::filesystem::create_directories(folder.parent_path(), failure);
    if (failure)
        throw StatusError(systemStatus(failure.value()),
            "The folder '" + folder.parent_path().string() + "' can't be made: " + failure.message() + ".");
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

std::filesystem::path runtimeFolderOf(const std::filesystem::path& home, bool conventional)
{
    const auto session = fromEnvironment("XDG_RUNTIME_DIR");
    // Of those who share a home, each has programs of one's own.
    const bool isShared = sharingOf(home) == Sharing::Group;
    std::filesystem::path folder = home / (isShared ? fmt::format("run-{}", ::geteuid()) : "run");
    if (conventional && session.is_absolute() && std::filesystem::is_directory(session))
        folder = session / "arkin";
    if (folder.string().size() > longestRuntimeFolder) {
        const auto own = std::filesystem::path("/tmp") / fmt::format("arkin-{}", ::geteuid());
        makeRuntimeFolder(own);
        folder = own / fmt::format("{:016x}", hashOf(home.string()));
    }
    makeRuntimeFolder(folder);
    return folder;
}

std::filesystem::path cacheFolderOf(const std::filesystem::path& home, bool conventional)
{
    const bool isShared = sharingOf(home) == Sharing::Group;
    std::filesystem::path beside = home / (isShared ? fmt::format("cache-{}", ::geteuid()) : "cache");
    if (!conventional)
        return beside;
    if (const auto cache = fromEnvironment("XDG_CACHE_HOME"); cache.is_absolute())
        return cache / "arkin";
    const auto user = fromEnvironment("HOME");
    return user.is_absolute() ? user / ".cache/arkin" : beside;
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
    makeHomeFolder(home.m_folder);
    // The same home has the same runtime folder, however it was named.
    home.m_conventional = folder.empty()
        || ((std::getenv("HOME") || std::getenv("XDG_DATA_HOME")) && home.m_folder == tidy(conventionalHome()));
    home.m_runtime = runtimeFolderOf(home.m_folder, home.m_conventional);
    home.m_cache = cacheFolderOf(home.m_folder, home.m_conventional);
    return home;
}

void Home::passToChildren() const { ::setenv("ARKIN_HOME", m_folder.c_str(), 1); }

} // namespace zn
