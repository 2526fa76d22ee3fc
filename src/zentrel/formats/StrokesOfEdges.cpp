#include "zentrel/formats/StrokesOfEdges.h"

#include <BRep_Tool.hxx>
#include <BRepAdaptor_Curve.hxx>
#include <BRepLib.hxx>
#include <cmath>
#include <GCPnts_TangentialDeflection.hxx>
#include <nlohmann/json.hpp>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>

namespace zn::zentrel {

namespace {

using Json = nlohmann::json;

/// Steps of a curve turn by at most this angle (radians), whatever the tolerance.
constexpr double stepAngle = 0.2;

Point2 flat(const gp_Pnt& point) { return {point.X(), point.Y()}; }

std::optional<Arc> arcOf(const BRepAdaptor_Curve& curve)
{
    if (curve.GetType() != GeomAbs_Circle)
        return {};
    const gp_Circ circle = curve.Circle();
    const double tilt = circle.Axis().Direction().Z();
    if (std::abs(std::abs(tilt) - 1.0) > 1e-9)
        return {};
    Arc arc;
    arc.center = flat(circle.Location());
    arc.radius = circle.Radius();
    const gp_Pnt first = curve.Value(tilt > 0.0 ? curve.FirstParameter() : curve.LastParameter());
    const double angle = curve.LastParameter() - curve.FirstParameter();
    arc.start = std::atan2(first.Y() - arc.center[1], first.X() - arc.center[0]);
    arc.end = arc.start + angle;
    arc.full = std::abs(angle - 2.0 * M_PI) < 1e-9;
    return arc;
}

std::vector<Point2> polylineOf(const BRepAdaptor_Curve& curve, double tolerance)
{
    const gp_Pnt first = curve.Value(curve.FirstParameter());
    const gp_Pnt last = curve.Value(curve.LastParameter());
    if (curve.GetType() == GeomAbs_Line)
        return {flat(first), flat(last)};
    std::vector<Point2> points;
    const GCPnts_TangentialDeflection steps(curve, stepAngle, tolerance);
    for (int index = 1; index <= steps.NbPoints(); ++index)
        points.push_back(flat(steps.Value(index)));
    return points;
}

} // namespace

void appendEdges(const TopoDS_Shape& edges, LineKind kind, const std::optional<Color>& color, double tolerance,
    std::vector<Stroke>& strokes)
{
    if (edges.IsNull())
        return;
    // What the projection gives are curves on the plane; the adaptor wants curves in space.
    BRepLib::BuildCurves3d(edges);
    for (TopExp_Explorer explorer(edges, TopAbs_EDGE); explorer.More(); explorer.Next()) {
        const TopoDS_Edge& edge = TopoDS::Edge(explorer.Current());
        if (BRep_Tool::Degenerated(edge))
            continue;
        const BRepAdaptor_Curve curve(edge);
        Stroke stroke{kind, color, {}, arcOf(curve)};
        if (stroke.arc)
            stroke.points = {flat(curve.Value(curve.FirstParameter())), flat(curve.Value(curve.LastParameter()))};
        else
            stroke.points = polylineOf(curve, tolerance);
        strokes.push_back(std::move(stroke));
    }
}

std::string packStrokes(const std::vector<Stroke>& strokes)
{
    Json list = Json::array();
    for (const Stroke& stroke : strokes) {
        Json entry = {{"k", static_cast<int>(stroke.kind)}, {"p", stroke.points}};
        if (stroke.color)
            entry["c"] = {stroke.color->red, stroke.color->green, stroke.color->blue};
        if (stroke.arc)
            entry["a"] = {stroke.arc->center[0], stroke.arc->center[1], stroke.arc->radius, stroke.arc->start,
                stroke.arc->end, stroke.arc->full ? 1.0 : 0.0};
        list.push_back(std::move(entry));
    }
    std::string packet;
    Json::to_cbor(list, packet);
    return packet;
}

std::vector<Stroke> unpackStrokes(const std::string& packet)
{
    std::vector<Stroke> strokes;
    for (const Json& entry : Json::from_cbor(packet)) {
        Stroke& stroke = strokes.emplace_back();
        stroke.kind = static_cast<LineKind>(entry.at("k").get<int>());
        stroke.points = entry.at("p").get<std::vector<Point2>>();
        if (entry.contains("c")) {
            const auto color = entry.at("c").get<std::array<double, 3>>();
            stroke.color = Color{color[0], color[1], color[2]};
        }
        if (entry.contains("a")) {
            const auto arc = entry.at("a").get<std::array<double, 6>>();
            stroke.arc = Arc{{arc[0], arc[1]}, arc[2], arc[3], arc[4], arc[5] != 0.0};
        }
    }
    return strokes;
}

} // namespace zn::zentrel
