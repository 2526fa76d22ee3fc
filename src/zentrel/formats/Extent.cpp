#include "zentrel/formats/Extent.h"

#include <algorithm>
#include <cmath>

namespace zn::zentrel {

namespace {

/// Whether the arc, counterclockwise from its start, passes the angle.
bool passes(const Arc& arc, double angle)
{
    double turn = std::fmod(angle - arc.start, 2.0 * M_PI);
    if (turn < 0.0)
        turn += 2.0 * M_PI;
    return arc.full || turn <= arc.end - arc.start;
}

} // namespace

void Extent::add(const Point2& point)
{
    for (std::size_t axis = 0; axis < 2; ++axis) {
        low[axis] = std::min(low[axis], point[axis]);
        high[axis] = std::max(high[axis], point[axis]);
    }
}

void Extent::add(const Stroke& stroke)
{
    for (const Point2& point : stroke.points)
        add(point);
    for (int quarter = 0; stroke.arc && quarter < 4; ++quarter) {
        const double angle = quarter * M_PI / 2;
        if (passes(*stroke.arc, angle))
            add({stroke.arc->center[0] + stroke.arc->radius * std::cos(angle),
                stroke.arc->center[1] + stroke.arc->radius * std::sin(angle)});
    }
}

bool Extent::holds(const Extent& other, double slack) const
{
    for (std::size_t axis = 0; axis < 2; ++axis) {
        if (other.low[axis] < low[axis] - slack || other.high[axis] > high[axis] + slack)
            return false;
    }
    return true;
}

Extent extentOf(const std::vector<Stroke>& strokes)
{
    Extent extent;
    for (const Stroke& stroke : strokes)
        extent.add(stroke);
    return extent;
}

} // namespace zn::zentrel
