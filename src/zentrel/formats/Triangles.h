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

/// Meshes all parts of the model by the size of the file that they stand in. For processes of the kernel's, which
/// `meshedFile` starts, like all below. `file` is the output, for sentences. Raises `Unsupported` when there isn't a
/// single face (`format` can't hold curves) and `Kernel` when a face can't be meshed; remarks tell of
/// faces that are coarser than asked, or left out since nobody can see them.
void meshModel(
    const Model& model, MeshQuality quality, const char* format, const std::filesystem::path& file, Remarks& remarks);

/// The triangles of a body that has been meshed. Raises `Kernel` when its points have no place.
std::vector<TriangleSet> trianglesOf(const PlacedBody& placed, const std::filesystem::path& file);

/// Both for all bodies, in their order.
std::vector<TriangleSet> trianglesOf(
    const Model& model, MeshQuality quality, const char* format, const std::filesystem::path& file, Remarks& remarks);

} // namespace zn::zentrel
