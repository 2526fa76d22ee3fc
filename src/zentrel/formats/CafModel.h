#pragma once

#include "zentrel/model/Model.h"

#include <functional>
#include <TDocStd_Document.hxx>

namespace zn::zentrel {

/// Turns a body's geometry into what is written of it; null leaves the body out. The number and order of faces stays.
using BodyFilter = std::function<TopoDS_Shape(const Body& body)>;

/// A document of the kernel's framework with the model's structure, names and colours. Equal components share one
/// shape. With `flatten` all bodies become one part. Null if the filter leaves nothing.
Handle(TDocStd_Document) cafDocumentOf(const Model& model, const BodyFilter& filter, bool flatten = false);

/// All edges of a shape, each once, as one compound; null if it has none.
TopoDS_Shape edgesOf(const TopoDS_Shape& shape);

/// Faces of all bodies as they are placed.
std::size_t countFaces(const Model& model);

/// Raises `Unsupported` if a body has faces with a tessellation and no surface, which `format` can't hold.
void requireSurfaces(const Model& model, const char* format, const std::filesystem::path& file);

} // namespace zn::zentrel
