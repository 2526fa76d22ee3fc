#include "zentrel/model/Document.h"

#include <BRepCheck_Analyzer.hxx>

namespace zn::zentrel {

bool isSound(const TopoDS_Shape& shape) { return !shape.IsNull() && BRepCheck_Analyzer(shape).IsValid(); }

} // namespace zn::zentrel
