#pragma once

#include "zentrel/model/Document.h"

#include <NCollection_DataMap.hxx>
#include <TDocStd_Document.hxx>
#include <TopTools_ShapeMapHasher.hxx>

namespace zn::zentrel {

/// A new, empty document of the kernel's framework for shapes with names and colours.
Handle(TDocStd_Document) newCafDocument();

/// Names of solids that the document doesn't know itself; the keys have no location.
using SolidNames = NCollection_DataMap<TopoDS_Shape, Text, TopTools_ShapeMapHasher>;

/// All shapes of such a document as bodies at their places: each solid one body; of what isn't in a solid, the faces
/// together one body and the curves and points together another one. A body's name is its own, or else that of the
/// part that it belongs to.
std::vector<Body> bodiesOf(const Handle(TDocStd_Document) & document, const SolidNames& names = {});

} // namespace zn::zentrel
