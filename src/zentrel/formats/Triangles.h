#pragma once

#include "zentrel/formats/PartMesh.h"

#include <functional>

namespace zn::zentrel {

/// All triangles of a model: its parts' own, each once, and where they stand in it.
class ModelTriangles {
public:
    ModelTriangles(const Model& model, PartMeshes meshes);
    ModelTriangles(ModelTriangles&&) = default;

    std::size_t count() const { return m_count; }

    using Use = std::function<void(
        const TriangleSet& set, const std::vector<gp_XYZ>& points, const std::optional<Color>& color)>;
    /// Gives each set at each place, in the order of the bodies, with its points there, and its colour or that of what
    /// places it.
    void forEach(const Use& use) const;

private:
    struct Placed {
        const TriangleSet* set = nullptr;
        gp_Trsf placement;
        std::optional<Color> color;
    };
    void add(const Model& model, const gp_Trsf& placement, const std::optional<Color>& placing,
        const std::optional<Color>& inherited);

    PartMeshes m_meshes;
    std::vector<Placed> m_placed;
    std::size_t m_count = 0;
};

/// Meshes all parts of the model and raises as `meshesOf` does, and `Kernel` for more triangles than a file may have.
ModelTriangles trianglesOf(
    const Model& model, MeshQuality quality, const char* format, const std::filesystem::path& file, Remarks& remarks);

} // namespace zn::zentrel
