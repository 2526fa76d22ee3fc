#include "automation/Channel.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fmt/format.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace zn::automation {

namespace {

/// A socket's address holds 107 bytes only, so a socket is addressed through its open folder: that is short however
/// long the folder's path is.
struct FolderAddress {
    FolderAddress(const std::filesystem::path& folder, const std::string& fileName)
        : directory(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC))
    {
        address.sun_family = AF_UNIX;
        const std::string path = fmt::format("/proc/self/fd/{}/{}", directory.number(), fileName);
        if (path.size() >= sizeof address.sun_path)
            throw StatusError(E_INVALIDARG, "The name of a published object is too long: " + fileName);
        std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
    }

    const sockaddr* get() const { return reinterpret_cast<const sockaddr*>(&address); }

    FileDescriptor directory;
    sockaddr_un address{};
};

FileDescriptor newSocket(int flags = 0)
{
    FileDescriptor made(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | flags, 0));
    if (!made)
        throw StatusError(E_FAIL, fmt::format("No socket could be made: {}.", std::strerror(errno)));
    return made;
}

} // namespace

void requirePrivateFolder(const std::filesystem::path& folder)
{
    std::error_code failure;
    if (!std::filesystem::is_directory(folder, failure)) {
        std::filesystem::create_directories(folder.parent_path(), failure);
        if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST)
            throw StatusError(
                E_FAIL, fmt::format("The folder {} cannot be made: {}.", folder.string(), std::strerror(errno)));
    }
    struct stat facts { };
    if (stat(folder.c_str(), &facts) != 0 || facts.st_uid != geteuid() || (facts.st_mode & 077) != 0)
        throw StatusError(E_ACCESSDENIED,
            fmt::format("The folder {} must belong to you and be closed to others (mode 700).", folder.string()));
}

std::string socketFileName(const std::string& itemName)
{
    std::string name;
    for (const char c : itemName) {
        const bool plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
        name += plain ? std::string(1, c) : fmt::format("%{:02x}", static_cast<unsigned char>(c));
    }
    return name + ".sock";
}

FileDescriptor listenIn(const std::filesystem::path& folder, const std::string& fileName)
{
    const FolderAddress address(folder, fileName);
    FileDescriptor listener = newSocket();
    unlinkat(address.directory.number(), fileName.c_str(), 0);
    if (bind(listener.number(), address.get(), sizeof address.address) != 0 || listen(listener.number(), 4) != 0)
        throw StatusError(E_FAIL,
            fmt::format("The socket {} cannot be made: {}.", (folder / fileName).string(), std::strerror(errno)));
    return listener;
}

FileDescriptor connectTo(const std::filesystem::path& folder, const std::string& fileName)
{
    const FolderAddress address(folder, fileName);
    // A listener's full queue would be waited for without an end.
    FileDescriptor connection = newSocket(SOCK_NONBLOCK);
    if (!address.directory || connect(connection.number(), address.get(), sizeof address.address) != 0)
        return {};
    fcntl(connection.number(), F_SETFL, 0);
    return connection;
}

FileDescriptor acceptFrom(const FileDescriptor& listener, Milliseconds limit)
{
    pollfd watched{listener.number(), POLLIN, 0};
    if (poll(&watched, 1, static_cast<int>(limit.count())) <= 0)
        return {};
    return FileDescriptor(accept4(listener.number(), nullptr, nullptr, SOCK_CLOEXEC));
}

} // namespace zn::automation
