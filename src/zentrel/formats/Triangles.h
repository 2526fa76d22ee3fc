#pragma once

#include "zentrel/formats/Mesh.h"
#include "zentrel/kernel/Remarks.h"
#include "zentrel/model/Model.h"

#include <array>
#include <gp_XYZ.hxx>

namespace zn::zentrel {

/// The triangles of one body's faces that share a colour, at their place in the whole model. Lengths in mm.
struct TriangleSet {
    Text name; ///< of the body
    std::optional<Color> color;
    std::vector<gp_XYZ> points;
    std::vector<std::array<std::uint32_t, 3>> triangles; ///< indices into `points`, counterclockwise from outside
};

/// Meshes all parts of the model (`meshesOf`) and gives their triangles at their places, in the order of the bodies.
/// Raises what that raises, and `Kernel` for more than fit into the memory.
std::vector<TriangleSet> trianglesOf(
    const Model& model, MeshQuality quality, const char* format, const std::filesystem::path& file, Remarks& remarks);

} // namespace zn::zentrel
