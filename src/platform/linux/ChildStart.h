#pragma once

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace zn {

/// Starts a program as a child of this process; `arguments` begins with the program's machine path. The child is killed
/// when the calling thread ends. None, with `errno` set, if the program can't be run.
std::optional<pid_t> startChild(
    const std::vector<std::string>& arguments, const std::vector<std::string>& moreEnvironment);

} // namespace zn
