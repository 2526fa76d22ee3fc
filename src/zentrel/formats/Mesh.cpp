#include "zentrel/formats/Mesh.h"

#include "zentrel/model/Bounds.h"

#include <BRep_Tool.hxx>
#include <BRepMesh_IncrementalMesh.hxx>
#include <BRepTools.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>

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

std::size_t countUnmeshed(const TopoDS_Shape& shape)
{
    std::size_t unmeshed = 0;
    for (TopExp_Explorer explorer(shape, TopAbs_FACE); explorer.More(); explorer.Next()) {
        TopLoc_Location location;
        const auto& triangles = BRep_Tool::Triangulation(TopoDS::Face(explorer.Current()), location);
        unmeshed += triangles.IsNull() || triangles->NbTriangles() == 0;
    }
    return unmeshed;
}

} // namespace

IMeshTools_Parameters meshParameters(double diagonal, MeshQuality quality)
{
    const Resolution& resolution = quality == MeshQuality::Coarse ? coarse : fine;
    IMeshTools_Parameters parameters;
    parameters.Deflection = std::max(smallestDeflection, resolution.fraction * diagonal);
    parameters.Angle = resolution.angle;
    return parameters;
}

IMeshTools_Parameters meshParameters(const TopoDS_Shape& shape, MeshQuality quality)
{
    return meshParameters(diagonalOf(boundsOf(shape)), quality);
}

std::size_t mesh(const TopoDS_Shape& shape, IMeshTools_Parameters parameters)
{
    // A mesh left from before would be kept where it is finer, and the same export would differ.
    BRepTools::Clean(shape);
    // Narrow faces can be lost at a coarse resolution; a few finer ones usually save them.
    constexpr int attempts = 3;
    for (int attempt = 1;; ++attempt) {
        BRepMesh_IncrementalMesh(shape, parameters);
        const std::size_t unmeshed = countUnmeshed(shape);
        if (unmeshed == 0 || attempt == attempts)
            return unmeshed;
        parameters.Deflection /= 10.0;
    }
}

} // namespace zn::zentrel
