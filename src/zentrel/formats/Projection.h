#pragma once

#include "zentrel/model/Model.h"

#include <array>
#include <optional>
#include <vector>

namespace zn::zentrel {

using Point2 = std::array<double, 2>;

enum class LineKind {
    Visible, ///< edges and outlines that are seen
    Hidden,  ///< those behind a face
    Frame,   ///< the sheet's own lines
};

/// A circle or a part of one, counterclockwise from `start` to `end` (radians, `end` above `start`).
struct Arc {
    Point2 center{};
    double radius = 0.0;
    double start = 0.0;
    double end = 0.0;
    bool full = false;
};

/// One line of a picture: an arc, or else the polyline through `points`.
struct Stroke {
    LineKind kind = LineKind::Visible;
    std::optional<Color> color; ///< of the body
    std::vector<Point2> points; ///< of an arc: its two ends
    std::optional<Arc> arc;
};

/// What is seen of the model from `direction` with `up` on the paper upwards: strokes in the model's mm, in the
/// projection plane. Curves that are no arcs become polylines that stay within `tolerance` mm of them.
/// The exact projection is tried first; where the kernel fails, takes longer than 20 seconds or draws lines beside a
/// body, edges of a fine mesh are projected in its place. A view that this process has projected a short while ago
/// isn't projected again, whatever file it came from. Bodies that are only a tessellation show its edges. `file` is for
/// sentences. Raises `DocumentError` of kind `Kernel` when neither works.
std::vector<Stroke> project(const Model& model, const gp_Dir& direction, const gp_Dir& up, double tolerance,
    bool hiddenLines, const std::filesystem::path& file);

} // namespace zn::zentrel
