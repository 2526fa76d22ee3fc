#pragma once

#include "platform/FileSystem.h"
#include "platform/Registry.h"

#include <filesystem>
#include <string>
#include <vector>

namespace zn::arkin {

/// The program that draws files of this kind, with all its arguments: it reads `file` and writes the PNG, whose longer
/// side has so many pixels. By the extension: what is registered in the machine's settings under the key
/// `SOFTWARE\Arkin\Pictures` by a value named like the extension (".zenprt"), which is called as "PROGRAM picture FILE
/// PNG --size PIXELS"; for PDF the first page. Empty if nobody draws such files; images need nobody.
std::vector<std::string> pictureProgram(zn::Registry& registry, zn::FileSystem& files,
    const std::filesystem::path& file, const std::filesystem::path& png, int pixels);

/// Changes with what such a program may draw: its path and the time of its file.
std::string stampOfProgram(const std::string& program);

} // namespace zn::arkin
