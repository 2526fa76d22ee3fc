#include "zentrel/formats/Triangles.h"

#include "contracts/documents/DocumentError.h"
#include "zentrel/formats/PartMesh.h"
#include "zentrel/kernel/KernelChild.h"

namespace zn::zentrel {

namespace {

/// What a set takes: in memory, and about as much again in a file.
std::size_t sizeOf(const PartMesh& mesh)
{
    std::size_t bytes = 0;
    for (const TriangleSet& set : mesh)
        bytes += set.points.size() * sizeof set.points[0] + set.triangles.size() * sizeof set.triangles[0];
    return bytes;
}

/// Few parts that are placed often can make up any number of triangles.
class Placer {
public:
    Placer(const PartMeshes& meshes, const std::filesystem::path& file)
        : m_meshes(meshes)
        , m_file(file)
        , m_most(mostAnswered())
    {
    }

    void add(const Model& model, const gp_Trsf& placement, const std::optional<Color>& placing,
        const std::optional<Color>& inherited)
    {
        const std::optional<Color> color = placing ? placing : model.color ? model.color : inherited;
        const PartMesh& mesh = m_meshes.at(&model);
        m_size += sizeOf(mesh);
        if (m_size > m_most)
            throw DocumentError(ErrorKind::Kernel,
                "The file " + quoted(m_file) + " can't be written: its triangles take more than "
                    + std::to_string(m_most / 1000000) + " MB.");
        for (const TriangleSet& set : mesh) {
            TriangleSet& copy = placed.emplace_back(set);
            if (!copy.color)
                copy.color = color;
            for (gp_XYZ& point : copy.points)
                placement.Transforms(point);
        }
        for (const Model::Child& child : model.children)
            add(*child.model, placement * child.placement, child.color, color);
    }

    std::vector<TriangleSet> placed;

private:
    const PartMeshes& m_meshes;
    const std::filesystem::path& m_file;
    std::size_t m_most;
    std::size_t m_size = 0;
};

} // namespace

std::vector<TriangleSet> trianglesOf(
    const Model& model, MeshQuality quality, const char* format, const std::filesystem::path& file, Remarks& remarks)
{
    const PartMeshes meshes = meshesOf(model, quality, format, file, remarks);
    Placer placer(meshes, file);
    placer.add(model, gp_Trsf(), {}, {});
    requirePlace(placer.placed, file);
    return std::move(placer.placed);
}

} // namespace zn::zentrel
