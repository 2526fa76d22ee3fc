#pragma once

#include "zentrel/formats/Projection.h"

#include <limits>

namespace zn::zentrel {

/// The smallest rectangle around points; inside out without any.
struct Extent {
    Point2 low{std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
    Point2 high{std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest()};

    void add(const Point2& point);
    void add(const Stroke& stroke);
    /// Whether the other one is within this one, or beyond it by no more than `slack`.
    bool holds(const Extent& other, double slack) const;
};

Extent extentOf(const std::vector<Stroke>& strokes);

} // namespace zn::zentrel
