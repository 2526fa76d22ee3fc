#include "zentrel/model/Bounds.h"

#include <BRepBndLib.hxx>
#include <cmath>

namespace zn::zentrel {

Bnd_Box boundsOf(const TopoDS_Shape& shape)
{
    Bnd_Box box;
    if (!shape.IsNull())
        BRepBndLib::Add(shape, box, Standard_False);
    // Tolerances of vertices and edges widen the box; they are no size of the model.
    box.SetGap(0.0);
    return box;
}

Bnd_Box boundsOf(const Model& model) { return boundsOf(compoundOf(model)); }

double diagonalOf(const Bnd_Box& box) { return box.IsVoid() || box.IsOpen() ? 0.0 : std::sqrt(box.SquareExtent()); }

} // namespace zn::zentrel
