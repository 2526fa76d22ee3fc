#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace zn::zentrel {

/// Writes entries (name to content) as a zip archive that takes the target's place whole. The same entries give the
/// same bytes. Raises `NotWritable`.
void writeArchive(const std::map<std::string, std::string>& entries, const std::filesystem::path& target);

} // namespace zn::zentrel
