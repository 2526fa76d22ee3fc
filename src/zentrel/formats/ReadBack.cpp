#include "zentrel/formats/ReadBack.h"

#include "platform/FileDescriptor.h"
#include "zentrel/formats/CafModel.h"
#include "zentrel/model/Bounds.h"

#include <algorithm>
#include <BRepCheck_Analyzer.hxx>
#include <BRepGProp.hxx>
#include <cmath>
#include <fmt/format.h>
#include <GProp_GProps.hxx>
#include <IGESControl_Reader.hxx>
#include <map>
#include <set>
#include <ShapeAnalysis_ShapeTolerance.hxx>
#include <sstream>
#include <STEPControl_Reader.hxx>
#include <sys/mman.h>
#include <TopExp_Explorer.hxx>

namespace zn::zentrel {

namespace {

/// Of the model's diagonal.
constexpr double doubtfulTolerance = 1e-3;
/// What volume and surface may differ by, as a part of them.
constexpr double measureSlack = 1e-4;

struct Measures {
    double volume = 0.0;
    double area = 0.0;
    int solids = 0;
};

Measures measuresOf(const TopoDS_Shape& shape)
{
    GProp_GProps area;
    BRepGProp::SurfaceProperties(shape, area);
    Measures measures{.area = area.Mass()};
    for (TopExp_Explorer solids(shape, TopAbs_SOLID); solids.More(); solids.Next()) {
        GProp_GProps volume;
        BRepGProp::VolumeProperties(solids.Current(), volume);
        measures.volume += volume.Mass();
        ++measures.solids;
    }
    return measures;
}

/// Readers turn a body that is inside out.
bool isNear(double one, double other)
{
    return std::abs(std::abs(one) - std::abs(other)) <= measureSlack * std::abs(one);
}

std::size_t placedFaces(const TopoDS_Shape& shape)
{
    std::size_t faces = 0;
    for (TopExp_Explorer explorer(shape, TopAbs_FACE); explorer.More(); explorer.Next())
        ++faces;
    return faces;
}

/// The kernel's check of geometry and topology, which takes about as long as meshing. Each body is asked once, however
/// often it is placed.
bool areSound(const std::vector<PlacedBody>& bodies)
{
    std::set<const Body*> known;
    return std::all_of(bodies.begin(), bodies.end(), [&](const PlacedBody& placed) {
        return !known.insert(placed.body).second || BRepCheck_Analyzer(placed.body->shape).IsValid();
    });
}

/// Around the boxes of the bodies, each turned as its body is: at most twice as long as the model's own diagonal.
double roughDiagonal(const std::vector<PlacedBody>& bodies)
{
    std::map<const Body*, Bnd_Box> boxes;
    Bnd_Box all;
    for (const PlacedBody& placed : bodies) {
        auto box = boxes.find(placed.body);
        if (box == boxes.end())
            box = boxes.emplace(placed.body, boundsOf(placed.body->shape)).first;
        all.Add(box->second.Transformed(placed.placement));
    }
    return diagonalOf(all);
}

bool isLoose(const Body& body, double mostTolerance)
{
    return ShapeAnalysis_ShapeTolerance().Tolerance(body.shape, 1) > mostTolerance;
}

/// Trimmed surfaces of IGES enclose nothing that could be measured.
std::string faultOfLoaded(XSControl_Reader& reader, const Model& model, bool needsSolids)
{
    reader.TransferRoots();
    const TopoDS_Shape found = reader.OneShape();
    const TopoDS_Shape wanted = compoundOf(model);
    if (found.IsNull() || placedFaces(found) < placedFaces(wanted))
        return fmt::format("{} of {} faces", found.IsNull() ? 0 : placedFaces(found), placedFaces(wanted));
    const Measures is = measuresOf(found);
    const Measures shall = measuresOf(wanted);
    if ((needsSolids || is.solids > 0) && !isNear(shall.volume, is.volume))
        return fmt::format("a volume of {:.6g} mm^3 in place of {:.6g}", is.volume, shall.volume);
    if (!isNear(shall.area, is.area))
        return fmt::format("a surface of {:.6g} mm^2 in place of {:.6g}", is.area, shall.area);
    return !BRepCheck_Analyzer(found).IsValid() && areSound(placedBodies(model)) ? "faults that the model doesn't have"
                                                                                 : "";
}

} // namespace

bool isDoubtful(const Model& model)
{
    const auto bodies = placedBodies(model);
    const double mostTolerance = doubtfulTolerance * roughDiagonal(bodies);
    return std::any_of(bodies.begin(), bodies.end(), [&](const PlacedBody& placed) {
        return isLoose(*placed.body, mostTolerance);
    }) || !areSound(bodies);
}

std::string faultOfStep(const std::string& text, const Model& model)
{
    std::istringstream stream(text);
    STEPControl_Reader reader;
    return reader.ReadStream("", stream) == IFSelect_RetDone ? faultOfLoaded(reader, model, true) : "no data";
}

std::string faultOfIges(const std::string& text, const Model& model)
{
    // The kernel reads IGES by a file's name alone, and its processes write no files.
    const zn::FileDescriptor memory(memfd_create("iges", MFD_CLOEXEC));
    IGESControl_Reader reader;
    const std::string path = "/proc/self/fd/" + std::to_string(memory.number());
    return memory && memory.writeAll(text) && reader.ReadFile(path.c_str()) == IFSelect_RetDone
        ? faultOfLoaded(reader, model, false)
        : "no data";
}

} // namespace zn::zentrel
