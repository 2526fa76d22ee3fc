#include "zentrel/formats/StrokesOfEdges.h"

#include <algorithm>
#include <cmath>

namespace zn::zentrel {

namespace {

double distance(const Point2& point, const Point2& from, const Point2& to)
{
    const Point2 along{to[0] - from[0], to[1] - from[1]};
    const Point2 offset{point[0] - from[0], point[1] - from[1]};
    const double square = along[0] * along[0] + along[1] * along[1];
    // A closed line comes back to its start.
    const double part
        = square > 0.0 ? std::clamp((offset[0] * along[0] + offset[1] * along[1]) / square, 0.0, 1.0) : 0.0;
    return std::hypot(offset[0] - part * along[0], offset[1] - part * along[1]);
}

/// Keeps the point that is farthest from the straight line between two kept ones, until none is too far.
std::vector<Point2> simpler(const std::vector<Point2>& points, double tolerance)
{
    std::vector<bool> isKept(points.size(), false);
    isKept.front() = isKept.back() = true;
    std::vector<std::pair<std::size_t, std::size_t>> open{{0, points.size() - 1}};
    while (!open.empty()) {
        const auto [first, last] = open.back();
        open.pop_back();
        double most = tolerance;
        std::size_t farthest = first;
        for (std::size_t index = first + 1; index < last; ++index) {
            const double off = distance(points[index], points[first], points[last]);
            if (off > most) {
                most = off;
                farthest = index;
            }
        }
        if (farthest == first)
            continue;
        isKept[farthest] = true;
        open.emplace_back(first, farthest);
        open.emplace_back(farthest, last);
    }
    std::vector<Point2> kept;
    for (std::size_t index = 0; index < points.size(); ++index) {
        if (isKept[index])
            kept.push_back(points[index]);
    }
    return kept;
}

} // namespace

void simplify(std::vector<Stroke>& strokes, double tolerance)
{
    for (Stroke& stroke : strokes) {
        if (!stroke.arc && stroke.points.size() > 2)
            stroke.points = simpler(stroke.points, tolerance);
    }
}

} // namespace zn::zentrel
