#include "platform/FileSystem.h"

namespace zn {

std::string FileSystem::shown(TextView path)
{
    try {
        return toMachine(path).string();
    } catch (const StatusError&) {
        return toUtf8(path);
    }
}

bool FileSystem::fileExists(TextView path)
{
    const auto found = attributes(path);
    return found && !found->folder;
}

} // namespace zn
