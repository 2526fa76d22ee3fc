#include "platform/linux/Errors.h"

#include <cerrno>
#include <system_error>

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

} // namespace zn
