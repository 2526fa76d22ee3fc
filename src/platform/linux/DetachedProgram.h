#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace zn {

/// Starts a program that outlives this process, in a session of its own and with the root as its folder; `arguments`
/// begins with the program's machine path. What it writes goes to the end of `log`. Returns its process. Raises
/// `StatusError` E_FAIL with a sentence if it can't be started.
std::int32_t startDetached(const std::vector<std::string>& arguments, const std::filesystem::path& log);

} // namespace zn
