#include "zentrel/formats/Triangles.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/kernel/KernelChild.h"

namespace zn::zentrel {

namespace {

/// About what a triangle takes in a file.
constexpr std::size_t bytesOfTriangle = 50;

} // namespace

ModelTriangles::ModelTriangles(const Model& model, PartMeshes meshes)
    : m_meshes(std::move(meshes))
{
    add(model, gp_Trsf(), {}, {});
}

void ModelTriangles::add(const Model& model, const gp_Trsf& placement, const std::optional<Color>& placing,
    const std::optional<Color>& inherited)
{
    const std::optional<Color> color = placing ? placing : model.color ? model.color : inherited;
    for (const TriangleSet& set : m_meshes.at(&model)) {
        m_placed.push_back({&set, placement, set.color ? set.color : color});
        m_count += set.triangles.size();
    }
    for (const Model::Child& child : model.children)
        add(*child.model, placement * child.placement, child.color, color);
}

void ModelTriangles::forEach(const Use& use) const
{
    std::vector<gp_XYZ> points;
    for (const Placed& placed : m_placed) {
        points = placed.set->points;
        for (gp_XYZ& point : points)
            placed.placement.Transforms(point);
        use(*placed.set, points, placed.color);
    }
}

ModelTriangles trianglesOf(
    const Model& model, MeshQuality quality, const char* format, const std::filesystem::path& file, Remarks& remarks)
{
    ModelTriangles triangles(model, meshesOf(model, quality, format, file, remarks));
    // Few parts that are placed often can make up any number.
    if (const std::size_t most = mostAnswered(); triangles.count() > most / bytesOfTriangle)
        throw DocumentError(ErrorKind::Kernel,
            "The file " + quoted(file) + " can't be written: its triangles take more than "
                + std::to_string(most / 1000000) + " MB.");
    return triangles;
}

} // namespace zn::zentrel
