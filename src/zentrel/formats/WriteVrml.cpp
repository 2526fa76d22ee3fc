#include "zentrel/formats/PartMesh.h"
#include "zentrel/formats/SceneNames.h"
#include "zentrel/formats/Write.h"
#include "zentrel/model/WholeFile.h"

#include <fmt/format.h>
#include <gp_Quaternion.hxx>
#include <iterator>

namespace zn::zentrel {

namespace {

/// What a body without a colour looks like: light grey.
constexpr Color defaultColor = {0.8, 0.8, 0.8};

class SceneWriter {
public:
    SceneWriter(const PartMeshes& meshes, double factor)
        : m_meshes(meshes)
        , m_factor(factor)
    {
    }

    /// A group with the model's shapes and, moved, those below it; where it stands once more it is named only. What an
    /// instance's colour changes is a group of its own.
    void add(const Model& model, const std::optional<Color>& placing, const std::optional<Color>& inherited)
    {
        const std::optional<Color> color = placing ? placing : model.color ? model.color : inherited;
        for (const auto& [known, shown, name] : m_groups) {
            if (known == &model && shown == color) {
                text += "USE " + name + "\n";
                return;
            }
        }
        const std::string name = m_names.next("G", model.name);
        text += "DEF " + name + " Group { children [\n";
        for (const TriangleSet& set : m_meshes.at(&model))
            addShape(set, set.color ? set.color : color);
        for (const Model::Child& child : model.children)
            addChild(child, color);
        text += "] }\n";
        m_groups.push_back({&model, color, name});
    }

    std::string text = "#VRML V2.0 utf8\n";

private:
    struct Group {
        const Model* model;
        std::optional<Color> color;
        std::string name;
    };

    void addChild(const Model::Child& child, const std::optional<Color>& color)
    {
        gp_Vec axis(0.0, 0.0, 1.0);
        double angle = 0.0;
        child.placement.GetRotation().GetVectorAndAngle(axis, angle);
        const gp_XYZ at = child.placement.TranslationPart() * m_factor;
        fmt::format_to(std::back_inserter(text),
            "DEF {} Transform {{ translation {:.9g} {:.9g} {:.9g} rotation {:.9g} {:.9g} {:.9g} {:.9g} children [\n",
            m_names.next("C", child.name), at.X(), at.Y(), at.Z(), axis.X(), axis.Y(), axis.Z(), angle);
        add(*child.model, child.color, color);
        text += "] }\n";
    }

    void addShape(const TriangleSet& set, const std::optional<Color>& shown)
    {
        auto out = std::back_inserter(text);
        const Color color = shown.value_or(defaultColor);
        fmt::format_to(out,
            "DEF {} Shape {{\n appearance Appearance {{ material Material {{ diffuseColor {:g} {:g} {:g} }} }}\n"
            " geometry IndexedFaceSet {{\n  solid FALSE\n  coord Coordinate {{ point [\n",
            m_names.next("B", set.name), color.red, color.green, color.blue);
        for (const gp_XYZ& point : set.points)
            fmt::format_to(
                out, "{:.9g} {:.9g} {:.9g},\n", point.X() * m_factor, point.Y() * m_factor, point.Z() * m_factor);
        text += "  ] }\n  coordIndex [\n";
        for (const auto& triangle : set.triangles)
            fmt::format_to(out, "{},{},{},-1,\n", triangle[0], triangle[1], triangle[2]);
        text += "  ]\n }\n}\n";
    }

    const PartMeshes& m_meshes;
    double m_factor;
    SceneNames m_names;
    std::vector<Group> m_groups;
};

std::string vrmlText(
    const Model& model, const std::filesystem::path& file, const VrmlOptions& options, Remarks& remarks)
{
    const PartMeshes meshes = meshesOf(model, options.quality, "VRML", file, remarks);
    SceneWriter scene(meshes, 1.0 / millimetersOf(options.unit));
    scene.add(model, {}, {});
    return std::move(scene.text);
}

} // namespace

Remarks writeVrml(const Model& model, const std::filesystem::path& file, const VrmlOptions& options)
{
    Remarks remarks;
    writeWhole(file, vrmlText(model, file, options, remarks));
    return remarks;
}

} // namespace zn::zentrel
