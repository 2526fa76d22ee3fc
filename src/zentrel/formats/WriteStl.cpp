#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/Triangles.h"
#include "zentrel/formats/Write.h"
#include "zentrel/model/WholeFile.h"

#include <algorithm>
#include <cstring>
#include <fmt/format.h>
#include <iterator>
#include <limits>

namespace zn::zentrel {

namespace {

/// Where and how large the coordinates of the file are: what is added in mm, then what a mm is in the file's unit.
struct Scaling {
    gp_XYZ shift;
    double factor = 1.0;

    gp_XYZ operator()(const gp_XYZ& point) const { return (point + shift) * factor; }
};

/// The move that leaves no negative coordinate; along an axis that has none, no move.
gp_XYZ shiftToPositive(const ModelTriangles& triangles)
{
    gp_XYZ lowest(0.0, 0.0, 0.0);
    triangles.forEach([&](const TriangleSet&, const std::vector<gp_XYZ>& points, const auto&) {
        for (const gp_XYZ& point : points) {
            for (int axis = 1; axis <= 3; ++axis)
                lowest.SetCoord(axis, std::min(lowest.Coord(axis), point.Coord(axis)));
        }
    });
    return lowest.Reversed();
}

struct Facet {
    gp_XYZ normal;
    gp_XYZ corners[3];
};

Facet facetOf(const std::array<std::uint32_t, 3>& triangle, const std::vector<gp_XYZ>& points, const Scaling& scaling)
{
    Facet facet;
    for (std::size_t corner = 0; corner < 3; ++corner)
        facet.corners[corner] = scaling(points[triangle[corner]]);
    facet.normal = (facet.corners[1] - facet.corners[0]) ^ (facet.corners[2] - facet.corners[0]);
    const double length = facet.normal.Modulus();
    facet.normal = length > 0.0 ? facet.normal / length : gp_XYZ();
    return facet;
}

void appendFloats(std::string& bytes, const gp_XYZ& xyz)
{
    const float values[3] = {static_cast<float>(xyz.X()), static_cast<float>(xyz.Y()), static_cast<float>(xyz.Z())};
    char raw[sizeof values];
    std::memcpy(raw, values, sizeof values);
    bytes.append(raw, sizeof values);
}

void appendBinary(std::string& bytes, const Facet& facet)
{
    appendFloats(bytes, facet.normal);
    for (const gp_XYZ& corner : facet.corners)
        appendFloats(bytes, corner);
    bytes.append(2, '\0');
}

void appendText(std::string& text, const Facet& facet)
{
    auto out = std::back_inserter(text);
    fmt::format_to(
        out, "  facet normal {:e} {:e} {:e}\n    outer loop\n", facet.normal.X(), facet.normal.Y(), facet.normal.Z());
    for (const gp_XYZ& corner : facet.corners)
        fmt::format_to(out, "      vertex {:e} {:e} {:e}\n", corner.X(), corner.Y(), corner.Z());
    text += "    endloop\n  endfacet\n";
}

std::string binaryHead(std::size_t count, const std::filesystem::path& file)
{
    if (count > std::numeric_limits<std::uint32_t>::max())
        throw DocumentError(ErrorKind::Unsupported,
            "The file " + quoted(file) + " can't be written: the model has more triangles than STL can count.");
    // The header must not begin with "solid", by which readers know the text form.
    std::string bytes("binary STL");
    bytes.resize(80, ' ');
    const auto count32 = static_cast<std::uint32_t>(count);
    char raw[4];
    std::memcpy(raw, &count32, sizeof raw);
    return bytes.append(raw, sizeof raw);
}

/// A million triangles take 50 MB: no more than a block of them is in memory.
class StlWriter {
public:
    StlWriter(zn::AtomicFile& file, const StlOptions& options)
        : m_file(file)
        , m_options(options)
    {
    }

    void write(const ModelTriangles& triangles)
    {
        m_scaling.factor = 1.0 / millimetersOf(m_options.unit);
        if (!m_options.keepPosition)
            m_scaling.shift = shiftToPositive(triangles);
        m_block = m_options.binary ? binaryHead(triangles.count(), m_file.target()) : "solid model\n";
        triangles.forEach([&](const TriangleSet& set, const std::vector<gp_XYZ>& points, const auto&) {
            requirePlace(points, m_file.target());
            for (const auto& triangle : set.triangles)
                add(facetOf(triangle, points, m_scaling));
        });
        if (!m_options.binary)
            m_block += "endsolid model\n";
        m_file.write(m_block);
    }

private:
    void add(const Facet& facet)
    {
        constexpr std::size_t blockSize = 1 << 20;
        m_options.binary ? appendBinary(m_block, facet) : appendText(m_block, facet);
        if (m_block.size() < blockSize)
            return;
        m_file.write(m_block);
        m_block.clear();
    }

    zn::AtomicFile& m_file;
    const StlOptions& m_options;
    Scaling m_scaling;
    std::string m_block;
};

} // namespace

Remarks writeStl(const Model& model, const std::filesystem::path& file, const StlOptions& options)
{
    Remarks remarks;
    const ModelTriangles triangles = trianglesOf(model, options.quality, "STL", file, remarks);
    writeWhole(
        file, zn::AtomicFile::Sync::No, [&](zn::AtomicFile& target) { StlWriter(target, options).write(triangles); });
    return remarks;
}

} // namespace zn::zentrel
