#pragma once

#include "platform/LocalPipe.h"

#include <filesystem>

namespace zn {

/// Named pipes as local sockets that keep message borders: the pipe "\\.\pipe\NAME" is the socket NAME in a private
/// folder. The mutex is a lock on a file beside it; if that file can't be made, the message is sent without a lock.
/// A service that takes the message but gives no reply is left after ten seconds.
class SocketPipe : public LocalPipe {
public:
    explicit SocketPipe(std::filesystem::path folder);

    bool send(TextView mutexName, TextView pipeName, const std::string& message) override;

private:
    std::filesystem::path m_folder;
};

} // namespace zn
