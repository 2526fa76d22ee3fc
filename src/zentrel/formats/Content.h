#pragma once

#include <filesystem>
#include <string>

namespace zn::zentrel {

/// Checks that a file is there, can be read, isn't empty and begins and ends as STEP (IGES, STL) data does: a file
/// that was cut off, or that holds another format, is refused before the kernel sees it.
/// Raises `NotFound`, `NotReadable` or `Damaged`.
void checkStepContent(const std::filesystem::path& file);
void checkIgesContent(const std::filesystem::path& file);
/// A binary STL file has the size that its number of triangles gives; a text begins with "solid" and ends with
/// "endsolid" and a name.
void checkStlContent(const std::filesystem::path& file);

} // namespace zn::zentrel
