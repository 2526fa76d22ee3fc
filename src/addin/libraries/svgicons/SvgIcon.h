#pragma once

#include <QIcon>
#include <QString>

namespace zn {

/// An icon from an SVG picture of ours (a resource such as ":/zn/images/part.svg"), sharp at every size. The pictures
/// are drawn for light palettes in the colours of one table; with a dark palette lines, paper and plates take the
/// table's dark colours. A picture that isn't there gives an icon without a picture.
QIcon svgIcon(const QString& path);

} // namespace zn
