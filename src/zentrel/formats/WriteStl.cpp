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
gp_XYZ shiftToPositive(const std::vector<TriangleSet>& sets)
{
    gp_XYZ lowest(0.0, 0.0, 0.0);
    for (const TriangleSet& set : sets) {
        for (const gp_XYZ& point : set.points) {
            for (int axis = 1; axis <= 3; ++axis)
                lowest.SetCoord(axis, std::min(lowest.Coord(axis), point.Coord(axis)));
        }
    }
    return lowest.Reversed();
}

struct Facet {
    gp_XYZ normal;
    gp_XYZ corners[3];
};

template <class Use> void forEachFacet(const std::vector<TriangleSet>& sets, const Scaling& scaling, Use use)
{
    for (const TriangleSet& set : sets) {
        for (const auto& triangle : set.triangles) {
            Facet facet;
            for (std::size_t corner = 0; corner < 3; ++corner)
                facet.corners[corner] = scaling(set.points[triangle[corner]]);
            facet.normal = (facet.corners[1] - facet.corners[0]) ^ (facet.corners[2] - facet.corners[0]);
            const double length = facet.normal.Modulus();
            facet.normal = length > 0.0 ? facet.normal / length : gp_XYZ();
            use(facet);
        }
    }
}

void appendFloats(std::string& bytes, const gp_XYZ& xyz)
{
    const float values[3] = {static_cast<float>(xyz.X()), static_cast<float>(xyz.Y()), static_cast<float>(xyz.Z())};
    char raw[sizeof values];
    std::memcpy(raw, values, sizeof values);
    bytes.append(raw, sizeof values);
}

std::string binaryStl(const std::vector<TriangleSet>& sets, const Scaling& scaling, const std::filesystem::path& file)
{
    std::size_t count = 0;
    for (const TriangleSet& set : sets)
        count += set.triangles.size();
    if (count > std::numeric_limits<std::uint32_t>::max())
        throw DocumentError(ErrorKind::Unsupported,
            "The file " + quoted(file) + " can't be written: the model has more triangles than STL can count.");
    // The header must not begin with "solid", by which readers know the text form.
    std::string bytes("binary STL");
    bytes.resize(80, ' ');
    bytes.reserve(84 + 50 * count);
    const auto count32 = static_cast<std::uint32_t>(count);
    char raw[4];
    std::memcpy(raw, &count32, sizeof raw);
    bytes.append(raw, sizeof raw);
    forEachFacet(sets, scaling, [&](const Facet& facet) {
        appendFloats(bytes, facet.normal);
        for (const gp_XYZ& corner : facet.corners)
            appendFloats(bytes, corner);
        bytes.append(2, '\0');
    });
    return bytes;
}

std::string asciiStl(const std::vector<TriangleSet>& sets, const Scaling& scaling)
{
    std::string text = "solid model\n";
    auto out = std::back_inserter(text);
    forEachFacet(sets, scaling, [&](const Facet& facet) {
        fmt::format_to(out, "  facet normal {:e} {:e} {:e}\n    outer loop\n", facet.normal.X(), facet.normal.Y(),
            facet.normal.Z());
        for (const gp_XYZ& corner : facet.corners)
            fmt::format_to(out, "      vertex {:e} {:e} {:e}\n", corner.X(), corner.Y(), corner.Z());
        text += "    endloop\n  endfacet\n";
    });
    return text + "endsolid model\n";
}

std::string stlBytes(const Model& model, const std::filesystem::path& file, const StlOptions& options, Remarks& remarks)
{
    const std::vector<TriangleSet> sets = trianglesOf(model, options.quality, "STL", file, remarks);
    Scaling scaling;
    scaling.factor = 1.0 / millimetersOf(options.unit);
    if (!options.keepPosition)
        scaling.shift = shiftToPositive(sets);
    return options.binary ? binaryStl(sets, scaling, file) : asciiStl(sets, scaling);
}

} // namespace

Remarks writeStl(const Model& model, const std::filesystem::path& file, const StlOptions& options)
{
    Remarks remarks;
    writeWhole(file, stlBytes(model, file, options, remarks));
    return remarks;
}

} // namespace zn::zentrel
