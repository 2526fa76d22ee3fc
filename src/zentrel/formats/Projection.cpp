#include "zentrel/formats/Projection.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/CafModel.h"
#include "zentrel/formats/Mesh.h"
#include "zentrel/formats/StrokesOfEdges.h"
#include "zentrel/kernel/KernelChild.h"

#include <algorithm>
#include <BRep_Tool.hxx>
#include <cmath>
#include <HLRAlgo_Projector.hxx>
#include <HLRBRep_Algo.hxx>
#include <HLRBRep_HLRToShape.hxx>
#include <HLRBRep_PolyAlgo.hxx>
#include <HLRBRep_PolyHLRToShape.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>

namespace zn::zentrel {

namespace {

/// The exact projection takes time with the square of the faces; beyond this the mesh is used at once.
constexpr std::size_t mostExactFaces = 2000;
constexpr std::chrono::seconds longestExact{20};

struct ProjectedBody {
    TopoDS_Shape shape;
    std::optional<Color> color;
};

/// What all projections of a view share.
struct Projection {
    std::vector<ProjectedBody> solid;  ///< bodies with surfaces
    std::vector<ProjectedBody> meshes; ///< bodies with a face that has only a tessellation
    std::vector<ProjectedBody> wires;  ///< bodies without: nothing hides behind them
    gp_Ax2 plane;
    double tolerance = 0.0;
    bool hiddenLines = true;
};

Projection projectionOf(const Model& model, const gp_Dir& direction, const gp_Dir& up)
{
    Projection projection;
    projection.plane = gp_Ax2(gp_Pnt(0, 0, 0), direction, up.Crossed(direction));
    for (const PlacedBody& placed : placedBodies(model)) {
        const ProjectedBody body{
            placed.body->shape.shape().Moved(TopLoc_Location(placed.placement)), placed.body->color};
        std::size_t faces = 0;
        std::size_t tessellated = 0;
        for (TopExp_Explorer explorer(body.shape, TopAbs_FACE); explorer.More(); explorer.Next()) {
            TopLoc_Location location;
            ++faces;
            tessellated += BRep_Tool::Surface(TopoDS::Face(explorer.Current()), location).IsNull();
        }
        auto& group = faces == 0 ? projection.wires : tessellated > 0 ? projection.meshes : projection.solid;
        group.push_back(body);
    }
    return projection;
}

/// Appends what either algorithm's result gives for one body.
template <class Result>
void appendBody(Result& result, const ProjectedBody& body, const Projection& projection, std::vector<Stroke>& strokes)
{
    const auto append = [&](const TopoDS_Shape& edges, LineKind kind) {
        appendEdges(edges, kind, body.color, projection.tolerance, strokes);
    };
    append(result.VCompound(body.shape), LineKind::Visible);
    append(result.OutLineVCompound(body.shape), LineKind::Visible);
    if (!projection.hiddenLines)
        return;
    append(result.HCompound(body.shape), LineKind::Hidden);
    append(result.OutLineHCompound(body.shape), LineKind::Hidden);
}

void projectExactly(const Projection& projection, std::vector<Stroke>& strokes)
{
    const Handle(HLRBRep_Algo) algorithm = new HLRBRep_Algo;
    for (const ProjectedBody& body : projection.solid)
        algorithm->Add(body.shape);
    algorithm->Projector(HLRAlgo_Projector(projection.plane));
    algorithm->Update();
    algorithm->Hide();
    HLRBRep_HLRToShape result(algorithm);
    for (const ProjectedBody& body : projection.solid)
        appendBody(result, body, projection, strokes);
}

void projectMesh(const Projection& projection, std::vector<Stroke>& strokes)
{
    const Handle(HLRBRep_PolyAlgo) algorithm = new HLRBRep_PolyAlgo;
    for (const ProjectedBody& body : projection.solid) {
        if (mesh(body.shape, MeshQuality::Fine).lost > 0)
            throw Standard_Failure("faces can't be divided into triangles");
        algorithm->Load(body.shape);
    }
    algorithm->Projector(HLRAlgo_Projector(projection.plane));
    algorithm->Update();
    HLRBRep_PolyHLRToShape result;
    result.Update(algorithm);
    for (const ProjectedBody& body : projection.solid)
        appendBody(result, body, projection, strokes);
}

/// The body with the projection plane turned into the XY plane.
TopoDS_Shape turned(const ProjectedBody& body, const Projection& projection)
{
    gp_Trsf toPlane;
    toPlane.SetTransformation(gp_Ax3(projection.plane));
    return body.shape.Moved(TopLoc_Location(toPlane));
}

void projectWires(const Projection& projection, std::vector<Stroke>& strokes)
{
    for (const ProjectedBody& body : projection.wires)
        appendEdges(turned(body, projection), LineKind::Visible, body.color, projection.tolerance, strokes);
    for (const ProjectedBody& body : projection.meshes)
        appendTessellation(turned(body, projection), body.color, projection.hiddenLines, strokes);
}

using Method = void (*)(const Projection& projection, std::vector<Stroke>& strokes);

/// What is asked for: of a model, not yet of its shapes.
struct Wanted {
    const Model& model;
    gp_Dir direction;
    gp_Dir up;
    double tolerance;
    bool hiddenLines;
    const std::filesystem::path& file;
};

bool hasPlace(const Stroke& stroke)
{
    return std::all_of(stroke.points.begin(), stroke.points.end(),
        [](const Point2& point) { return std::isfinite(point[0]) && std::isfinite(point[1]); });
}

std::vector<Stroke> strokesBy(Method method, const Wanted& wanted, std::chrono::seconds limit)
{
    return unpackStrokes(runInChild({"projecting a view of", wanted.file, limit}, [&] {
        Projection projection = projectionOf(wanted.model, wanted.direction, wanted.up);
        projection.tolerance = wanted.tolerance;
        projection.hiddenLines = wanted.hiddenLines;
        std::vector<Stroke> strokes;
        if (!projection.solid.empty())
            method(projection, strokes);
        // A projection without a line is a failure that the kernel didn't notice.
        if (!projection.solid.empty() && strokes.empty())
            throw Standard_Failure("nothing is seen");
        projectWires(projection, strokes);
        dropCoveredHidden(strokes, projection.tolerance);
        if (!std::all_of(strokes.begin(), strokes.end(), hasPlace))
            throw Standard_Failure("lines without a place");
        return packStrokes(strokes);
    }));
}

} // namespace

std::vector<Stroke> project(const Model& model, const gp_Dir& direction, const gp_Dir& up, double tolerance,
    bool hiddenLines, const std::filesystem::path& file)
{
    const Wanted wanted{model, direction, up, tolerance, hiddenLines, file};
    const std::size_t faces = countFaces(model);
    if (faces <= mostExactFaces) {
        try {
            return strokesBy(projectExactly, wanted, std::min(longestExact, computingLimit(0)));
        } catch (const DocumentError& error) {
            if (error.kind() != ErrorKind::Kernel)
                throw;
        }
    }
    return strokesBy(projectMesh, wanted, computingLimit(faces));
}

} // namespace zn::zentrel
