#include "zentrel/formats/PartMesh.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/CafModel.h"
#include "zentrel/kernel/KernelCache.h"
#include "zentrel/model/Bounds.h"
#include "zentrel/model/Packets.h"

#include <algorithm>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <cstring>
#include <limits>
#include <set>
#include <TopExp.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Compound.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <type_traits>

namespace zn::zentrel {

namespace {

void addFace(const TopoDS_Face& face, TriangleSet& set)
{
    TopLoc_Location location;
    const Handle(Poly_Triangulation)& triangulation = BRep_Tool::Triangulation(face, location);
    if (triangulation.IsNull())
        return; // too small for anybody to see
    const gp_Trsf transformation = location.Transformation();
    const auto offset = static_cast<std::uint32_t>(set.points.size());
    for (int node = 1; node <= triangulation->NbNodes(); ++node)
        set.points.push_back(triangulation->Node(node).Transformed(transformation).XYZ());
    const bool reversed = face.Orientation() == TopAbs_REVERSED;
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

void addBody(const Body& body, PartMesh& mesh)
{
    const std::size_t first = mesh.size();
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(body.shape, TopAbs_FACE, faces);
    for (int index = 1; index <= faces.Extent(); ++index) {
        const auto special = body.faceColors.find(index);
        const std::optional<Color> color = special == body.faceColors.end() ? body.color : special->second;
        auto set = std::find_if(mesh.begin() + static_cast<std::ptrdiff_t>(first), mesh.end(),
            [&](const TriangleSet& known) { return known.color == color; });
        if (set == mesh.end())
            set = mesh.insert(mesh.end(), {body.name, color, {}, {}});
        addFace(TopoDS::Face(faces(index)), *set);
    }
}

/// The distinct models in one file, those above before those below.
void collectInside(const Model& model, std::set<const Model*>& known, std::vector<const Model*>& models)
{
    if (!known.insert(&model).second)
        return;
    models.push_back(&model);
    for (const Model::Child& child : model.children)
        if (child.isInside)
            collectInside(*child.model, known, models);
}

std::vector<const Model*> modelsInside(const Model& model)
{
    std::set<const Model*> known;
    std::vector<const Model*> models;
    collectInside(model, known, models);
    return models;
}

/// The meshes of a file's models, in the order of `modelsInside`; none if a face is lost.
struct FileMesh {
    Unmeshed unmeshed;
    std::vector<PartMesh> parts;
};

FileMesh meshHere(const Model& model, MeshQuality quality)
{
    FileMesh result;
    const double diagonal = diagonalOf(boundsOf(model));
    const std::vector<const Model*> models = modelsInside(model);
    // All at once, so that the faces of many small parts are shared out among the machine's cores, too.
    TopoDS_Compound compound;
    BRep_Builder builder;
    builder.MakeCompound(compound);
    for (const Model* part : models)
        for (const Body& body : part->bodies)
            builder.Add(compound, body.shape);
    result.unmeshed = mesh(compound, quality, diagonal);
    for (const Model* part : models) {
        if (result.unmeshed.lost > 0)
            break;
        PartMesh& sets = result.parts.emplace_back();
        for (const Body& body : part->bodies)
            addBody(body, sets);
    }
    return result;
}

/// For the way between the processes of this program and for the cache, whose name holds the program's build: values
/// as they lie in memory.
class Packer {
public:
    template <class Value> void put(const Value& value)
    {
        static_assert(std::is_trivially_copyable_v<Value>);
        m_bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    template <class Range> void putAll(const Range& range)
    {
        using Value = typename Range::value_type;
        static_assert(std::is_trivially_copyable_v<Value>);
        put(range.size());
        m_bytes.append(reinterpret_cast<const char*>(range.data()), range.size() * sizeof(Value));
    }
    std::string take() { return std::move(m_bytes); }

private:
    std::string m_bytes;
};

class Unpacker {
public:
    explicit Unpacker(std::string_view bytes)
        : m_bytes(bytes)
    {
    }
    template <class Value> void get(Value& value)
    {
        std::memcpy(&value, m_bytes.data(), sizeof value);
        m_bytes.remove_prefix(sizeof value);
    }
    template <class Range> void getAll(Range& range)
    {
        std::size_t size = 0;
        get(size);
        range.resize(size);
        const std::size_t bytes = size * sizeof(typename Range::value_type);
        if (bytes > 0)
            std::memcpy(static_cast<void*>(range.data()), m_bytes.data(), bytes);
        m_bytes.remove_prefix(bytes);
    }

private:
    std::string_view m_bytes;
};

std::string packed(const FileMesh& mesh)
{
    Packer packer;
    packer.put(mesh.unmeshed);
    packer.put(mesh.parts.size());
    for (const PartMesh& part : mesh.parts) {
        packer.put(part.size());
        for (const TriangleSet& set : part) {
            packer.putAll(set.name);
            packer.put(set.color);
            packer.putAll(set.points);
            packer.putAll(set.triangles);
        }
    }
    return packer.take();
}

FileMesh unpacked(std::string_view bytes)
{
    Unpacker unpacker(bytes);
    FileMesh mesh;
    std::size_t count = 0;
    unpacker.get(mesh.unmeshed);
    unpacker.get(count);
    mesh.parts.resize(count);
    for (PartMesh& part : mesh.parts) {
        unpacker.get(count);
        part.resize(count);
        for (TriangleSet& set : part) {
            unpacker.getAll(set.name);
            unpacker.get(set.color);
            unpacker.getAll(set.points);
            unpacker.getAll(set.triangles);
        }
    }
    return mesh;
}

/// The request is the quality, then the model.
std::string answerMesh(std::string_view request)
{
    MeshQuality quality{};
    std::memcpy(&quality, request.data(), sizeof quality);
    return packed(meshHere(*unpackModel(request.substr(sizeof quality)), quality));
}

FileMesh meshOfFile(const Model& inside, MeshQuality quality, const std::filesystem::path& file)
{
    std::string request(reinterpret_cast<const char*>(&quality), sizeof quality);
    request += packModel(inside);
    return unpacked(keptResult(kernelResultName("mesh", {request}), [&] {
        const KernelTask task{"meshing the model for", file, computingLimit(countFaces(inside))};
        MadeResult made{askKernelOrChild(task, answerMesh, request)};
        made.mayBeKept = unpacked(made.bytes).unmeshed.lost == 0;
        return made;
    }));
}

class Mesher {
public:
    Mesher(MeshQuality quality, const std::filesystem::path& file)
        : m_quality(quality)
        , m_file(file)
    {
    }

    void add(const Model& model)
    {
        if (meshes.contains(&model))
            return;
        // Only an assembly itself has components in other files; what stands inside it has none.
        Model inside = model;
        std::erase_if(inside.children, [](const Model::Child& child) { return !child.isInside; });
        std::vector<const Model*> models = modelsInside(inside);
        models.front() = &model;
        FileMesh mesh = meshOfFile(inside, m_quality, m_file);
        unmeshed += mesh.unmeshed;
        mesh.parts.resize(models.size());
        for (std::size_t index = 0; index < models.size(); ++index)
            meshes.emplace(models[index], std::move(mesh.parts[index]));
        for (const Model::Child& child : model.children)
            if (!child.isInside)
                add(*child.model);
    }

    PartMeshes meshes;
    Unmeshed unmeshed;

private:
    MeshQuality m_quality;
    const std::filesystem::path& m_file;
};

} // namespace

PartMeshes meshesOf(
    const Model& model, MeshQuality quality, const char* format, const std::filesystem::path& file, Remarks& remarks)
{
    if (countFaces(model) == 0)
        throw DocumentError(ErrorKind::Unsupported,
            std::string("The file ") + quoted(file) + " can't be written: the model has no faces, and " + format
                + " holds nothing else.");
    Mesher mesher(quality, file);
    mesher.add(model);
    const Unmeshed& unmeshed = mesher.unmeshed;
    if (unmeshed.lost > 0)
        throw DocumentError(ErrorKind::Kernel,
            "The file " + quoted(file) + " can't be written: " + std::to_string(unmeshed.lost)
                + " faces of the model can't be divided into triangles.");
    const auto tell = [&](std::size_t faces, const char* what) {
        if (faces > 0)
            remarks.push_back("The file " + quoted(file) + " was written with "
                + (faces == 1 ? "1 face" : std::to_string(faces) + " faces") + what + ".");
    };
    tell(unmeshed.gaps, " with gaps between the triangles, since the kernel doesn't fill its borders at any angle");
    tell(unmeshed.coarser, " at the coarse resolution only, since the kernel fails on a finer one");
    tell(unmeshed.negligible, " left out, each below a thousand-millionth of the surface, too small for a triangle");
    for (const auto& [part, mesh] : mesher.meshes)
        for (const TriangleSet& set : mesh)
            requirePlace(set.points, file);
    return std::move(mesher.meshes);
}

void requirePlace(const std::vector<gp_XYZ>& points, const std::filesystem::path& file)
{
    constexpr double farthest = std::numeric_limits<float>::max() / 1000;
    if (!std::all_of(points.begin(), points.end(), [&](const gp_XYZ& point) { return point.Modulus() < farthest; }))
        throw DocumentError(ErrorKind::Kernel,
            "The file " + quoted(file) + " can't be written: points of the model lie beyond all measure.");
}

} // namespace zn::zentrel
