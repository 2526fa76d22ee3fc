#include "tests/support/TemporaryFolder.h"
#include "tests/zentrel/Documents.h"
#include "zentrel/formats/Write.h"

#include <map>
#include <pugixml.hpp>
#include <sstream>

using namespace zn::zentrel;
using namespace zn::zentrel::test;
using zn::test::TemporaryFolder;

namespace {

using Matrix = std::array<double, 16>; ///< row by row; points are rows

std::vector<double> numbers(const char* text)
{
    std::string list = text;
    std::replace(list.begin(), list.end(), ',', ' ');
    std::istringstream stream(list);
    return {std::istream_iterator<double>(stream), {}};
}

Matrix product(const Matrix& a, const Matrix& b)
{
    Matrix result{};
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            for (std::size_t i = 0; i < 4; ++i)
                result[4 * row + column] += a[4 * row + i] * b[4 * i + column];
    return result;
}

/// The scene as a viewer of the format understands it: by brush the volume that the triangles enclose, and the box.
class Scene {
public:
    explicit Scene(const std::filesystem::path& file)
    {
        EXPECT_TRUE(m_document.load_file(file.c_str()));
        const auto view = m_document.child("Viewport3D");
        EXPECT_NE(
            std::string(view.child("Viewport3D.Camera").child("OrthographicCamera").attribute("Width").value()), "");
        const auto content = view.child("ModelVisual3D").child("ModelVisual3D.Content").child("Model3DGroup");
        EXPECT_TRUE(content.child("DirectionalLight"));
        addGroup(content, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    }

    std::size_t meshes() const
    {
        const auto all = m_document.child("Viewport3D").child("Viewport3D.Resources").children("MeshGeometry3D");
        return static_cast<std::size_t>(std::distance(all.begin(), all.end()));
    }

    std::map<std::string, double> volumes;
    std::vector<std::string> names;
    std::array<double, 3> low{1e9, 1e9, 1e9}, high{-1e9, -1e9, -1e9};

private:
    void addGroup(const pugi::xml_node& group, const Matrix& outer)
    {
        Matrix matrix = outer;
        if (const auto own = group.child("Model3DGroup.Transform").child("MatrixTransform3D")) {
            const auto values = numbers(own.attribute("Matrix").value());
            ASSERT_EQ(values.size(), 16U);
            Matrix inner{};
            std::copy(values.begin(), values.end(), inner.begin());
            matrix = product(inner, outer);
        }
        if (group.attribute("x:Name"))
            names.emplace_back(group.attribute("x:Name").value());
        for (const auto& model : group.children("GeometryModel3D"))
            addModel(model, matrix);
        for (const auto& inner : group.children("Model3DGroup"))
            addGroup(inner, matrix);
    }

    void addModel(const pugi::xml_node& model, const Matrix& matrix)
    {
        const std::string geometry = model.attribute("Geometry").value();
        const std::string key = geometry.substr(16, geometry.size() - 17);
        const auto mesh = m_document.child("Viewport3D")
                              .child("Viewport3D.Resources")
                              .find_child_by_attribute("x:Key", key.c_str());
        ASSERT_TRUE(mesh) << geometry;
        const auto positions = numbers(mesh.attribute("Positions").value());
        const auto corner = [&](double index, std::size_t axis) {
            double sum = matrix[12 + axis];
            for (std::size_t i = 0; i < 3; ++i)
                sum += positions[3 * static_cast<std::size_t>(index) + i] * matrix[4 * i + axis];
            return sum;
        };
        const auto indices = numbers(mesh.attribute("TriangleIndices").value());
        const std::string brush
            = model.child("GeometryModel3D.Material").child("DiffuseMaterial").attribute("Brush").value();
        for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
            std::array<std::array<double, 3>, 3> p{};
            for (std::size_t c = 0; c < 3; ++c)
                for (std::size_t axis = 0; axis < 3; ++axis) {
                    p[c][axis] = corner(indices[i + c], axis);
                    low[axis] = std::min(low[axis], p[c][axis]);
                    high[axis] = std::max(high[axis], p[c][axis]);
                }
            volumes[brush] += (p[0][0] * (p[1][1] * p[2][2] - p[1][2] * p[2][1])
                                  + p[0][1] * (p[1][2] * p[2][0] - p[1][0] * p[2][2])
                                  + p[0][2] * (p[1][0] * p[2][1] - p[1][1] * p[2][0]))
                / 6;
        }
    }

    pugi::xml_document m_document;
};

} // namespace

TEST(WriteXaml, ASceneHasBodiesColoursAndTurnedInstances)
{
    const TemporaryFolder folder;
    auto block = std::make_shared<Model>();
    block->bodies = {{u"Box", box(10, 20, 30), {}, {}}};
    gp_Trsf turn, up;
    turn.SetRotation(gp_Ax1(gp_Pnt(0, 0, 0), gp_Dir(1, 0, 0)), M_PI / 2);
    up.SetTranslation({0, 0, 5});
    auto inner = std::make_shared<Model>();
    inner->children = {{u"A <1>", gp_Trsf(), block, Color{1, 0, 0}}, {u"B", turn, block, Color{0, 1, 0}}};
    Model outer;
    outer.children = {{u"Гайка", up * turn, inner}, {u"C", up, block}};
    writeXaml(outer, folder / "a.xaml");
    const Scene scene(folder / "a.xaml");
    EXPECT_EQ(scene.meshes(), 1U) << "the same block three times";
    ASSERT_EQ(scene.volumes.size(), 3U);
    for (const char* brush : {"#FFFF0000", "#FF00FF00", "#FFCCCCCC"})
        EXPECT_NEAR(scene.volumes.at(brush), 6000, 1e-3) << brush;
    // A lies turned by 90 degrees, B by 180, and C stands; the group is 5 mm up.
    const std::array<double, 3> low{0, -30, -25}, high{10, 20, 35};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(scene.low[axis], low[axis], 1e-5) << axis;
        EXPECT_NEAR(scene.high[axis], high[axis], 1e-5) << axis;
    }
    EXPECT_EQ(scene.names, (std::vector<std::string>{"C1_Гайка", "C2_A__1_", "C4_B", "C6_C"}));
}
