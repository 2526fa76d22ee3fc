#pragma once

#include <filesystem>
#include <string>

namespace zn {

/// The path below `root` that `relative` ("a/b/c", UTF-8) means on a disk that tells cases apart: each component in the
/// spelling it has on the disk. An exact spelling wins; among several others the first by its bytes. From the first
/// component that doesn't exist on, the given spelling stays.
std::filesystem::path findIgnoringCase(const std::filesystem::path& root, const std::string& relative);

} // namespace zn
