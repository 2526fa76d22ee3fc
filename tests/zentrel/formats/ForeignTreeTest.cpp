#include "tests/zentrel/Documents.h"
#include "zentrel/formats/BuildPart.h"
#include "zentrel/formats/CafTree.h"
#include "zentrel/formats/Projection.h"
#include "zentrel/formats/Read.h"
#include "zentrel/formats/Triangles.h"
#include "zentrel/formats/Write.h"
#include "zentrel/model/Describe.h"

#include <BRepPrimAPI_MakeCylinder.hxx>
#include <gtest/gtest.h>
#include <Interface_Static.hxx>
#include <Quantity_Color.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <TDataStd_Name.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>

namespace zn::zentrel::test {

namespace {

constexpr Color red{1, 0, 0};
constexpr Color green{0, 1, 0};
constexpr Color blue{0, 0, 1};
constexpr Color yellow{1, 1, 0};
constexpr Color white{1, 1, 1};

/// A file of another program: a rack of two shelves, each of two plates and a pin.
class Rack {
public:
    Rack()
    {
        rack = named(m_shapes->NewShape(), "Rack");
        shelf = named(m_shapes->NewShape(), "Shelf");
        plate = named(m_shapes->AddShape(m_box, false), "Plate");
        pin = named(m_shapes->AddShape(BRepPrimAPI_MakeCylinder(2, 30).Shape(), false), "Pin");
        upper = place(shelf, plate, "Plate upper", 100);
        lower = place(shelf, plate, "Plate lower", 0);
        place(shelf, pin, "Pin", 50);
        left = place(rack, shelf, "Shelf left", 0);
        right = place(rack, shelf, "Shelf right", 1000);
        m_shapes->UpdateAssemblies();
    }

    TDF_Label face(int number)
    {
        TopTools_IndexedMapOfShape faces;
        TopExp::MapShapes(m_box, TopAbs_FACE, faces);
        return m_shapes->AddSubShape(plate, faces(number));
    }

    TDF_Label shell() { return m_shapes->AddSubShape(plate, TopExp_Explorer(m_box, TopAbs_SHELL).Current()); }

    void paint(const TDF_Label& label, const Color& color)
    {
        XCAFDoc_DocumentTool::ColorTool(m_document->Main())
            ->SetColor(label, Quantity_Color(color.red, color.green, color.blue, Quantity_TOC_sRGB), XCAFDoc_ColorSurf);
    }

    void layer(const TDF_Label& label, const char* name)
    {
        XCAFDoc_DocumentTool::LayerTool(m_document->Main())->SetLayer(label, TCollection_ExtendedString(name));
    }

    const Handle(TDocStd_Document) & document() const { return m_document; }

    /// With `prefix` each part stands in a file of its own.
    void write(const fs::path& file, const char* prefix = nullptr)
    {
        STEPCAFControl_Writer writer;
        writer.SetLayerMode(true);
        Interface_Static::SetCVal("write.step.schema", "AP214IS");
        ASSERT_TRUE(writer.Transfer(m_document, STEPControl_AsIs, prefix));
        ASSERT_EQ(writer.Write(file.c_str()), IFSelect_RetDone);
    }

    TDF_Label rack, shelf, plate, pin, upper, lower, left, right;

private:
    static TDF_Label named(const TDF_Label& label, const char* name)
    {
        TDataStd_Name::Set(label, name);
        return label;
    }

    TDF_Label place(const TDF_Label& assembly, const TDF_Label& part, const char* name, double x)
    {
        gp_Trsf placement;
        placement.SetTranslation(gp_Vec(x, 0, 0));
        return named(m_shapes->AddComponent(assembly, part, TopLoc_Location(placement)), name);
    }

