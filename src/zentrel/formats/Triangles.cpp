#include "zentrel/formats/Triangles.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/model/Bounds.h"

#include <algorithm>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <iterator>
#include <limits>
#include <set>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopTools_IndexedMapOfShape.hxx>

namespace zn::zentrel {

namespace {

/// Meshes every distinct part once and counts the faces that failed. The size that a mesh goes by is that of all bodies
/// in one file, so that a file meshes alike alone and in an assembly, and however its parts stand on one another.
class Mesher {
public:
    explicit Mesher(MeshQuality quality)
        : m_quality(quality)
    {
    }

    void meshFile(const Model& model)
    {
        if (m_files.insert(&model).second)
            meshParts(model, diagonalOf(boundsOf(compoundInside(model))));
    }

    const Unmeshed& unmeshed() const { return m_unmeshed; }

private:
    static void addInside(const Model& model, const TopLoc_Location& place, TopoDS_Compound& all)
    {
        BRep_Builder builder;
        for (const Body& body : model.bodies)
            builder.Add(all, body.shape.shape().Moved(place));
        for (const Model::Child& child : model.children)
            if (child.isInside)
                addInside(*child.model, place * TopLoc_Location(child.placement), all);
    }

    static TopoDS_Compound compoundInside(const Model& model)
    {
        TopoDS_Compound all;
        BRep_Builder().MakeCompound(all);
        addInside(model, TopLoc_Location(), all);
        return all;
    }

    void meshParts(const Model& model, double diagonal)
    {
        if (!m_parts.insert(&model).second)
            return;
        TopoDS_Compound part;
        BRep_Builder builder;
        builder.MakeCompound(part);
        for (const Body& body : model.bodies)
            builder.Add(part, body.shape);
        if (!model.bodies.empty())
            m_unmeshed += mesh(part, m_quality, diagonal);
        for (const Model::Child& child : model.children)
            child.isInside ? meshParts(*child.model, diagonal) : meshFile(*child.model);
    }

    MeshQuality m_quality;
    Unmeshed m_unmeshed;
    std::set<const Model*> m_files;
    std::set<const Model*> m_parts;
};

void addFace(const TopoDS_Face& face, const gp_Trsf& placement, TriangleSet& set)
{
    TopLoc_Location location;
    const Handle(Poly_Triangulation)& triangulation = BRep_Tool::Triangulation(face, location);
    // A negligible one.
    if (triangulation.IsNull())
        return;
    const gp_Trsf transformation = placement * location.Transformation();
    const auto offset = static_cast<std::uint32_t>(set.points.size());
    set.points.reserve(set.points.size() + static_cast<std::size_t>(triangulation->NbNodes()));
    for (int node = 1; node <= triangulation->NbNodes(); ++node)
        set.points.push_back(triangulation->Node(node).Transformed(transformation).XYZ());
    const bool reversed = face.Orientation() == TopAbs_REVERSED;
    set.triangles.reserve(set.triangles.size() + static_cast<std::size_t>(triangulation->NbTriangles()));
    for (int number = 1; number <= triangulation->NbTriangles(); ++number) {
        int a = 0;
        int b = 0;
        int c = 0;
        triangulation->Triangle(number).Get(a, b, c);
        if (reversed)
            std::swap(b, c);
        const auto index = [&](int node) { return offset + static_cast<std::uint32_t>(node - 1); };
        set.triangles.push_back({index(a), index(b), index(c)});
    }
}

/// Whether the formats' numbers, of single precision, can tell where all points are.
bool hasPlace(const TriangleSet& set)
{
    constexpr double farthest = std::numeric_limits<float>::max() / 1000;
    return std::all_of(
        set.points.begin(), set.points.end(), [&](const gp_XYZ& point) { return point.Modulus() < farthest; });
}

bool hasFaces(const PlacedBody& placed) { return TopExp_Explorer(placed.body->shape, TopAbs_FACE).More(); }

} // namespace

void meshModel(
    const Model& model, MeshQuality quality, const char* format, const std::filesystem::path& file, Remarks& remarks)
{
    const std::vector<PlacedBody> bodies = placedBodies(model);
    if (std::none_of(bodies.begin(), bodies.end(), hasFaces))
        throw DocumentError(ErrorKind::Unsupported,
            std::string("The file ") + quoted(file) + " can't be written: the model has no faces, and " + format
                + " holds nothing else.");
    Mesher mesher(quality);
    mesher.meshFile(model);
    const Unmeshed& unmeshed = mesher.unmeshed();
    if (unmeshed.lost > 0)
        throw DocumentError(ErrorKind::Kernel,
            "The file " + quoted(file) + " can't be written: " + std::to_string(unmeshed.lost)
                + " faces of the model can't be divided into triangles.");
    const auto tell = [&](std::size_t faces, const char* what) {
        if (faces > 0)
            remarks.push_back("The file " + quoted(file) + " was written with "
                + (faces == 1 ? "1 face" : std::to_string(faces) + " faces") + what + ".");
    };
    tell(unmeshed.coarser, " at the coarse resolution only, since the kernel fails on a finer one");
    tell(unmeshed.negligible, " left out, each below a thousand-millionth of the surface, too small for a triangle");
}

std::vector<TriangleSet> trianglesOf(const PlacedBody& placed, const std::filesystem::path& file)
{
    const Body& body = *placed.body;
    std::vector<TriangleSet> sets;
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(body.shape, TopAbs_FACE, faces);
    for (int index = 1; index <= faces.Extent(); ++index) {
        const auto special = body.faceColors.find(index);
        const std::optional<Color> color = special == body.faceColors.end() ? placed.color : special->second;
        auto set
            = std::find_if(sets.begin(), sets.end(), [&](const TriangleSet& known) { return known.color == color; });
        if (set == sets.end())
            set = sets.insert(sets.end(), {body.name, color, {}, {}});
        addFace(TopoDS::Face(faces(index)), placed.placement, *set);
    }
    if (!std::all_of(sets.begin(), sets.end(), hasPlace))
        throw DocumentError(ErrorKind::Kernel,
            "The file " + quoted(file) + " can't be written: points of the model lie beyond all measure.");
    return sets;
}

std::vector<TriangleSet> trianglesOf(
    const Model& model, MeshQuality quality, const char* format, const std::filesystem::path& file, Remarks& remarks)
{
    meshModel(model, quality, format, file, remarks);
    std::vector<TriangleSet> sets;
    for (const PlacedBody& placed : placedBodies(model)) {
        std::vector<TriangleSet> own = trianglesOf(placed, file);
        std::move(own.begin(), own.end(), std::back_inserter(sets));
    }
    return sets;
}

} // namespace zn::zentrel
