#include "zentrel/formats/Mesh.h"

#include "zentrel/formats/MeshGaps.h"
#include "zentrel/model/Bounds.h"

#include <algorithm>
#include <BRep_Tool.hxx>
#include <BRepGProp.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepTools.hxx>
#include <cmath>
#include <GProp_GProps.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <vector>

namespace zn::zentrel {

namespace {

struct Resolution {
    double fraction; // of the diagonal
    double angle;    // radians
};

constexpr Resolution coarse = {1.0 / 1000.0, 0.5235987755982988};
constexpr Resolution fine = {1.0 / 5000.0, 0.17453292519943295};

/// The kernel's smallest sensible deflection; a body that shrinks to a point gets it.
constexpr double smallestDeflection = 1e-7;

/// Of the whole area.
constexpr double negligibleArea = 1e-9;

/// A face without triangles, in its place.
bool isUnmeshed(const TopoDS_Face& face)
{
    TopLoc_Location location;
    const auto& triangles = BRep_Tool::Triangulation(face, location);
    return triangles.IsNull() || triangles->NbTriangles() == 0;
}

using IsFace = bool (*)(const TopoDS_Face& face);

std::vector<TopoDS_Face> facesThat(const TopoDS_Shape& shape, IsFace isWanted)
{
    std::vector<TopoDS_Face> faces;
    for (TopExp_Explorer explorer(shape, TopAbs_FACE); explorer.More(); explorer.Next()) {
        const TopoDS_Face& face = TopoDS::Face(explorer.Current());
        if (isWanted(face))
            faces.push_back(face);
    }
    return faces;
}

double trianglesArea(const TopoDS_Shape& shape)
{
    double area = 0.0;
    for (TopExp_Explorer explorer(shape, TopAbs_FACE); explorer.More(); explorer.Next()) {
        TopLoc_Location location;
        const auto& triangles = BRep_Tool::Triangulation(TopoDS::Face(explorer.Current()), location);
        for (int number = 1; !triangles.IsNull() && number <= triangles->NbTriangles(); ++number) {
            int a = 0;
            int b = 0;
            int c = 0;
            triangles->Triangle(number).Get(a, b, c);
            const gp_XYZ corner = triangles->Node(a).XYZ();
            area += (triangles->Node(b).XYZ() - corner).Crossed(triangles->Node(c).XYZ() - corner).Modulus() / 2;
        }
    }
    return area;
}

double areaOf(const TopoDS_Face& face)
{
    GProp_GProps properties;
    BRepGProp::SurfaceProperties(face, properties);
    return std::abs(properties.Mass());
}

using FacesOfEdges = TopTools_IndexedDataMapOfShapeListOfShape;

/// Takes the triangles off the faces and off those beside them, whose common borders must get other points.
void clearAround(const std::vector<TopoDS_Face>& faces, const FacesOfEdges& facesOfEdges)
{
    for (const TopoDS_Face& face : faces) {
        for (TopExp_Explorer edges(face, TopAbs_EDGE); edges.More(); edges.Next()) {
            for (const TopoDS_Shape& neighbour : facesOfEdges.FindFromKey(edges.Current()))
                BRepTools::Clean(neighbour);
        }
    }
}

/// Whatever is asked next is no finer than what a face has: the kernel keeps its triangles and the points on its
/// borders, to which the faces beside it are fitted.
void keepTriangles(const TopoDS_Shape& shape)
{
    for (TopExp_Explorer faces(shape, TopAbs_FACE); faces.More(); faces.Next()) {
        TopLoc_Location location;
        const auto& triangles = BRep_Tool::Triangulation(TopoDS::Face(faces.Current()), location);
        if (triangles.IsNull() || triangles->NbTriangles() == 0)
            continue;
        triangles->Deflection(0.0);
        for (TopExp_Explorer edges(faces.Current(), TopAbs_EDGE); edges.More(); edges.Next()) {
            const auto& border = BRep_Tool::PolygonOnTriangulation(TopoDS::Edge(edges.Current()), triangles, location);
            if (!border.IsNull())
                border->Deflection(0.0);
        }
    }
}

IMeshTools_Parameters parametersOf(double diagonal, const Resolution& resolution)
{
    IMeshTools_Parameters parameters;
    parameters.Deflection = std::max(smallestDeflection, resolution.fraction * diagonal);
    parameters.Angle = resolution.angle;
    return parameters;
}

const Resolution& resolutionOf(MeshQuality quality) { return quality == MeshQuality::Coarse ? coarse : fine; }

/// What is tried where a face was lost or has gaps: the kernel fails on a narrow face at one angle and not at a
/// slightly different one.
std::vector<Resolution> otherAngles(const Resolution& first)
{
    return {
        {first.fraction, first.angle * 1.15}, {first.fraction, first.angle * 0.8}, {first.fraction, first.angle * 0.5}};
}

/// Multiplies the triangles of the faces beside it, too.
std::vector<Resolution> finer(const Resolution& first)
{
    return {{first.fraction / 10, first.angle}, {first.fraction / 100, first.angle}};
}

/// Below this, threads take longer to wake up than to mesh their faces.
constexpr int fewFaces = 100;

bool hasManyFaces(const TopoDS_Shape& shape)
{
    int faces = 0;
    for (TopExp_Explorer explorer(shape, TopAbs_FACE); explorer.More() && faces <= fewFaces; explorer.Next())
        ++faces;
    return faces > fewFaces;
}

/// Meshes a shape once and then the faces that were lost or have gaps.
class Mesher {
public:
    Mesher(const TopoDS_Shape& shape, double diagonal, const Resolution& first)
        : m_shape(shape)
        , m_diagonal(diagonal)
    {
        // A mesh left from before would be kept where it is finer, and the same export would differ.
        BRepTools::Clean(shape);
        IMeshTools_Parameters parameters = parametersOf(diagonal, first);
        // The triangles are the same, each face's from one thread.
        parameters.InParallel = hasManyFaces(shape);
        const BRepMesh_IncrementalMesh work(shape, parameters);
        lookForFaults();
        if (isWhole())
            return;
        m_smallest = negligibleArea * trianglesArea(shape);
        sortOut();
        if (!isWhole())
            TopExp::MapShapesAndAncestors(shape, TopAbs_EDGE, TopAbs_FACE, m_facesOfEdges);
    }

