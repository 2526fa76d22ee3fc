#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/Content.h"
#include "zentrel/formats/Read.h"
#include "zentrel/formats/ReadInKernel.h"

#include <BRep_Builder.hxx>
#include <cmath>
#include <RWStl.hxx>
#include <TopoDS_Face.hxx>

namespace zn::zentrel {

namespace {

bool isFinite(const Poly_Triangulation& triangles)
{
    for (int node = 1; node <= triangles.NbNodes(); ++node) {
        const gp_Pnt point = triangles.Node(node);
        if (!std::isfinite(point.X() + point.Y() + point.Z()))
            return false;
    }
    return true;
}

/// One body of one face, which has triangles and no surface.
ForeignFile readHere(const std::filesystem::path& file, ReadWay)
{
    const Handle(Poly_Triangulation) triangles = RWStl::ReadFile(file.c_str());
    if (triangles.IsNull() || triangles->NbTriangles() == 0)
        throw DocumentError(ErrorKind::Damaged, "The file " + quoted(file) + " isn't well-formed STL data.");
    if (!isFinite(*triangles))
        throw DocumentError(ErrorKind::Damaged, "The file " + quoted(file) + " has points that are no numbers.");
    TopoDS_Face face;
    BRep_Builder().MakeFace(face, triangles);
    PartDocument part;
    PartConfiguration& configuration = part.configurations.emplace_back();
    configuration.name = u"Default";
    Body body;
    body.name = zn::toText(file.stem().string());
    body.shape = face;
    configuration.bodies.push_back(std::move(body));
    return {std::move(part), true};
}

} // namespace

Document readStl(const std::filesystem::path& file, Remarks* remarks)
{
    checkStlContent(file);
    return readInKernel(file, "stl 1", packed<readHere>, remarks);
}

} // namespace zn::zentrel
