#pragma once

#include <QImage>
#include <QQuaternion>
#include <QSize>
#include <string>
#include <vector>

namespace zn::arkin {

/// A model's triangles, to be looked at from all sides.
class TurningModel {
public:
    /// The bytes of a binary PLY file whose vertices have position, normal and colour, three for each triangle, as
    /// "zentrel picture" writes it. Raises `StatusError` with a sentence for anything else.
    explicit TurningModel(const std::string& ply);

    /// How a picture that doesn't turn shows it: from the front, right and above.
    static QQuaternion firstLook();
    /// Shaded, without background. `look` turns the model into a space with x to the right, y upwards and z towards the
    /// eye. At zoom 1 the first look fills the picture. `fine`: each pixel is the mean of four.
    QImage picture(const QQuaternion& look, double zoom, const QSize& size, bool fine) const;

private:
    struct Corner {
        QVector3D point;
        QVector3D normal;
    };
    std::vector<Corner> m_corners;              ///< three a triangle
    std::vector<std::array<float, 3>> m_colors; ///< one a triangle: red, green, blue
    QVector3D m_middle;
    float m_extent = 1.0F; ///< the longer side of the first look
};

} // namespace zn::arkin
