#include "zentrel/commands/LeftOverSockets.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace zn::zentrel {

namespace {

bool isLeftOver(const std::filesystem::path& path)
{
    constexpr std::string_view prefix = "Zentrel_PID_";
    const std::string name = path.filename().string();
    pid_t owner = 0;
    if (name.starts_with(prefix))
        std::from_chars(name.data() + prefix.size(), name.data() + name.size(), owner);
    struct stat facts { };
    return owner > 0 && lstat(path.c_str(), &facts) == 0 && S_ISSOCK(facts.st_mode) && facts.st_uid == geteuid()
        && kill(owner, 0) != 0 && errno == ESRCH;
}

} // namespace

void removeLeftOverSockets(const std::filesystem::path& runtimeFolder)
{
    std::error_code ignored;
    for (std::filesystem::directory_iterator entry(runtimeFolder, ignored), end; entry != end; entry.increment(ignored))
        if (isLeftOver(entry->path()))
            std::filesystem::remove(entry->path(), ignored);
}

} // namespace zn::zentrel
