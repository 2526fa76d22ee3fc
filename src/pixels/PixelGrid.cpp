#include "pixels/PixelGrid.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zn {

namespace {

using Vector = std::array<float, 3>;

constexpr float nothing = -std::numeric_limits<float>::infinity();

float dot(const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

Vector unit(const Vector& vector)
{
    const float length = std::sqrt(dot(vector, vector));
    return length > 0.0F ? Vector{vector[0] / length, vector[1] / length, vector[2] / length} : Vector{0, 0, 1};
}

/// Twice the area of the triangle, positive if it is passed clockwise as pixels count.
float area(const PictureCorner& a, const PictureCorner& b, float x, float y)
{
    return (b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x);
}

} // namespace

PixelGrid::PixelGrid(int width, int height)
    : m_width(width)
    , m_height(height)
    , m_pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), Pixel{nothing, {}, {}})
{
}

void PixelGrid::draw(
    const PictureCorner& a, const PictureCorner& b, const PictureCorner& c, const std::array<float, 3>& color)
{
    // A pixel on the line between two triangles must not fall between them.
    constexpr float rounding = -1e-3F;
    const float whole = area(a, b, c.x, c.y);
    if (whole == 0.0F || !std::isfinite(whole))
        return;
    const auto within = [](float place, int most) { return static_cast<int>(std::clamp(place, 0.0F, float(most))); };
    const int left = within(std::floor(std::min({a.x, b.x, c.x})), m_width - 1);
    const int right = within(std::ceil(std::max({a.x, b.x, c.x})), m_width - 1);
    const int top = within(std::floor(std::min({a.y, b.y, c.y})), m_height - 1);
    const int bottom = within(std::ceil(std::max({a.y, b.y, c.y})), m_height - 1);
    for (int y = top; y <= bottom; ++y) {
        for (int x = left; x <= right; ++x) {
            const float px = static_cast<float>(x) + 0.5F, py = static_cast<float>(y) + 0.5F;
            const float u = area(b, c, px, py) / whole;
            const float v = area(c, a, px, py) / whole;
            const float w = 1.0F - u - v;
            if (std::min({u, v, w}) < rounding)
                continue;
            const float depth = u * a.z + v * b.z + w * c.z;
            Pixel& pixel = m_pixels[indexOf(x, y)];
            if (depth <= pixel.depth)
                continue;
            pixel.depth = depth;
            for (std::size_t axis = 0; axis < 3; ++axis)
                pixel.normal[axis] = u * a.normal[axis] + v * b.normal[axis] + w * c.normal[axis];
            pixel.color = color;
        }
    }
}

bool PixelGrid::isEdge(int x, int y) const
{
    constexpr float sharpest = 0.85F; // cosine of 32 degrees
    constexpr float step = 4.0F;      // pixels that a surface may rise beyond its own slope
    const Pixel& here = m_pixels[indexOf(x, y)];
    for (const auto& [nextX, nextY] : {std::pair(x + 1, y), std::pair(x, y + 1)}) {
        if (nextX >= m_width || nextY >= m_height)
            continue;
        const Pixel& next = m_pixels[indexOf(nextX, nextY)];
        const bool isHere = here.depth != nothing, isNext = next.depth != nothing;
        if (isHere != isNext)
            return true;
        if (!isHere)
            continue;
        const Vector a = unit(here.normal), b = unit(next.normal);
        if (std::abs(dot(a, b)) < sharpest)
            return true;
        const float slope = 1.0F / std::max(std::min(std::abs(a[2]), std::abs(b[2])), 0.05F);
        if (std::abs(here.depth - next.depth) > step + slope)
            return true;
    }
    return false;
}

std::vector<bool> PixelGrid::edges() const
{
    constexpr int reach = 2;
    constexpr int line = 2 * reach + 1; // as many pixels as a line has within reach
    std::vector<bool> found(m_pixels.size());
    for (int y = 0; y < m_height; ++y)
        for (int x = 0; x < m_width; ++x)
            found[indexOf(x, y)] = isEdge(x, y);
    std::vector<bool> kept(m_pixels.size());
    for (int y = reach; y + reach < m_height; ++y) {
        for (int x = reach; x + reach < m_width; ++x) {
            if (!found[indexOf(x, y)])
                continue;
            int around = 0;
            for (int row = y - reach; row <= y + reach; ++row)
                for (int column = x - reach; column <= x + reach; ++column)
                    around += found[indexOf(column, row)] ? 1 : 0;
            kept[indexOf(x, y)] = around >= line;
        }
    }
    return kept;
}

PixelGrid::Light PixelGrid::light(const Pixel& pixel) const
{
    if (pixel.depth == nothing)
        return {};
    // A lamp over the viewer's left shoulder; surfaces are lit from both sides, for those that aren't closed.
    static const Vector lamp = unit({-0.4F, 0.55F, 0.75F});
    Vector normal = unit(pixel.normal);
    if (normal[2] < 0.0F)
        normal = {-normal[0], -normal[1], -normal[2]};
    const float bright = 0.38F + 0.62F * std::max(dot(normal, lamp), 0.0F);
    const float shine = 0.18F * std::pow(std::max(dot(normal, unit({-0.2F, 0.28F, 0.93F})), 0.0F), 24.0F);
    const auto channel = [&](float color) { return std::min(color * bright + shine, 1.0F); };
    return {channel(pixel.color[0]), channel(pixel.color[1]), channel(pixel.color[2]), 1.0F};
}

std::vector<std::uint8_t> PixelGrid::shaded(int factor) const
{
    const int width = m_width / factor, height = m_height / factor;
    const float share = 255.0F / static_cast<float>(factor * factor);
    constexpr Light ink{0.12F, 0.12F, 0.14F, 1.0F};
    const std::vector<bool> lines = edges();
    std::vector<std::uint8_t> bytes;
    bytes.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            Light sum{};
            for (int part = 0; part < factor * factor; ++part) {
                const std::size_t place = indexOf(x * factor + part % factor, y * factor + part / factor);
                const Light one = lines[place] ? ink : light(m_pixels[place]);
                for (std::size_t channel = 0; channel < sum.size(); ++channel)
                    sum[channel] += one[channel];
            }
            for (const std::size_t channel : {2U, 1U, 0U, 3U})
                bytes.push_back(static_cast<std::uint8_t>(std::lround(sum[channel] * share)));
        }
    }
    return bytes;
}

} // namespace zn
