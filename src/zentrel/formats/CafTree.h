#pragma once

#include "zentrel/formats/CafBodies.h"
#include "zentrel/model/Container.h"

namespace zn::zentrel {

/// A document of the kernel's framework as one of ours, with one configuration "Default": a part, or an assembly with
/// the levels, names and colours that the framework's has and its parts as virtual components, which instances share.
/// Several parts beside one another are the bodies of one part.
Document documentOf(const Handle(TDocStd_Document) & document, const SolidNames& names = {});

/// The bodies of a part, or of an assembly's virtual components, each once and without its place.
std::vector<Body> distinctBodies(const Document& document);

} // namespace zn::zentrel
