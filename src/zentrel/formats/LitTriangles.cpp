#include "zentrel/formats/LitTriangles.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <fmt/format.h>

namespace zn::zentrel {

namespace {

/// What a body without a colour looks like.
constexpr Color plainColor = {0.72, 0.75, 0.80};

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

/// Appends numbers as little-endian bytes.
class Bytes {
public:
    explicit Bytes(std::string header)
        : m_bytes(std::move(header))
    {
    }
    void add(std::uint32_t number)
    {
        for (const unsigned shift : {0U, 8U, 16U, 24U})
            m_bytes.push_back(static_cast<char>(number >> shift & 255U));
    }
    void add(const gp_XYZ& vector)
    {
        for (const int axis : {1, 2, 3})
            add(std::bit_cast<std::uint32_t>(static_cast<float>(vector.Coord(axis))));
    }
    void addByte(unsigned byte) { m_bytes.push_back(static_cast<char>(byte)); }
    std::string take() { return std::move(m_bytes); }

private:
    std::string m_bytes;
};

std::string headerOf(std::size_t triangles)
{
    return fmt::format("ply\nformat binary_little_endian 1.0\nelement vertex {}\nproperty float x\nproperty float y\n"
                       "property float z\nproperty float nx\nproperty float ny\nproperty float nz\nproperty uchar red\n"
                       "property uchar green\nproperty uchar blue\nelement face {}\n"
                       "property list uchar int vertex_indices\nend_header\n",
        3 * triangles, triangles);
}

} // namespace

void forEachLit(const ModelTriangles& triangles, const std::function<gp_XYZ(const gp_XYZ&)>& placed, double scale,
    const std::function<void(const LitTriangle&)>& use)
{
    triangles.forEach([&](const TriangleSet& set, const std::vector<gp_XYZ>& points, const auto& ownColor) {
        std::vector<gp_XYZ> seen(points.size());
        std::transform(points.begin(), points.end(), seen.begin(), placed);
        const std::vector<gp_XYZ> normals = normalsOf(set, seen);
        const Color color = ownColor.value_or(plainColor);
        LitTriangle lit;
        lit.color = {static_cast<float>(color.red), static_cast<float>(color.green), static_cast<float>(color.blue)};
        for (const auto& triangle : set.triangles) {
            for (std::size_t i = 0; i < 3; ++i)
                lit.points[i] = seen[triangle[i]];
            const Facet facet(lit.points[0], lit.points[1], lit.points[2], scale);
            for (std::size_t i = 0; i < 3; ++i)
                lit.normals[i] = facet.at(normals[triangle[i]]);
            use(lit);
        }
    });
}

std::string plyOf(const Model& model, const std::filesystem::path& file)
{
    constexpr double pixels = 512; // as large as it is looked at about
    Remarks remarks;               // of faces that are coarser than others, which a look may well be
    const ModelTriangles triangles = trianglesOf(model, MeshQuality::Coarse, "a picture", file, remarks);
    double extent = 1e-9;
    triangles.forEach([&](const TriangleSet&, const std::vector<gp_XYZ>& points, const auto&) {
        for (const gp_XYZ& point : points)
            extent = std::max(extent, (point - points.front()).Modulus());
    });
    Bytes bytes(headerOf(triangles.count()));
    const auto inPlace = [](const gp_XYZ& point) { return point; };
    forEachLit(triangles, inPlace, pixels / extent, [&](const LitTriangle& lit) {
        for (std::size_t i = 0; i < 3; ++i) {
            bytes.add(lit.points[i]);
            bytes.add(lit.normals[i]);
            for (const float channel : lit.color)
                bytes.addByte(static_cast<unsigned>(std::lround(std::clamp(channel, 0.0F, 1.0F) * 255.0F)));
        }
    });
    for (std::uint32_t i = 0; i < triangles.count(); ++i) {
        bytes.addByte(3);
        for (std::uint32_t corner = 0; corner < 3; ++corner)
            bytes.add(3 * i + corner);
    }
    return bytes.take();
}

} // namespace zn::zentrel
