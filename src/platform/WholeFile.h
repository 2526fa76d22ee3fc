#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace zn {

/// All bytes of a file of at most that size, as `what` ("The task file") names it in sentences. Never waits for a pipe
/// and never reads a device, neither of which has an end. Raises `StatusError` E_INVALIDARG with a sentence.
std::string readWholeFile(const std::filesystem::path& file, std::uintmax_t largest, const char* what);

} // namespace zn
