#include "zentrel/formats/MeshGaps.h"

#include <algorithm>
#include <BRep_Tool.hxx>
#include <cstdint>
#include <Poly_PolygonOnTriangulation.hxx>
#include <Poly_Triangulation.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <utility>
#include <vector>

namespace zn::zentrel {

namespace {

/// Two nodes, the lower one first.
using Side = std::pair<std::int32_t, std::int32_t>;

Side sideOf(int one, int other) { return std::minmax({one, other}); }

/// Sides that only one triangle has.
std::vector<Side> openSides(const Poly_Triangulation& triangles)
{
    std::vector<Side> sides;
    sides.reserve(3 * static_cast<std::size_t>(triangles.NbTriangles()));
    for (int number = 1; number <= triangles.NbTriangles(); ++number) {
        int a = 0;
        int b = 0;
        int c = 0;
        triangles.Triangle(number).Get(a, b, c);
        for (const Side& side : {sideOf(a, b), sideOf(b, c), sideOf(c, a)})
            sides.push_back(side);
    }
    std::sort(sides.begin(), sides.end());
    std::vector<Side> open;
    for (auto side = sides.begin(); side != sides.end();) {
        const auto next = std::find_if(side, sides.end(), [&](const Side& other) { return other != *side; });
        if (next - side == 1)
            open.push_back(*side);
        side = next;
    }
    return open;
}

/// Where the face may end: along its edges.
std::vector<Side> borderSides(const TopoDS_Face& face, const Handle(Poly_Triangulation) & triangles)
{
    std::vector<Side> sides;
    for (TopExp_Explorer edges(face, TopAbs_EDGE); edges.More(); edges.Next()) {
        TopLoc_Location location;
        BRep_Tool::Triangulation(face, location);
        const auto& border = BRep_Tool::PolygonOnTriangulation(TopoDS::Edge(edges.Current()), triangles, location);
        for (int node = 2; !border.IsNull() && node <= border->NbNodes(); ++node)
            sides.push_back(sideOf(border->Node(node - 1), border->Node(node)));
    }
    std::sort(sides.begin(), sides.end());
    return sides;
}

} // namespace

bool hasGap(const TopoDS_Face& face)
{
    TopLoc_Location location;
    const auto& triangles = BRep_Tool::Triangulation(face, location);
    if (triangles.IsNull())
        return false;
    const std::vector<Side> border = borderSides(face, triangles);
    const auto isOfNoLength = [&](const Side& side) {
        return triangles->Node(side.first).IsEqual(triangles->Node(side.second), gp::Resolution());
    };
    const std::vector<Side> open = openSides(*triangles);
    return std::any_of(open.begin(), open.end(), [&](const Side& side) {
        return !std::binary_search(border.begin(), border.end(), side) && !isOfNoLength(side);
    });
}

} // namespace zn::zentrel
