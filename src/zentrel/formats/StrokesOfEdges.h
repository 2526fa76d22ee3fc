#pragma once

#include "zentrel/formats/Projection.h"

#include <string>

namespace zn::zentrel {

/// Turns edges that lie in the XY plane into strokes, appended to `strokes`.
void appendEdges(const TopoDS_Shape& edges, LineKind kind, const std::optional<Color>& color, double tolerance,
    std::vector<Stroke>& strokes);

/// The lines of a body that is only a tessellation, as seen along -Z: its borders, its sharp edges and its outline.
/// What has a triangle towards the eye beside it counts as visible, as it is for a convex body; one that stands behind
/// another body isn't hidden by it.
void appendTessellation(
    const TopoDS_Shape& shape, const std::optional<Color>& color, bool hiddenLines, std::vector<Stroke>& strokes);

/// Takes out hidden lines where another line is drawn anyway: dashes over a solid line would only make it uneven.
void dropCoveredHidden(std::vector<Stroke>& strokes, double tolerance);

/// Takes points out of polylines that then stay within `tolerance` of what they were.
void simplify(std::vector<Stroke>& strokes, double tolerance);

/// Strokes as bytes, for the way from a child process to its parent.
std::string packStrokes(const std::vector<Stroke>& strokes);
std::vector<Stroke> unpackStrokes(const std::string& packet);

} // namespace zn::zentrel
