#pragma once

#include <TopoDS_Face.hxx>

namespace zn::zentrel {

/// Whether triangles of a meshed face end inside it, where no edge of the face explains it: one sees through there. A
/// face without triangles has no gap.
bool hasGap(const TopoDS_Face& face);

} // namespace zn::zentrel
