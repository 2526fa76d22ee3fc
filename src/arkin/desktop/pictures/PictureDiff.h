#pragma once

#include <QImage>

namespace zn::arkin {

/// Two pictures over each other: what both have in pale grey, what only the first has in red, what only the second has
/// in green, and where both have something else in amber. Of the larger width and height; pictures stand in the middle.
QImage pictureDiff(const QImage& before, const QImage& after);

} // namespace zn::arkin
