#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace zn::test {

/// The bytes of a file; none if it isn't there.
inline std::string readFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Writes a file and makes the folders above it.
inline void writeFile(const std::filesystem::path& path, const std::string& content)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

} // namespace zn::test
