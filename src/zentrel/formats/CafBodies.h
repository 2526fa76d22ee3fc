#pragma once

#include "zentrel/model/Document.h"

#include <TDocStd_Document.hxx>

namespace zentrel {

/// A new, empty document of the kernel's framework for shapes with names and colours.
Handle(TDocStd_Document) newCafDocument();

/// All shapes of such a document as bodies at their places: each solid one body; of what isn't in a solid, the faces
/// together one body and the curves and points together another one.
std::vector<Body> bodiesOf(const Handle(TDocStd_Document) & document);

} // namespace zentrel
