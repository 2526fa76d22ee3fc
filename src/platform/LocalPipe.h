#pragma once

#include "base/Text.h"

#include <string>

namespace zn {

/// The host's local service: messages go to a named pipe that exists only while the service runs.
class LocalPipe {
public:
    virtual ~LocalPipe() = default;

    /// Serialised between processes by the mutex `mutexName` (waited for without limit): sends one message to the
    /// existing pipe `pipeName` and reads a reply of at most 256 bytes, which is dropped. False if there is no pipe.
    virtual bool send(TextView mutexName, TextView pipeName, const std::string& message) = 0;
};

} // namespace zn
