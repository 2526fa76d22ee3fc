#include "platform/WholeFile.h"

#include "base/Status.h"
#include "platform/FileDescriptor.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>

namespace zn {

namespace {

constexpr std::uintmax_t mega = std::uintmax_t{1024} * 1024;

[[noreturn]] void refuse(const char* what, const std::filesystem::path& file, const std::string& reason)
{
    throw StatusError(E_INVALIDARG, fmt::format("{} {} {}.", what, file.string(), reason));
}

[[noreturn]] void refuseForError(const char* what, const std::filesystem::path& file)
{
    refuse(what, file, std::string("can't be read: ") + std::strerror(errno));
}

} // namespace

std::string readWholeFile(const std::filesystem::path& file, std::uintmax_t largest, const char* what)
{
    // A pipe that nobody writes to would keep an ordinary opening for ever.
    const FileDescriptor opened(::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status { };
    if (!opened || ::fstat(opened.number(), &status) != 0)
        refuseForError(what, file);
    if (!S_ISREG(status.st_mode))
        refuse(what, file, "can't be read: it is no file");
    if (static_cast<std::uintmax_t>(status.st_size) > largest)
        refuse(what, file, fmt::format("is larger than {} MB", largest / mega));
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t length = 0;
    while (length < bytes.size()) {
        const ssize_t count = ::read(opened.number(), bytes.data() + length, bytes.size() - length);
        if (count == 0)
            break; // somebody has cut it meanwhile
        if (count < 0 && errno != EINTR)
            refuseForError(what, file);
        length += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    bytes.resize(length);
    return bytes;
}

} // namespace zn
