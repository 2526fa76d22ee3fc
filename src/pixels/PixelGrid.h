#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace zn {

/// A corner of a triangle in a picture: pixels from the upper left corner, and depth in pixels towards the eye.
struct PictureCorner {
    float x, y, z;
    std::array<float, 3> normal; ///< of the surface there, of length 1; x to the right, y upwards, z towards the eye
};

/// What is seen in each pixel: the surface that is nearest to the eye.
class PixelGrid {
public:
    PixelGrid(int width, int height);

    /// Draws a triangle over what lies behind it; `color` is red, green and blue from 0 to 1.
    void draw(
        const PictureCorner& a, const PictureCorner& b, const PictureCorner& c, const std::array<float, 3>& color);

    /// The picture of `1/factor` of the size, shaded, with dark lines where surfaces end or meet at an angle: four
    /// bytes a pixel (blue, green, red, alpha), multiplied by alpha.
    std::vector<std::uint8_t> shaded(int factor) const;

private:
    struct Pixel {
        float depth;
        std::array<float, 3> normal;
        std::array<float, 3> color;
    };
    using Light = std::array<float, 4>; ///< red, green, blue, alpha

    bool isEdge(int x, int y) const;
    /// For each pixel, without the specks that the normals of very thin triangles make.
    std::vector<bool> edges() const;
    Light light(const Pixel& pixel) const;
    std::size_t indexOf(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(x);
    }

    int m_width;
    int m_height;
    std::vector<Pixel> m_pixels;
};

} // namespace zn
