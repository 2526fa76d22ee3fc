#include "zentrel/commands/WorkFolders.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace zn::zentrel {

namespace {

constexpr std::string_view prefix = "Zentrel_PID_";

/// The process whose folder this is; 0 for any other name.
pid_t ownerOf(const std::string& name)
{
    pid_t id = 0;
    if (name.starts_with(prefix))
        std::from_chars(name.data() + prefix.size(), name.data() + name.size(), id);
    return id;
}

bool isLeftOver(const std::filesystem::path& folder)
{
    const pid_t owner = ownerOf(folder.filename().string());
    struct stat facts { };
    return owner > 0 && lstat(folder.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) && facts.st_uid == geteuid()
        && (owner == getpid() || (kill(owner, 0) != 0 && errno == ESRCH));
}

} // namespace

std::filesystem::path processWorkFolder(const std::filesystem::path& temporaryFolder)
{
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(temporaryFolder, ignored))
        if (isLeftOver(entry.path()))
            std::filesystem::remove_all(entry.path(), ignored);
    return temporaryFolder / (std::string(prefix) + std::to_string(getpid()));
}

} // namespace zn::zentrel
