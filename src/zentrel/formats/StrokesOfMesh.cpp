#include "zentrel/formats/StrokesOfEdges.h"

#include <algorithm>
#include <BRep_Tool.hxx>
#include <cmath>
#include <map>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>

namespace zn::zentrel {

namespace {

/// Cosine of the angle between neighbours from which on their common edge counts as sharp: 25 degrees.
constexpr double sharpCosine = 0.906;

/// Faces meet at equal points, by which their triangles find each other.
using PointKey = std::array<double, 3>;
using EdgeKey = std::pair<PointKey, PointKey>;
using EdgeMap = std::map<EdgeKey, std::vector<gp_XYZ>>; // normals of the triangles beside it

PointKey keyOf(const gp_Pnt& point)
{
    constexpr double grid = 1e7; // what differs only by rounding is the same point
    return {
        std::round(point.X() * grid) / grid, std::round(point.Y() * grid) / grid, std::round(point.Z() * grid) / grid};
}

void addTriangle(const std::array<gp_Pnt, 3>& corners, EdgeMap& edges)
{
    gp_XYZ normal = (corners[1].XYZ() - corners[0].XYZ()) ^ (corners[2].XYZ() - corners[0].XYZ());
    const double length = normal.Modulus();
    if (!(length > 0.0))
        return;
    normal /= length;
    for (std::size_t side = 0; side < 3; ++side) {
        const PointKey from = keyOf(corners[side]);
        const PointKey to = keyOf(corners[(side + 1) % 3]);
        edges[std::minmax(from, to)].push_back(normal);
    }
}

void addFace(const TopoDS_Face& face, EdgeMap& edges)
{
    TopLoc_Location location;
    const Handle(Poly_Triangulation)& triangulation = BRep_Tool::Triangulation(face, location);
    if (triangulation.IsNull())
        return;
    const gp_Trsf placement = location.Transformation();
    for (int number = 1; number <= triangulation->NbTriangles(); ++number) {
        int a = 0;
        int b = 0;
        int c = 0;
        triangulation->Triangle(number).Get(a, b, c);
        if (face.Orientation() == TopAbs_REVERSED)
            std::swap(b, c);
        addTriangle({triangulation->Node(a).Transformed(placement), triangulation->Node(b).Transformed(placement),
                        triangulation->Node(c).Transformed(placement)},
            edges);
    }
}

bool isDrawn(const std::vector<gp_XYZ>& normals)
{
    if (normals.size() != 2)
        return true;
    const bool outline = (normals[0].Z() > 0.0) != (normals[1].Z() > 0.0);
    return outline || normals[0] * normals[1] < sharpCosine;
}

bool isSeen(const std::vector<gp_XYZ>& normals)
{
    constexpr double edgeOn = 1e-9;
    return normals.size() == 1
        || std::any_of(normals.begin(), normals.end(), [](const gp_XYZ& normal) { return normal.Z() > edgeOn; });
}

} // namespace

void appendTessellation(
    const TopoDS_Shape& shape, const std::optional<Color>& color, bool hiddenLines, std::vector<Stroke>& strokes)
{
    EdgeMap edges;
    for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next())
        addFace(TopoDS::Face(faces.Current()), edges);
    for (const auto& [edge, normals] : edges) {
        const LineKind kind = isSeen(normals) ? LineKind::Visible : LineKind::Hidden;
        if (!isDrawn(normals) || (kind == LineKind::Hidden && !hiddenLines))
            continue;
        const auto& [from, to] = edge;
        strokes.push_back({kind, color, {{from[0], from[1]}, {to[0], to[1]}}, {}});
    }
}

} // namespace zn::zentrel
