#pragma once

#include "zentrel/formats/Mesh.h"
#include "zentrel/kernel/Remarks.h"
#include "zentrel/model/Model.h"

#include <array>
#include <gp_XYZ.hxx>
#include <map>

namespace zn::zentrel {

/// The triangles of one body's faces that share a colour. Lengths in mm.
struct TriangleSet {
    Text name; ///< of the body
    std::optional<Color> color;
    std::vector<gp_XYZ> points;
    std::vector<std::array<std::uint32_t, 3>> triangles; ///< indices into `points`, counterclockwise from outside
};

/// The triangles of one model's own bodies, in its own space. A set without a colour has that of whatever places it.
using PartMesh = std::vector<TriangleSet>;
using PartMeshes = std::map<const Model*, PartMesh>;

/// Meshes every distinct model that has bodies once, however often it is placed, by the size of the file in which it
/// stands: in the process of the kernel's that serves many, or in one of its own where that fails. What was meshed
/// before with the same quality isn't meshed again. `file` is the output, for sentences. Raises `Unsupported` when
/// there isn't a single face (`format` can't hold curves) and `Kernel` when a face can't be meshed or its points have
/// no place; remarks tell of faces that are coarser than asked, or left out since nobody can see them.
PartMeshes meshesOf(
    const Model& model, MeshQuality quality, const char* format, const std::filesystem::path& file, Remarks& remarks);

/// Whether the formats' numbers, of single precision, can tell where the points are; `Kernel` if they can't.
void requirePlace(const std::vector<gp_XYZ>& points, const std::filesystem::path& file);

} // namespace zn::zentrel
