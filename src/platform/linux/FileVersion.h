#pragma once

#include "platform/Processes.h"

#include <filesystem>

namespace zn {

/// Reads the version block of an executable; none if the file can't be read, is no 64-bit ELF file or has no block.
std::optional<FileVersion> readFileVersion(const std::filesystem::path& file);

} // namespace zn
