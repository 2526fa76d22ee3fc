#include "zentrel/formats/MeshGaps.h"
#include "tests/zentrel/Documents.h"
#include "zentrel/formats/Mesh.h"

#include <BRep_Tool.hxx>
#include <BRepPrimAPI_MakeCone.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>

using namespace zn::zentrel;
using namespace zn::zentrel::test;

namespace {

std::vector<TopoDS_Face> meshedFaces(const TopoDS_Shape& shape)
{
    EXPECT_EQ(mesh(shape, MeshQuality::Coarse).gaps, 0U);
    std::vector<TopoDS_Face> faces;
    for (TopExp_Explorer explorer(shape, TopAbs_FACE); explorer.More(); explorer.Next())
        faces.push_back(TopoDS::Face(explorer.Current()));
    return faces;
}

/// Without its n-th triangle; borders keep their nodes.
void dropTriangle(const TopoDS_Face& face, int dropped)
{
    TopLoc_Location location;
    const auto& triangles = BRep_Tool::Triangulation(face, location);
    Poly_Array1OfTriangle left(1, triangles->NbTriangles() - 1);
    for (int number = 1, to = 1; number <= triangles->NbTriangles(); ++number)
        if (number != dropped)
            left.SetValue(to++, triangles->Triangle(number));
    triangles->ResizeTriangles(left.Size(), false);
    for (int number = 1; number <= left.Size(); ++number)
        triangles->SetTriangle(number, left(number));
}

TEST(MeshGaps, ATriangleThatIsMissingIsSeenWhereverItWas)
{
    const TopoDS_Shape shapes[] = {box(10, 20, 30), BRepPrimAPI_MakeSphere(5).Shape(),
        BRepPrimAPI_MakeCone(5, 0, 10).Shape(), BRepPrimAPI_MakeTorus(10, 2).Shape()};
    for (const TopoDS_Shape& shape : shapes) {
        for (const TopoDS_Face& face : meshedFaces(shape)) {
            EXPECT_FALSE(hasGap(face));
            TopLoc_Location location;
            dropTriangle(face, BRep_Tool::Triangulation(face, location)->NbTriangles() / 2 + 1);
            EXPECT_TRUE(hasGap(face));
        }
    }
}

} // namespace
