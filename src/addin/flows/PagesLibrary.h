#pragma once

#include "addin/flows/PageFactory.h"

#include <filesystem>

namespace zn {

/// Loads the library of windows and makes its factory. The library stays loaded until the process ends, because the
/// toolkit keeps references into it. Raises `StatusError` with a sentence.
std::shared_ptr<PageFactory> loadPages(const std::filesystem::path& library, const Platform& platform);

} // namespace zn
