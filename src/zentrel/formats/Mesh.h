#pragma once

#include <cstddef>
#include <IMeshTools_Parameters.hxx>
#include <TopoDS_Shape.hxx>

namespace zn::zentrel {

/// With the numbers that the preference uses; any other number counts as fine.
enum class MeshQuality { Coarse = 1, Fine = 2 };

/// Mesh parameters for a shape: the deflection is a fraction of the diagonal of the shape's bounding box (coarse
/// 1/1000, fine 1/5000), the angle 30 or 10 degrees. So a model of 200 m meshes as one of 0.2 mm does.
IMeshTools_Parameters meshParameters(const TopoDS_Shape& shape, MeshQuality quality);

/// Meshes the shape anew with these parameters, and with finer ones if a face would get no triangle. Faces that have
/// only a tessellation keep theirs. Gives the number of faces that have no triangle at the end.
[[nodiscard]] std::size_t mesh(const TopoDS_Shape& shape, MeshQuality quality);

} // namespace zn::zentrel