    Handle(TDocStd_Document) m_document = newCafDocument();
    Handle(XCAFDoc_ShapeTool) m_shapes = XCAFDoc_DocumentTool::ShapeTool(m_document->Main());
    TopoDS_Shape m_box = box(10, 20, 30);
};

const AssemblyDocument& assemblyOf(const Component& component) { return *component.embedded->assembly(); }

class ForeignTree : public FolderTest { };

TEST_F(ForeignTree, LevelsNamesLayersAndInstancesStay)
{
    Rack rack;
    rack.layer(rack.plate, "Sheet metal");
    rack.write(folder / "rack.step");
    importAssembly(folder / "rack.step", folder / "rack.zenasm");
    EXPECT_EQ(readContainerInfo(folder / "rack.zenasm").version, 2);
    writeStep(*ModelLoader().load(folder / "rack.zenasm"), folder / "again.step");

    for (const Document& document :
        {readStep(folder / "rack.step"), readDocument(folder / "rack.zenasm"), readStep(folder / "again.step")}) {
        const auto& top = std::get<AssemblyDocument>(document);
        EXPECT_EQ(top.name, u"Rack");
        ASSERT_EQ(top.components.size(), 2u);
        EXPECT_EQ(top.components[0].name, u"Shelf left");
        EXPECT_EQ(top.components[1].name, u"Shelf right");
        EXPECT_EQ(top.components[1].placement.TranslationPart().X(), 1000);
        EXPECT_EQ(top.components[0].embedded, top.components[1].embedded);
        const AssemblyDocument& shelf = assemblyOf(top.components[0]);
        EXPECT_EQ(shelf.name, u"Shelf");
        ASSERT_EQ(shelf.components.size(), 3u);
        EXPECT_EQ(shelf.components[0].embedded, shelf.components[1].embedded);
        const PartDocument& plate = *shelf.components[0].embedded->part();
        EXPECT_EQ(plate.name, u"Plate");
        EXPECT_THAT(plate.configurations[0].bodies[0].layers, ElementsAre(u"Sheet metal"));
        EXPECT_EQ(distinctBodies(document).size(), 2u);
    }
}

TEST_F(ForeignTree, TheBillOfMaterialsCountsPartsThroughAllLevels)
{
    Rack().write(folder / "rack.step");
    const DocumentInfo info = describe(readStep(folder / "rack.step"), folder / "rack.step");
    std::map<Text, std::size_t> counts;
    for (const PartCount& part : info.configurations.at(0).parts)
        counts[part.name] = part.count;
    EXPECT_EQ(counts, (std::map<Text, std::size_t>{{u"Plate", 4}, {u"Pin", 2}}));
    EXPECT_EQ(info.configurations.at(0).bodies, 6u);
}

/// Whoever walks through a tree calls itself for each level: a small file must not take the whole stack.
TEST_F(ForeignTree, LevelsWithoutEndAreRefused)
{
    AssemblyDocument top;
    top.configurations.push_back({u"Default", {}, {}});
    for (int level = 0; level < 1001; ++level) {
        AssemblyDocument above;
        above.components.push_back(
            {u"Inner", {}, std::make_shared<VirtualDocument>(VirtualDocument{std::move(top)}), {}});
        above.configurations.push_back({u"Default", {{}}, {}});
        top = std::move(above);
    }
    writeDocument(std::get<AssemblyDocument>(top.components[0].embedded->content), folder / "deep.zenasm");
    EXPECT_NO_THROW(readDocument(folder / "deep.zenasm"));
    writeDocument(top, folder / "deeper.zenasm");
    expectError(ErrorKind::Damaged, "more than 1000 levels", [&] { readDocument(folder / "deeper.zenasm"); });
}

struct ColorRow {
    const char* what = nullptr;
    std::optional<Color> part, instance, inner, outer;
    std::optional<Color> seen; ///< of the upper plate in the left shelf
};

TEST_F(ForeignTree, NearestColourWins)
{
    const ColorRow rows[] = {
        {"nothing", {}, {}, {}, {}, {}},
        {"the part's own", red, {}, {}, {}, red},
        {"the instance's before the part's", red, blue, {}, {}, blue},
        {"the assembly's where nothing is nearer", {}, {}, yellow, {}, yellow},
        {"the part's before the assembly's", red, {}, yellow, {}, red},
        {"the assembly's instance before its own", {}, {}, yellow, white, white},
        {"the part's before those above", red, {}, yellow, white, red},
        {"the instance's before those above", {}, blue, yellow, white, blue},
    };
    for (const ColorRow& row : rows) {
        SCOPED_TRACE(row.what);
        Rack rack;
        const auto paint = [&](const TDF_Label& label, const std::optional<Color>& color) {
            if (color)
                rack.paint(label, *color);
        };
        paint(rack.plate, row.part);
        paint(rack.upper, row.instance);
        paint(rack.shelf, row.inner);
        paint(rack.left, row.outer);
        rack.paint(rack.face(2), green);
        const Document document = documentOf(rack.document());
        const std::vector<Body> bodies = asPart(document, "rack.step").configurations.at(0).bodies;
        EXPECT_EQ(bodies.at(0).color, row.seen);
        EXPECT_EQ(bodies.at(0).faceColors, (std::map<int, Color>{{2, green}})) << "a face's own wins over all";
    }
}

TEST_F(ForeignTree, AShellPaintsItsFacesAndAFaceItself)
{
    Rack rack;
    rack.paint(rack.plate, red);
    rack.paint(rack.shell(), blue);
    rack.paint(rack.face(1), green);
    const Body plate = distinctBodies(documentOf(rack.document())).at(0);
    EXPECT_EQ(
        plate.faceColors, (std::map<int, Color>{{1, green}, {2, blue}, {3, blue}, {4, blue}, {5, blue}, {6, blue}}));
}

TEST_F(ForeignTree, ColoursSurviveTheWayThroughEachFile)
{
    Rack rack;
    rack.paint(rack.plate, red);
    rack.paint(rack.upper, blue);
    rack.paint(rack.right, white);
    rack.write(folder / "rack.step");
    importAssembly(folder / "rack.step", folder / "rack.zenasm");
    writeStep(*ModelLoader().load(folder / "rack.zenasm"), folder / "again.step", {.protocol = 214});
    for (const Document& document : {readDocument(folder / "rack.zenasm"), readStep(folder / "again.step")}) {
        std::vector<std::optional<Color>> seen;
        const PartDocument part = asPart(document, "x");
        for (const Body& body : part.configurations[0].bodies)
            seen.push_back(body.color);
        EXPECT_THAT(seen, ElementsAre(blue, red, std::optional<Color>(), blue, red, white));
    }
}

TEST_F(ForeignTree, EachInstanceIsDrawnInItsColour)
{
    Rack rack;
    rack.paint(rack.plate, red);
    rack.write(folder / "one.step");
    rack.paint(rack.upper, blue);
    rack.paint(rack.right, green);
    rack.write(folder / "rack.step");
    const auto colorsOf = [&](const char* name) {
        const fs::path assembly = folder / fs::path(name).replace_extension(".zenasm");
        importAssembly(folder / name, assembly);
        std::set<std::array<double, 3>> colors;
        const ModelRef model = ModelLoader().load(assembly);
        for (const Stroke& stroke : project(*model, gp_Dir(0, -1, 0), gp_Dir(0, 0, 1), 1e-3, false, assembly))
            if (stroke.color)
                colors.insert({stroke.color->red, stroke.color->green, stroke.color->blue});
        return colors;
    };
    // The same bodies at the same places: only what paints them differs.
    EXPECT_THAT(colorsOf("one.step"), ElementsAre(std::array{1.0, 0.0, 0.0}));
    EXPECT_EQ(colorsOf("rack.step"),
        (std::set{std::array{0.0, 0.0, 1.0}, std::array{0.0, 1.0, 0.0}, std::array{1.0, 0.0, 0.0}}));
}

TEST_F(ForeignTree, AMissingFileIsNamed)
{
    Rack rack;
    rack.write(folder / "rack.step", "");
    ASSERT_TRUE(fs::exists(folder / "Pin.stp"));
    EXPECT_EQ(distinctBodies(readStep(folder / "rack.step")).size(), 2u);
    fs::remove(folder / "Pin.stp");
    const std::string sentence
        = expectError(ErrorKind::Incomplete, "'Pin.stp'", [&] { readStep(folder / "rack.step"); });
    EXPECT_THAT(sentence, ::testing::Not(HasSubstr("Plate")));
}

/// Names as a program on a Cyrillic Windows wrote them.
TEST_F(ForeignTree, NamesInTheMachinesPageAreRead)
{
    struct {
        const char* bytes;
        const char16_t* name;
    } const rows[] = {
        {"\xD1\xE1\xEE\xF0\xEA\xE0 \xEF\xEE\xEB\xEA\xE8", u"Сборка полки"},
        {"B\xFCgel mit gro\xDF"
         "er \xD6"
         "se",
            u"Bügel mit großer Öse"},
        {"\xC3\x84rmel", u"Ärmel"},
    };
    Rack().write(folder / "rack.step");
    const std::string plain = readFile(folder / "rack.step");
    for (const auto& row : rows) {
        std::string text = plain;
        for (std::size_t at = 0; (at = text.find("'Shelf'", at)) != std::string::npos;)
            text.replace(at + 1, 5, row.bytes);
        writeFile(folder / "page.step", text);
        const Document document = readStep(folder / "page.step");
        EXPECT_EQ(assemblyOf(std::get<AssemblyDocument>(document).components[0]).name, row.name);
    }
}

/// Three small pins in a rack of a metre need no more triangles than the rack's size asks for.
TEST_F(ForeignTree, AFilesPartsAreMeshedByTheFilesSize)
{
    Rack rack;
    rack.write(folder / "rack.step");
    const Document document = readStep(folder / "rack.step");
    const auto triangles = [&](const Model& model) {
        Remarks remarks;
        return trianglesOf(model, MeshQuality::Coarse, "STL", "x.stl", remarks).count();
    };
    const ModelRef tree = ModelLoader().load(std::get<AssemblyDocument>(document), "rack.step");
    const ModelRef flat = ModelLoader().load(asPart(document, "rack.step"), "rack.step");
    EXPECT_EQ(triangles(*tree), triangles(*flat));
}

} // namespace

} // namespace zn::zentrel::test
