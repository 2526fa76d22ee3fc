#pragma once

#include "arkin/desktop/Desktop.h"

#include <filesystem>

namespace zn {
class FileSystem;
class Registry;
}

namespace zn::arkin {

/// Loads the library of the host's windows from the folder and makes the desktop. The library stays loaded until the
/// process ends. Raises `StatusError` with a sentence.
std::unique_ptr<Desktop> loadDesktop(const std::filesystem::path& folder, const DesktopSetting& setting);

/// The setting for a home: its product's language and string files, which are those beside the programs if it names
/// none.
DesktopSetting desktopSetting(zn::Registry& registry, zn::FileSystem& files, bool wanted);

} // namespace zn::arkin
