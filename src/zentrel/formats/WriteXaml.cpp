#include "zentrel/formats/PartMesh.h"
#include "zentrel/formats/SceneNames.h"
#include "zentrel/formats/Triangles.h"
#include "zentrel/formats/Write.h"
#include "zentrel/model/WholeFile.h"

#include <cmath>
#include <fmt/format.h>
#include <iterator>
#include <unordered_map>

namespace zn::zentrel {

namespace {

/// What a body without a colour looks like: light grey.
constexpr Color defaultColor = {0.8, 0.8, 0.8};

/// Of the model's diagonal: what the camera's window has of free room, and how far off it stands.
constexpr double room = 1.1, distance = 2.0;

std::string shown(const Color& color)
{
    const auto byte = [](double part) { return std::lround(255 * part); };
    return fmt::format("#FF{:02X}{:02X}{:02X}", byte(color.red), byte(color.green), byte(color.blue));
}

/// The rows of the transposed matrix: points are rows there.
std::string shown(const gp_Trsf& placement)
{
    std::string text;
    for (int column = 1; column <= 4; ++column) {
        for (int row = 1; row <= 3; ++row)
            text += fmt::format("{:.9g},", placement.Value(row, column));
        text += column < 4 ? "0," : "1";
    }
    return text;
}

class SceneText {
public:
    explicit SceneText(const PartMeshes& meshes)
        : m_meshes(meshes)
    {
    }

    /// The meshes of all parts, each once.
    void addMeshes(const Model& model)
    {
        if (!m_keys.contains(&model)) {
            const auto first = m_sets;
            for (const TriangleSet& set : m_meshes.at(&model))
                addMesh(set);
            m_keys.emplace(&model, first);
        }
        for (const Model::Child& child : model.children)
            addMeshes(*child.model);
    }

    /// A group with the model's bodies and, moved, those below it.
    void addGroup(const Model& model, const std::string& begin, const std::optional<Color>& placing,
        const std::optional<Color>& inherited)
    {
        const std::optional<Color> color = placing ? placing : model.color ? model.color : inherited;
        text += begin;
        auto key = m_keys.at(&model);
        for (const TriangleSet& set : m_meshes.at(&model)) {
            const std::string brush = shown((set.color ? set.color : color).value_or(defaultColor));
            fmt::format_to(std::back_inserter(text),
                "<GeometryModel3D x:Name=\"{}\" Geometry=\"{{StaticResource M{}}}\">"
                "<GeometryModel3D.Material><DiffuseMaterial Brush=\"{}\"/></GeometryModel3D.Material>"
                "<GeometryModel3D.BackMaterial><DiffuseMaterial Brush=\"{}\"/></GeometryModel3D.BackMaterial>"
                "</GeometryModel3D>\n",
                m_names.next("B", set.name), ++key, brush, brush);
        }
        for (const Model::Child& child : model.children)
            addGroup(*child.model,
                fmt::format("<Model3DGroup x:Name=\"{}\">"
                            "<Model3DGroup.Transform><MatrixTransform3D Matrix=\"{}\"/></Model3DGroup.Transform>\n",
                    m_names.next("C", child.name), shown(child.placement)),
                child.color, color);
        text += "</Model3DGroup>\n";
    }

    std::string text;

private:
    void addMesh(const TriangleSet& set)
    {
        auto out = std::back_inserter(text);
        fmt::format_to(out, "<MeshGeometry3D x:Key=\"M{}\" Positions=\"", ++m_sets);
        for (const gp_XYZ& point : set.points)
            fmt::format_to(out, "{:.9g},{:.9g},{:.9g} ", point.X(), point.Y(), point.Z());
        text += "\" TriangleIndices=\"";
        for (const auto& triangle : set.triangles)
            fmt::format_to(out, "{},{},{} ", triangle[0], triangle[1], triangle[2]);
        text += "\"/>\n";
    }

    const PartMeshes& m_meshes;
    SceneNames m_names;
    std::size_t m_sets = 0;
    std::unordered_map<const Model*, std::size_t> m_keys; ///< how many meshes come before a model's own
};

struct Bounds {
    gp_XYZ low{1e100, 1e100, 1e100}, high{-1e100, -1e100, -1e100};

    void add(const gp_XYZ& point)
    {
        for (const int axis : {1, 2, 3}) {
            low.SetCoord(axis, std::min(low.Coord(axis), point.Coord(axis)));
            high.SetCoord(axis, std::max(high.Coord(axis), point.Coord(axis)));
        }
    }
};

/// An isometric look at the whole, and light from the eye's left.
std::string cameraFor(const Bounds& bounds)
{
    const double diagonal = (bounds.high - bounds.low).Modulus();
    const gp_XYZ eye = (bounds.low + bounds.high) / 2 + gp_XYZ(1, -1, 1).Normalized() * (distance * diagonal);
    return fmt::format("<Viewport3D.Camera><OrthographicCamera Position=\"{:.9g},{:.9g},{:.9g}\" "
                       "LookDirection=\"-1,1,-1\" UpDirection=\"0,0,1\" Width=\"{:.9g}\"/></Viewport3D.Camera>\n",
        eye.X(), eye.Y(), eye.Z(), room * diagonal);
}

} // namespace

Remarks writeXaml(const Model& model, const std::filesystem::path& file, MeshQuality quality)
{
    Remarks remarks;
    PartMeshes meshes = meshesOf(model, quality, "XAML", file, remarks);
    SceneText scene(meshes);
    scene.text = "<Viewport3D xmlns=\"http://schemas.microsoft.com/winfx/2006/xaml/presentation\" "
                 "xmlns:x=\"http://schemas.microsoft.com/winfx/2006/xaml\">\n<Viewport3D.Resources>\n";
    scene.addMeshes(model);
    scene.text += "</Viewport3D.Resources>\n";
    const auto camera = scene.text.size();
    scene.text += "<ModelVisual3D><ModelVisual3D.Content><Model3DGroup>\n"
                  "<AmbientLight Color=\"#FF606060\"/><DirectionalLight Color=\"#FFB0B0B0\" Direction=\"-1,2,-2\"/>\n";
    scene.addGroup(model, "<Model3DGroup>\n", {}, {});
    scene.text += "</Model3DGroup></ModelVisual3D.Content></ModelVisual3D>\n</Viewport3D>\n";
    Bounds bounds;
    ModelTriangles(model, std::move(meshes)).forEach([&](const TriangleSet&, const auto& points, const auto&) {
        for (const gp_XYZ& point : points)
            bounds.add(point);
    });
    scene.text.insert(camera, cameraFor(bounds));
    writeWhole(file, scene.text);
    return remarks;
}

} // namespace zn::zentrel
