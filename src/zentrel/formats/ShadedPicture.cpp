#include "zentrel/formats/ShadedPicture.h"

#include "pixels/PixelGrid.h"
#include "zentrel/formats/LitTriangles.h"
#include "zentrel/formats/Png.h"
#include "zentrel/formats/Triangles.h"

#include <algorithm>
#include <limits>

namespace zn::zentrel {

namespace {

constexpr int oversampling = 2;
/// Of the picture's side that the model fills.
constexpr double border = 0.03;

/// The axes of the picture, in the model.
struct Axes {
    gp_XYZ right, up, eye;

    explicit Axes(const PictureView& view)
        : eye(view.direction.XYZ())
    {
        gp_XYZ upwards = view.up.XYZ();
        if (upwards.Crossed(eye).Modulus() < 1e-6) // looked along it
            upwards = std::abs(eye.Y()) < 0.9 ? gp_XYZ(0, 1, 0) : gp_XYZ(0, 0, 1);
        right = upwards.Crossed(eye).Normalized();
        up = eye.Crossed(right);
    }
    gp_XYZ of(const gp_XYZ& vector) const { return {vector.Dot(right), vector.Dot(up), vector.Dot(eye)}; }
};

struct Box {
    gp_XYZ low{std::numeric_limits<double>::max(), std::numeric_limits<double>::max(), 0};
    gp_XYZ high{std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest(), 0};

    void add(const gp_XYZ& point)
    {
        for (const int axis : {1, 2}) {
            low.SetCoord(axis, std::min(low.Coord(axis), point.Coord(axis)));
            high.SetCoord(axis, std::max(high.Coord(axis), point.Coord(axis)));
        }
    }
};

/// From the axes' space to pixels.
struct Place {
    double scale;
    gp_XYZ middle;
    double x, y;

    Place(const Box& box, int width, int height)
        : middle((box.low + box.high) / 2)
        , x(width / 2.0)
        , y(height / 2.0)
    {
        const gp_XYZ size = box.high - box.low;
        const double room = 1.0 - 2 * border;
        const double least = 1e-9;
        scale = room * std::min(width / std::max(size.X(), least), height / std::max(size.Y(), least));
    }
    PictureCorner corner(const gp_XYZ& point, const gp_XYZ& normal) const
    {
        const gp_XYZ at = (point - middle) * scale;
        const auto single = [](double number) { return static_cast<float>(number); };
        return {single(x + at.X()), single(y - at.Y()), single(at.Z()),
            {single(normal.X()), single(normal.Y()), single(normal.Z())}};
    }
};

} // namespace

std::vector<std::uint8_t> shadedPixels(const Model& model, const PictureView& view, const std::filesystem::path& file)
{
    Remarks remarks; // of faces that are coarser than others, which a picture may well be
    const ModelTriangles triangles = trianglesOf(model, MeshQuality::Coarse, "a picture", file, remarks);
    const Axes axes(view);
    Box box;
    triangles.forEach([&](const TriangleSet& set, const std::vector<gp_XYZ>& points, const auto&) {
        for (const auto& triangle : set.triangles)
            for (const std::uint32_t corner : triangle)
                box.add(axes.of(points[corner]));
    });
    PixelGrid grid(view.width * oversampling, view.height * oversampling);
    const Place place(box, view.width * oversampling, view.height * oversampling);
    const auto seen = [&](const gp_XYZ& point) { return axes.of(point); };
    forEachLit(triangles, seen, place.scale, [&](const LitTriangle& lit) {
        const auto corner = [&](std::size_t index) { return place.corner(lit.points[index], lit.normals[index]); };
        grid.draw(corner(0), corner(1), corner(2), lit.color);
    });
    return grid.shaded(oversampling);
}

std::string shadedPicture(const Model& model, const PictureView& view, const std::filesystem::path& file)
{
    return pngOf(shadedPixels(model, view, file), view.width, view.height);
}

} // namespace zn::zentrel
