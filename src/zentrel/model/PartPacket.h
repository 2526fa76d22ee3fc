#pragma once

#include "zentrel/model/Document.h"

#include <string>

namespace zn::zentrel {

/// A part as one block of bytes, for the way from a child process to its parent: no file, no compression.
std::string packPart(const PartDocument& part);
/// Raises what the block's damage leads to; both ends are this program.
PartDocument unpackPart(const std::string& packet);

} // namespace zn::zentrel
