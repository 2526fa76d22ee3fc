#pragma once

#include "zentrel/model/Model.h"

#include <Bnd_Box.hxx>

namespace zn::zentrel {

/// Bounding box by the geometry, or by the tessellation where that is all there is; a mesh that a face happens to
/// carry doesn't change it. Void for a null or empty shape.
Bnd_Box boundsOf(const TopoDS_Shape& shape);
Bnd_Box boundsOf(const Model& model);

/// Length of the box's diagonal in mm; 0 for a void or an unbounded box.
double diagonalOf(const Bnd_Box& box);

} // namespace zn::zentrel
