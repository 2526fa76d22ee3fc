#pragma once

#include "zentrel/model/Model.h"

#include <string>
#include <string_view>

/// Documents and models as one block of bytes, for the way between the processes of this program: no file, no
/// compression. Reading raises what the block's damage leads to; both ends are this program.
namespace zn::zentrel {

/// A part, or an assembly whose components are all virtual.
std::string packDocument(const Document& document);
Document unpackDocument(std::string_view packet);

std::string packModel(const Model& model);
/// A stream that came a short while ago gives the same shape again.
ModelRef unpackModel(std::string_view packet);

/// Makes shapes of all streams, in a process of the kernel's, and tells each what it is. `file` holds them. Raises
/// `Damaged` for the first of which none can be made, and `Kernel`.
void requireReadable(const std::map<std::string, Geometry>& streams, const std::filesystem::path& file);

} // namespace zn::zentrel
