#include "zentrel/formats/Projection.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/CafModel.h"
#include "zentrel/formats/Extent.h"
#include "zentrel/formats/KeptProjections.h"
#include "zentrel/formats/Mesh.h"
#include "zentrel/formats/StrokesOfEdges.h"
#include "zentrel/kernel/KernelChild.h"
#include "zentrel/model/Bounds.h"

#include <algorithm>
#include <BRep_Tool.hxx>
#include <cmath>
#include <HLRAlgo_Projector.hxx>
#include <HLRBRep_Algo.hxx>
#include <HLRBRep_HLRToShape.hxx>
#include <HLRBRep_PolyAlgo.hxx>
#include <HLRBRep_PolyHLRToShape.hxx>
#include <iterator>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>

namespace zn::zentrel {

namespace {

/// The exact projection takes time with the square of the faces; beyond this the mesh is used at once.
constexpr std::size_t mostExactFaces = 2000;
constexpr std::chrono::seconds longestExact{20};

/// Of the model's diagonal: how exactly views are kept, so that paper of any size and most scales find them.
constexpr double keptDeviation = 1e-5;

/// Of a body's diagonal: what its strokes may stand out of the box around it.
constexpr double boxSlack = 0.01;

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
        const ProjectedBody body{placed.body->shape.shape().Moved(TopLoc_Location(placed.placement)), placed.color};
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

/// The body with the projection plane turned into the XY plane.
TopoDS_Shape turned(const ProjectedBody& body, const Projection& projection)
{
    gp_Trsf toPlane;
    toPlane.SetTransformation(gp_Ax3(projection.plane));
    return body.shape.Moved(TopLoc_Location(toPlane));
}

/// The kernel now and then makes lines that lie nowhere near the body, and one of them moves a view off the paper.
void requireInBox(const ProjectedBody& body, const Projection& projection, const Extent& found)
{
    const Bnd_Box box = boundsOf(turned(body, projection));
    if (!(diagonalOf(box) > 0.0))
        return;
    Extent extent;
    extent.add({box.CornerMin().X(), box.CornerMin().Y()});
    extent.add({box.CornerMax().X(), box.CornerMax().Y()});
    if (!extent.holds(found, boxSlack * diagonalOf(box) + projection.tolerance))
        throw Standard_Failure("lines beside the body");
}

/// Appends what either algorithm's result gives for one body.
template <class Result>
void appendBody(Result& result, const ProjectedBody& body, const Projection& projection, std::vector<Stroke>& strokes)
{
    std::vector<Stroke> own;
    const auto append = [&](const TopoDS_Shape& edges, LineKind kind) {
        appendEdges(edges, kind, body.color, projection.tolerance, own);
    };
    append(result.VCompound(body.shape), LineKind::Visible);
    append(result.OutLineVCompound(body.shape), LineKind::Visible);
    if (projection.hiddenLines) {
        append(result.HCompound(body.shape), LineKind::Hidden);
        append(result.OutLineHCompound(body.shape), LineKind::Hidden);
    }
    requireInBox(body, projection, extentOf(own));
    std::move(own.begin(), own.end(), std::back_inserter(strokes));
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
    double tolerance = 0.0;
    bool hiddenLines = false;
    const std::filesystem::path& file;
};

bool hasPlace(const Stroke& stroke)
{
    return std::all_of(stroke.points.begin(), stroke.points.end(),
        [](const Point2& point) { return std::isfinite(point[0]) && std::isfinite(point[1]); });
}

std::string packFine(const FineStrokes& fine)
{
    std::string packet(reinterpret_cast<const char*>(&fine.tolerance), sizeof fine.tolerance);
    return packet + packStrokes(fine.strokes);
}

FineStrokesRef unpackFine(const std::string& packet)
{
    auto fine = std::make_shared<FineStrokes>();
    packet.copy(reinterpret_cast<char*>(&fine->tolerance), sizeof fine->tolerance);
    fine->strokes = unpackStrokes(packet.substr(sizeof fine->tolerance));
    return fine;
}

FineStrokesRef strokesBy(Method method, const Wanted& wanted, std::chrono::seconds limit)
{
    return unpackFine(runInChild({"projecting a view of", wanted.file, limit}, [&] {
        Projection projection = projectionOf(wanted.model, wanted.direction, wanted.up);
        const double diagonal = diagonalOf(boundsOf(wanted.model));
        projection.tolerance = diagonal > 0.0 ? std::min(wanted.tolerance, keptDeviation * diagonal) : wanted.tolerance;
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
        return packFine({std::move(strokes), projection.tolerance});
    }));
}

FineStrokesRef projectFinely(const Wanted& wanted)
{
    const std::size_t faces = countFaces(wanted.model);
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

} // namespace

std::vector<Stroke> project(const Model& model, const gp_Dir& direction, const gp_Dir& up, double tolerance,
    bool hiddenLines, const std::filesystem::path& file)
{
    // One half for the projection, the other for what is left out of what is kept.
    const double half = tolerance / 2;
    const std::string key = viewKey(model, direction, up, hiddenLines);
    FineStrokesRef fine = keptProjection(key, half);
    if (!fine) {
        fine = projectFinely({model, direction, up, half, hiddenLines, file});
        keepProjection(key, fine);
    }
    std::vector<Stroke> strokes = fine->strokes;
    simplify(strokes, half);
    return strokes;
}

} // namespace zn::zentrel
