#pragma once

#include "arkin/desktop/Desktop.h"

#include <filesystem>

namespace zn::arkin {

/// Loads the library of the host's windows from the folder and makes the desktop; `wanted` as the library has it. The
/// library stays loaded until the process ends. Raises `StatusError` with a sentence.
std::unique_ptr<Desktop> loadDesktop(const std::filesystem::path& folder, bool wanted);

} // namespace zn::arkin
