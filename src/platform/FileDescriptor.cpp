#include "platform/FileDescriptor.h"

#include <cerrno>

namespace zn {

bool FileDescriptor::writeAll(std::string_view bytes) const
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(m_number, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace zn