    const Unmeshed& result() const { return m_result; }
    /// Those that were lost before and aren't any more have coarse triangles.
    void countCoarser(std::size_t lostBefore) { m_result.coarser = lostBefore - std::min(lostBefore, m_result.lost); }

    /// Until no face is lost, at the price of gaps.
    void retry(const std::vector<Resolution>& resolutions)
    {
        for (const Resolution& resolution : resolutions) {
            if (m_lost.empty())
                break;
            meshAgain(m_lost, resolution);
        }
    }

    /// Until no face has gaps and none is lost.
    void retryGaps(const std::vector<Resolution>& resolutions)
    {
        for (const Resolution& resolution : resolutions) {
            if (isWhole())
                break;
            std::vector<TopoDS_Face> faces = m_withGaps;
            faces.insert(faces.end(), m_lost.begin(), m_lost.end());
            meshAgain(faces, resolution);
        }
    }

private:
    bool isWhole() const { return m_lost.empty() && m_withGaps.empty(); }

    void meshAgain(const std::vector<TopoDS_Face>& faces, const Resolution& resolution)
    {
        clearAround(faces, m_facesOfEdges);
        keepTriangles(m_shape);
        const BRepMesh_IncrementalMesh work(m_shape, parametersOf(m_diagonal, resolution));
        lookForFaults();
        sortOut();
    }

    void lookForFaults()
    {
        m_lost = facesThat(m_shape, isUnmeshed);
        m_withGaps = facesThat(m_shape, hasGap);
    }

    void sortOut()
    {
        m_result.gaps = m_withGaps.size();
        m_result.negligible = std::erase_if(m_lost, [&](const TopoDS_Face& face) { return areaOf(face) < m_smallest; });
        m_result.lost = m_lost.size();
    }

    TopoDS_Shape m_shape;
    double m_diagonal;
    std::vector<TopoDS_Face> m_lost;
    std::vector<TopoDS_Face> m_withGaps;
    FacesOfEdges m_facesOfEdges;
    double m_smallest = 0.0;
    Unmeshed m_result;
};

/// All that helps against lost faces.
Unmeshed meshLost(Mesher& mesher, MeshQuality quality)
{
    const Resolution& first = resolutionOf(quality);
    mesher.retry(otherAngles(first));
    const std::size_t before = mesher.result().lost;
    if (quality != MeshQuality::Coarse)
        mesher.retry(otherAngles(coarse));
    mesher.countCoarser(before);
    mesher.retry(finer(first));
    return mesher.result();
}

} // namespace

Unmeshed& Unmeshed::operator+=(const Unmeshed& other)
{
    lost += other.lost;
    coarser += other.coarser;
    negligible += other.negligible;
    gaps += other.gaps;
    return *this;
}

IMeshTools_Parameters meshParameters(const TopoDS_Shape& shape, MeshQuality quality)
{
    return parametersOf(diagonalOf(boundsOf(shape)), resolutionOf(quality));
}

Unmeshed mesh(const TopoDS_Shape& shape, MeshQuality quality)
{
    return mesh(shape, quality, diagonalOf(boundsOf(shape)));
}

Unmeshed mesh(const TopoDS_Shape& shape, MeshQuality quality, double diagonal)
{
    Mesher mesher(shape, diagonal, resolutionOf(quality));
    const Unmeshed first = meshLost(mesher, quality);
    if (first.lost > 0 || first.gaps == 0)
        return first;
    mesher.retryGaps(otherAngles(resolutionOf(quality)));
    if (mesher.result().lost == 0 && mesher.result().gaps < first.gaps)
        return mesher.result();
    Mesher again(shape, diagonal, resolutionOf(quality));
    return meshLost(again, quality);
}

} // namespace zn::zentrel
