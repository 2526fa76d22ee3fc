#pragma once

#include <cstddef>
#include <IMeshTools_Parameters.hxx>
#include <TopoDS_Shape.hxx>

namespace zn::zentrel {

/// With the numbers that the preference uses; any other number counts as fine.
enum class MeshQuality { Coarse = 1, Fine = 2 };

/// Mesh parameters for something whose bounding box has that diagonal: the deflection is a fraction of it (coarse
/// 1/1000, fine 1/5000), the angle 30 or 10 degrees. So a model of 200 m meshes as one of 0.2 mm does.
IMeshTools_Parameters meshParameters(double diagonal, MeshQuality quality);
/// For the shape alone.
IMeshTools_Parameters meshParameters(const TopoDS_Shape& shape, MeshQuality quality);

/// Meshes the shape anew with these parameters, and with finer ones if a face would get no triangle. Faces that have
/// only a tessellation keep theirs. Gives the number of faces that have no triangle at the end.
[[nodiscard]] std::size_t mesh(const TopoDS_Shape& shape, IMeshTools_Parameters parameters);

} // namespace zn::zentrel
