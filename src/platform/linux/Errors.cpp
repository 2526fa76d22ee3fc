#include "platform/linux/Errors.h"

#include <cerrno>
#include <system_error>
#include <unistd.h>

namespace zn {

Status systemStatus(int error)
{
    switch (error) {
    case EACCES:
    case EPERM:
    case EROFS:
        return E_ACCESSDENIED;
    case ENOMEM:
        return E_OUTOFMEMORY;
    default:
        return E_FAIL;
    }
}

std::string systemText(int error) { return std::generic_category().message(error); }

StatusError systemFailure(const std::string& what)
{
    const int error = errno;
    return StatusError(systemStatus(error), what + ": " + systemText(error) + ".");
}

bool writeAll(int file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace zn
