#include "platform/FileSystem.h"

namespace zn {

bool FileSystem::fileExists(TextView path)
{
    const auto found = attributes(path);
    return found && !found->folder;
}

} // namespace zn
