#include "platform/AtomicFile.h"

#include "base/Status.h"
#include "platform/linux/Errors.h"
#include "platform/linux/FileDescriptor.h"

#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>

namespace zn {

namespace {

void syncFile(const std::filesystem::path& path)
{
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file || ::fsync(file.number()) != 0)
        throw systemFailure("The file '" + path.string() + "' could not be written to the disk");
}

/// The mode that a plainly created file has. The mask can only be read by setting it, which other threads would
/// notice, so it is read from the process's status instead.
mode_t ordinaryMode()
{
    static const mode_t mode = [] {
        mode_t mask = 022;
        if (std::FILE* status = std::fopen("/proc/self/status", "re")) {
            char line[128];
            unsigned value = 0;
            while (std::fgets(line, sizeof line, status))
                if (std::sscanf(line, "Umask: %o", &value) == 1)
                    mask = value;
            std::fclose(status);
        }
        return 0666 & ~mask;
    }();
    return mode;
}

} // namespace

void syncFolder(const std::filesystem::path& folder)
{
    const FileDescriptor file(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!file || ::fsync(file.number()) != 0)
        throw systemFailure("The folder '" + folder.string() + "' could not be written to the disk");
}

void replaceFileDurably(const std::filesystem::path& temporary, const std::filesystem::path& path)
{
    syncFile(temporary);
    if (::rename(temporary.c_str(), path.c_str()) != 0)
        throw systemFailure("The file '" + path.string() + "' could not be replaced");
    syncFolder(path.parent_path());
}

void writeFileAtomically(const std::filesystem::path& path, std::string_view bytes)
{
    std::string temporary = path.string() + ".XXXXXX";
    FileDescriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!file)
        throw systemFailure("The file '" + path.string() + "' could not be written");
    try {
        if (!writeAll(file.number(), bytes) || ::fchmod(file.number(), ordinaryMode()) != 0 || !file.close())
            throw systemFailure("The file '" + path.string() + "' could not be written");
        replaceFileDurably(temporary, path);
    } catch (...) {
        ::unlink(temporary.c_str());
        throw;
    }
}

} // namespace zn
