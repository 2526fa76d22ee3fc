#include "zentrel/formats/ShadedPicture.h"

#include "zentrel/formats/PixelGrid.h"
#include "zentrel/formats/Png.h"
#include "zentrel/formats/Triangles.h"

#include <algorithm>
#include <limits>

namespace zn::zentrel {

namespace {

constexpr int oversampling = 2;
/// Of the picture's side that the model fills.
constexpr double border = 0.03;
/// What a body without a colour looks like.
constexpr Color plainColor = {0.72, 0.75, 0.80};

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

gp_XYZ unit(const gp_XYZ& vector)
{
    const double length = vector.Modulus();
    return length > 0.0 ? vector / length : vector;
}

/// The mean of those of the triangles around each point.
std::vector<gp_XYZ> normalsOf(const TriangleSet& set, const std::vector<gp_XYZ>& points)
{
    std::vector<gp_XYZ> normals(points.size());
    for (const auto& [a, b, c] : set.triangles) {
        const gp_XYZ normal = (points[b] - points[a]).Crossed(points[c] - points[a]); // as long as twice the area
        for (const std::uint32_t corner : {a, b, c})
            normals[corner] += normal;
    }
    for (gp_XYZ& normal : normals)
        normal = unit(normal);
    return normals;
}

/// A triangle as far as it says how its corners look.
struct Facet {
    gp_XYZ normal;
    bool isThin; ///< of less than two pixels' height: its normal is hardly known

    Facet(const gp_XYZ& a, const gp_XYZ& b, const gp_XYZ& c, double scale)
    {
        const gp_XYZ across = (b - a).Crossed(c - a);
        const double longest = std::max({(b - a).Modulus(), (c - b).Modulus(), (a - c).Modulus()});
        normal = unit(across);
        isThin = across.Modulus() * scale < 2.0 * longest;
    }

    /// At a corner: the point's own normal where the surface is smooth there, the triangle's at a crease, as between
    /// the faces of a model whose triangles share their points.
    gp_XYZ at(const gp_XYZ& ofPoint) const
    {
        constexpr double smooth = 0.8; // cosine of 37 degrees
        return isThin || ofPoint.Dot(normal) > smooth ? ofPoint : normal;
    }
};

} // namespace

std::string shadedPicture(const Model& model, const PictureView& view, const std::filesystem::path& file)
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
    triangles.forEach([&](const TriangleSet& set, const std::vector<gp_XYZ>& points, const auto& color) {
        std::vector<gp_XYZ> seen(points.size());
        std::transform(points.begin(), points.end(), seen.begin(), [&](const gp_XYZ& point) { return axes.of(point); });
        const std::vector<gp_XYZ> normals = normalsOf(set, seen);
        for (const auto& [a, b, c] : set.triangles) {
            const Facet facet(seen[a], seen[b], seen[c], place.scale);
            const auto corner
                = [&](std::uint32_t index) { return place.corner(seen[index], facet.at(normals[index])); };
            grid.draw(corner(a), corner(b), corner(c), color.value_or(plainColor));
        }
    });
    return pngOf(grid.shaded(oversampling), view.width, view.height);
}

} // namespace zn::zentrel
