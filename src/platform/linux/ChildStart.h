#pragma once

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace zn {

struct StartedChild {
    pid_t program = 0;
    /// The one child of this process: it started the program and ends, with the program's exit code or 128 and its
    /// signal's number, when the program and all that it has started are gone. SIGTERM makes it end them; it then dies
    /// by SIGKILL.
    pid_t guard = 0;
};

/// Open files of the starter that become a program's own; -1 leaves it nothing to read, and nobody who reads what it
/// writes.
struct ChildStreams {
    int input = -1;
    int output = -1; ///< takes its standard error, too, which is the starter's otherwise
};

/// Starts a program; `arguments` begins with the program's machine path. The program is ended, with all that it has
/// started, when the calling thread ends. None, with `errno` set, if the program can't be run.
std::optional<StartedChild> startChild(const std::vector<std::string>& arguments,
    const std::vector<std::string>& moreEnvironment, const ChildStreams& streams = {});

} // namespace zn
