#pragma once

#include "platform/Clock.h"

#include <string>
#include <vector>

namespace zn {

struct ProgramRun {
    std::vector<std::string> arguments;   ///< begins with the program's machine path
    std::vector<std::string> environment; ///< "NAME=VALUE", beside this process's own
    std::string input;                    ///< what it reads
    std::chrono::seconds limit{};
};

/// Runs a program until it and all that it has started have ended, or ends them at the limit. Empty if it ended with 0,
/// else a sentence with the reason and the last line that it wrote.
std::string runProgram(const ProgramRun& run, Clock& clock);

} // namespace zn
