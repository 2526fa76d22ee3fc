#include "zentrel/formats/StrokesOfEdges.h"

#include <algorithm>
#include <cmath>

namespace zn::zentrel {

namespace {

bool isOn(const Point2& point, const Point2& from, const Point2& to, double tolerance)
{
    const Point2 along{to[0] - from[0], to[1] - from[1]};
    const Point2 offset{point[0] - from[0], point[1] - from[1]};
    const double length = std::hypot(along[0], along[1]);
    if (!(length > 0.0))
        return false;
    const double forward = (offset[0] * along[0] + offset[1] * along[1]) / length;
    const double aside = (offset[0] * along[1] - offset[1] * along[0]) / length;
    return std::abs(aside) <= tolerance && forward >= -tolerance && forward <= length + tolerance;
}

/// Whether `cover` draws all that `stroke` draws: a straight line along it, or the same circle.
bool covers(const Stroke& cover, const Stroke& stroke, double tolerance)
{
    if (cover.arc && stroke.arc)
        return cover.arc->full && std::abs(cover.arc->radius - stroke.arc->radius) <= tolerance
            && std::hypot(cover.arc->center[0] - stroke.arc->center[0], cover.arc->center[1] - stroke.arc->center[1])
            <= tolerance;
    if (cover.arc || stroke.arc || cover.points.size() != 2)
        return false;
    return std::all_of(stroke.points.begin(), stroke.points.end(),
        [&](const Point2& point) { return isOn(point, cover.points[0], cover.points[1], tolerance); });
}

} // namespace

void dropCoveredHidden(std::vector<Stroke>& strokes, double tolerance)
{
    const auto firstHidden = std::stable_partition(
        strokes.begin(), strokes.end(), [](const Stroke& stroke) { return stroke.kind == LineKind::Visible; });
    std::vector<Stroke> kept(strokes.begin(), firstHidden);
    for (auto hidden = firstHidden; hidden != strokes.end(); ++hidden) {
        if (std::none_of(
                kept.begin(), kept.end(), [&](const Stroke& cover) { return covers(cover, *hidden, tolerance); }))
            kept.push_back(*hidden);
    }
    strokes = std::move(kept);
}

} // namespace zn::zentrel
