#pragma once

#include "zentrel/model/Document.h"

/// Readers of foreign files. They run the kernel in a child process, so that its crash costs the file only.
namespace zn::zentrel {

/// Whether a reader takes the extension (".step", ".stp", ".igs", ".iges", without regard to case).
bool canRead(const std::filesystem::path& file);

/// Reads a foreign file by its extension as a part with one configuration "Default". An assembly structure in the
/// file is flattened: each solid becomes a body at its place, with the name of what it belongs to.
/// Raises `DocumentError`: `NotFound`, `NotReadable`, `Damaged` (empty, truncated, another format's content),
/// `Incomplete` (faces or solids that the file lists are missing, or nothing could be read), `Kernel`,
/// `Unsupported` (an extension that no reader takes).
PartDocument readForeign(const std::filesystem::path& file);

PartDocument readStep(const std::filesystem::path& file);
PartDocument readIges(const std::filesystem::path& file);

} // namespace zn::zentrel
