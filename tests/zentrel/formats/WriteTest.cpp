#include "zentrel/formats/Write.h"
#include "tests/zentrel/Documents.h"
#include "zentrel/formats/Read.h"
#include "zentrel/formats/ReadBack.h"
#include "zentrel/formats/TextNumbers.h"
#include "zentrel/model/Bounds.h"

#include <BRep_Builder.hxx>
#include <BRepBndLib.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepGProp.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepTools.hxx>
#include <cstring>
#include <fstream>
#include <gp_Pln.hxx>
#include <GProp_GProps.hxx>
#include <sys/resource.h>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <VrmlData_DataMapOfShapeAppearance.hxx>
#include <VrmlData_Scene.hxx>

using namespace zn::zentrel;
using namespace zn::zentrel::test;

namespace {

ModelRef modelOf(std::vector<Body> bodies, const Text& name = u"Teil")
{
    auto model = std::make_shared<Model>();
    model->name = name;
    model->bodies = std::move(bodies);
    return model;
}

ModelRef boxModel(double x, double y, double z) { return modelOf({{u"Box", box(x, y, z), {}, {}}}); }

/// All bodies at their places.
std::vector<Body> placed(const Document& document) { return asPart(document, "x.step").configurations[0].bodies; }

gp_Trsf moved(double x, double y, double z)
{
    gp_Trsf placement;
    placement.SetTranslation(gp_Vec(x, y, z));
    return placement;
}

/// A red box with one blue face twice, and a sphere without a colour.
ModelRef assemblyModel()
{
    const ModelRef block = modelOf({{u"Kiste", box(10, 20, 30), Color{1, 0, 0}, {{3, Color{0, 0, 1}}}}}, u"Kiste Ящик");
    const ModelRef ball = modelOf({{u"Ball", BRepPrimAPI_MakeSphere(5).Shape(), {}, {}}}, u"Ball");
    auto model = std::make_shared<Model>();
    model->name = u"Gruppe";
    model->children
        = {{u"Kiste-1", moved(100, 0, 0), block}, {u"Kiste-2", moved(-200, 0, 0), block}, {u"Ball-1", gp_Trsf(), ball}};
    return model;
}

double volumeOf(const TopoDS_Shape& shape)
{
    GProp_GProps properties;
    BRepGProp::VolumeProperties(shape, properties);
    return properties.Mass();
}

struct StlFile {
    std::uint32_t count = 0;
    float low[3] = {1e30F, 1e30F, 1e30F};
    float high[3] = {-1e30F, -1e30F, -1e30F};
    double volume = 0.0;
};

StlFile readBinaryStl(const fs::path& file)
{
    const std::string bytes = readFile(file);
    StlFile stl;
    std::memcpy(&stl.count, bytes.data() + 80, 4);
    EXPECT_EQ(bytes.size(), 84 + 50 * std::size_t{stl.count});
    for (std::size_t facet = 0; facet < stl.count; ++facet) {
        float c[9];
        std::memcpy(c, bytes.data() + 84 + 50 * facet + 12, sizeof c);
        for (std::size_t i = 0; i < 9; ++i) {
            stl.low[i % 3] = std::min(stl.low[i % 3], c[i]);
            stl.high[i % 3] = std::max(stl.high[i % 3], c[i]);
        }
        stl.volume += (double(c[0]) * (c[4] * c[8] - c[5] * c[7]) + double(c[1]) * (c[5] * c[6] - c[3] * c[8])
                          + double(c[2]) * (c[3] * c[7] - c[4] * c[6]))
            / 6.0;
    }
    return stl;
}

std::size_t countOf(const std::string& text, const std::string& word)
{
    std::size_t count = 0;
    for (auto at = text.find(word); at != text.npos; at = text.find(word, at + word.size()))
        ++count;
    return count;
}

using WriteStl = FolderTest;
using WriteStep = FolderTest;
using WriteIges = FolderTest;
using WriteVrml = FolderTest;
using Write = FolderTest;

} // namespace

TEST_F(WriteStl, unitsPositionsAndForms)
{
    const fs::path file = folder / "деталь.stl";
    struct Case {
        LengthUnit unit;
        double factor;
    };
    for (const Case& unit : {Case{LengthUnit::Millimeters, 1.0}, Case{LengthUnit::Centimeters, 0.1},
             Case{LengthUnit::Meters, 0.001}, Case{LengthUnit::Inches, 1 / 25.4}, Case{LengthUnit::Feet, 1 / 304.8}}) {
        writeStl(*assemblyModel(), file, {.unit = unit.unit, .keepPosition = true});
        const StlFile kept = readBinaryStl(file);
        EXPECT_NEAR(kept.low[0], -200 * unit.factor, 1e-4);
        EXPECT_NEAR(kept.high[0], 110 * unit.factor, 1e-4);
        const double volume = (2 * 6000 + 4.0 / 3 * M_PI * 125) * std::pow(unit.factor, 3);
        EXPECT_NEAR(kept.volume, volume, 0.01 * volume) << "facets turned outwards";
        writeStl(*assemblyModel(), file, {.unit = unit.unit});
        const StlFile shifted = readBinaryStl(file);
        EXPECT_EQ(shifted.count, kept.count);
        EXPECT_NEAR(shifted.low[0], 0, 1e-4);
        EXPECT_NEAR(shifted.high[0], 310 * unit.factor, 1e-4);
    }
    writeStl(*boxModel(10, 20, 30), file, {.binary = false});
    const std::string text = readFile(file);
    EXPECT_TRUE(text.starts_with("solid model\n  facet normal "));
    EXPECT_TRUE(text.ends_with("endsolid model\n"));
    EXPECT_EQ(countOf(text, "endfacet"), 12u);
    EXPECT_THAT(text, HasSubstr("vertex 1.000000e+01 2.000000e+01 3.000000e+01"));
}

TEST_F(WriteStl, isReadAgainAsItsTriangles)
{
    for (const bool binary : {true, false}) {
        const fs::path file = folder / "Kiste.stl";
        writeStl(*assemblyModel(), file, {.binary = binary, .keepPosition = true});
        const fs::path again = folder / "again.stl";
        ModelLoader loader;
        writeStl(*loader.load(std::get<PartDocument>(readForeign(file)), file), again, {.keepPosition = true});
        const StlFile stl = readBinaryStl(again);
        EXPECT_NEAR(stl.low[0], -200, 1e-4);
        EXPECT_NEAR(stl.high[2], 30, 1e-4);
        EXPECT_NEAR(stl.volume, 2 * 6000 + 4.0 / 3 * M_PI * 125, 50);
    }
}

TEST_F(WriteStl, resolutionFollowsTheModelsSize)
{
    const auto facets = [&](double radius, MeshQuality quality) {
        writeStl(
            *modelOf({{u"B", BRepPrimAPI_MakeSphere(radius).Shape(), {}, {}}}), folder / "s.stl", {.quality = quality});
        return readBinaryStl(folder / "s.stl").count;
    };
    const auto coarse = facets(10.0, MeshQuality::Coarse);
    EXPECT_GT(coarse, 100u);
    EXPECT_GT(facets(10.0, MeshQuality::Fine), 4 * coarse);
    for (const double radius : {0.1, 100000.0})
        EXPECT_NEAR(facets(radius, MeshQuality::Coarse), coarse, 0.05 * coarse) << radius;
}

TEST_F(WriteStep, structureNamesAndColoursComeBack)
{
    for (const int protocol : {203, 214}) {
        SCOPED_TRACE(protocol);
        writeStep(*assemblyModel(), folder / "a.step", {.protocol = protocol});
        const std::string text = readFile(folder / "a.step");
        EXPECT_THAT(text, HasSubstr(protocol == 203 ? "CONFIG_CONTROL_DESIGN" : "AUTOMOTIVE_DESIGN"));
        EXPECT_EQ(text.find("ORGANIZATION('IP0.0.0'") != std::string::npos, protocol == 203)
            << "whatever this machine is called";
        EXPECT_THAT(text, HasSubstr("Kiste \\X2\\042F04490438043A\\X0\\"));
        EXPECT_EQ(countOf(text, "MANIFOLD_SOLID_BREP("), 2u) << "equal components share their geometry";
        const Document document = readStep(folder / "a.step");
        const auto& assembly = std::get<AssemblyDocument>(document);
        EXPECT_EQ(assembly.name, u"Gruppe");
        ASSERT_EQ(assembly.components.size(), 3u);
        EXPECT_EQ(assembly.components[1].name, u"Kiste-2");
        EXPECT_EQ(assembly.components[0].embedded, assembly.components[1].embedded);
        EXPECT_EQ(assembly.components[0].embedded->part()->name, u"Kiste Ящик");
        const std::vector<Body> bodies = placed(document);
        ASSERT_EQ(bodies.size(), 3u);
        EXPECT_EQ(bodies[0].name, u"Kiste Ящик");
        EXPECT_EQ(bodies[2].name, u"Ball");
        EXPECT_EQ(bodies[0].color, (Color{1, 0, 0}));
        EXPECT_EQ(bodies[1].faceColors, (std::map<int, Color>{{3, {0, 0, 1}}}));
        EXPECT_FALSE(bodies[2].color);
        EXPECT_NEAR(volumeOf(bodies[1].shape), 6000, 1e-6);
        EXPECT_NEAR(boundsOf(bodies[1].shape).CornerMin().X(), -200, 1e-6);
    }
    writeStep(*boxModel(1, 2, 3), folder / "c.step", {.geometry = GeometryPreference::Curves});
    const TopoDS_Shape curves = placed(readStep(folder / "c.step")).at(0).shape;
    EXPECT_FALSE(TopExp_Explorer(curves, TopAbs_FACE).More());
    EXPECT_NEAR(boundsOf(curves).CornerMax().Z(), 3, 1e-6);
}

TEST_F(WriteStep, bodiesOfOnePartKeepTheirNames)
{
    const TopoDS_Shape far = box(1, 1, 1).Moved(moved(5, 0, 0));
    writeStep(
        *modelOf({{u"Eins", box(1, 1, 1), Color{0, 1, 0}, {}}, {u"Zwei", far, Color{0, 0, 1}, {{1, Color{1, 1, 0}}}}}),
        folder / "b.step");
    const std::vector<Body> bodies = placed(readStep(folder / "b.step"));
    ASSERT_EQ(bodies.size(), 2u);
    EXPECT_EQ(bodies[0].name, u"Eins");
    EXPECT_EQ(bodies[0].color, (Color{0, 1, 0}));
    EXPECT_EQ(bodies[1].name, u"Zwei");
    EXPECT_EQ(bodies[1].color, (Color{0, 0, 1}));
    EXPECT_EQ(bodies[1].faceColors.size(), 1u);
    EXPECT_NEAR(boundsOf(bodies[1].shape).CornerMin().X(), 5, 1e-6);
}

TEST_F(WriteStep, numbersThatAreNoneAreRefusedAndHugeOnesDoubted)
{
    const std::pair<const char*, TextNumbers> texts[] = {{"(1.,           INF,60.)", TextNumbers::None},
        {"',          -NAN);", TextNumbers::None}, {"'INF',(0.,   1.)", TextNumbers::Plain},
        {"-4.58E+115,", TextNumbers::Huge}, {"1.E+08,1.E-115", TextNumbers::Plain}};
    for (const auto& [text, numbers] : texts)
        EXPECT_EQ(numbersOf(text), numbers) << text;

    const TopoDS_Shape endless = box(10, 20, 30);
    BRep_Builder().UpdateVertex(TopoDS::Vertex(TopExp_Explorer(endless, TopAbs_VERTEX).Current()),
        gp_Pnt(0, std::numeric_limits<double>::infinity(), 0), 1e-7);
    const ModelRef model = modelOf({{u"K", endless, {}, {}}});
    EXPECT_THAT([&] { writeStep(*model, folder / "n.step"); },
        ThrowsMessage<DocumentError>(HasSubstr("n.step' can't be written: points of the model lie beyond")));
    EXPECT_FALSE(fs::exists(folder / "n.step"));
}

TEST_F(WriteStep, whatGivesReasonToDoubtIsReadBackAsIsIges)
{
    const ModelRef sound = modelOf({{u"K", box(10, 20, 30), {}, {}}});
    EXPECT_FALSE(isDoubtful(*sound));
    // A face whose border crosses itself.
    BRepBuilderAPI_MakePolygon border(gp_Pnt(20, 0, 0), gp_Pnt(30, 10, 0), gp_Pnt(30, 0, 0), gp_Pnt(20, 10, 0), true);
    const TopoDS_Shape crossed = BRepBuilderAPI_MakeFace(gp_Pln(), border.Wire()).Shape();
    const ModelRef hopeless = modelOf({{u"K", box(10, 20, 30), {}, {}}, {u"F", crossed, {}, {}}});
    EXPECT_TRUE(isDoubtful(*hopeless));
    const auto loosened = [](double tolerance) {
        const TopoDS_Shape loose = box(10, 20, 30);
        BRep_Builder().UpdateEdge(TopoDS::Edge(TopExp_Explorer(loose, TopAbs_EDGE).Current()), tolerance);
        return modelOf({{u"K", loose, {}, {}}});
    };
    EXPECT_FALSE(isDoubtful(*loosened(0.004)));
    EXPECT_TRUE(isDoubtful(*loosened(0.04)));

    EXPECT_THAT(writeStep(*sound, folder / "u.step"), ::testing::IsEmpty());
    EXPECT_THAT(writeStep(*loosened(0.004), folder / "t.step"), ::testing::IsEmpty());
    EXPECT_EQ(placed(readStep(folder / "t.step")).size(), 1u);
    EXPECT_NE(readFile(folder / "t.step").find("LENGTH_MEASURE(5.E-03)"), std::string::npos) << "its readers know";
    EXPECT_THAT(writeStep(*hopeless, folder / "h.step"),
        ElementsAre(testing::AllOf(HasSubstr("h.step' reads back with"), HasSubstr("no other way"))));
    EXPECT_TRUE(fs::exists(folder / "h.step"));
    EXPECT_THAT(writeIges(*sound, folder / "u.igs"), ::testing::IsEmpty());
    EXPECT_THAT(writeIges(*hopeless, folder / "h.igs"),
        ElementsAre(testing::AllOf(HasSubstr("h.igs' reads back with"), HasSubstr("no other way"))));
    const std::string iges = readFile(folder / "u.igs");
    EXPECT_EQ(faultOfIges(iges, *sound), "");
    EXPECT_THAT(faultOfIges(iges, *modelOf({{u"K", box(5, 40, 30), {}, {}}})), HasSubstr("a surface of 2200"));
    EXPECT_EQ(faultOfIges("S      1", *sound), "0 of 6 faces");

    const std::string text = readFile(folder / "u.step");
    EXPECT_EQ(faultOfStep(text, *sound), "");
    EXPECT_THAT(faultOfStep(text, *modelOf({{u"K", box(10, 20, 31), {}, {}}})),
        HasSubstr("a volume of 6000 mm^3 in place of 6200"));
    EXPECT_THAT(faultOfStep(text, *modelOf({{u"K", box(5, 40, 30), {}, {}}})), HasSubstr("a surface of 2200"));
    EXPECT_THAT(faultOfStep(text, *modelOf({{u"K", box(10, 20, 30), {}, {}}, {u"L", box(1, 1, 1), {}, {}}})),
        HasSubstr("6 of 12 faces"));
    EXPECT_EQ(faultOfStep("ISO-10303-21;", *sound), "no data");
}

TEST_F(WriteIges, theOptionsDecideWhatIsWritten)
{
    const fs::path file = folder / "a.igs";
    const auto types = [&](const IgesOptions& options) {
        writeIges(*assemblyModel(), file, options);
        std::map<int, int> result;
        std::istringstream lines(readFile(file));
        bool first = true;
        for (std::string line; std::getline(lines, line);) {
            if (line.size() < 73 || line[72] != 'D')
                continue;
            if (first)
                ++result[std::stoi(line.substr(0, 8))];
            first = !first;
        }
        return result;
    };
    EXPECT_EQ(types({})[144], 13) << "three bodies of 6 + 6 + 1 faces";
    const std::vector<Body> bodies = placed(readIges(file));
    double length = 0.0;
    for (const Body& body : bodies)
        length = std::max(length, boundsOf(body.shape).CornerMax().X());
    EXPECT_NEAR(length, 110, 1e-4);
    EXPECT_EQ(types({.representation = 3})[186], 3);
    EXPECT_EQ(types({.solidAndSurface = false, .wireframe = true})[144], 0);
    EXPECT_GE(types({.solidAndSurface = false, .wireframe = true})[110], 24);
    EXPECT_EQ(types({.system = 1})[128], 13) << "each face on a B-spline surface";
    expectError(ErrorKind::Unsupported, "leave nothing", [&] { types({.solidAndSurface = false}); });
}

/// The box of a scene that the kernel's own reader has read.
Bnd_Box boxOfScene(const fs::path& file)
{
    std::ifstream stream(file);
    VrmlData_Scene scene;
    scene << stream;
    EXPECT_EQ(scene.Status(), VrmlData_StatusOK);
    VrmlData_DataMapOfShapeAppearance appearances;
    const TopoDS_Shape shape = scene.GetShape(appearances);
    Bnd_Box box;
    BRepBndLib::Add(shape, box);
    box.SetGap(0.0);
    return box;
}

TEST_F(WriteVrml, bodiesBecomeShapesWithTheirColoursAndInstancesAreNamedAgain)
{
    writeVrml(*assemblyModel(), folder / "a.wrl", {.unit = LengthUnit::Meters});
    const std::string text = readFile(folder / "a.wrl");
    EXPECT_TRUE(text.starts_with("#VRML V2.0 utf8\n"));
    EXPECT_EQ(countOf(text, "IndexedFaceSet"), 3u) << "red, blue and the ball";
    EXPECT_EQ(countOf(text, "diffuseColor 0 0 1"), 1u);
    EXPECT_THAT(text, HasSubstr("Kiste_1 Transform { translation 0.1 0 0 "));
    EXPECT_EQ(countOf(text, "USE G3_Kiste"), 1u);
    const Bnd_Box box = boxOfScene(folder / "a.wrl");
    EXPECT_NEAR(box.CornerMin().X(), -0.2, 1e-6);
    EXPECT_NEAR(box.CornerMax().X(), 0.11, 1e-6);
    EXPECT_NEAR(box.CornerMax().Z(), 0.03, 1e-6);
}

/// A turned instance with a colour of its own, in a turned assembly.
TEST_F(WriteVrml, instancesTurnAndHaveTheirOwnColours)
{
    const ModelRef block = modelOf({{u"Box", box(10, 20, 30), {}, {}}}, u"Box");
    gp_Trsf turn;
    turn.SetRotation(gp_Ax1(gp_Pnt(0, 0, 0), gp_Dir(1, 0, 0)), M_PI / 2);
    auto inner = std::make_shared<Model>();
    inner->children = {{u"A", gp_Trsf(), block, Color{1, 0, 0}}, {u"B", turn, block, Color{0, 1, 0}}};
    auto outer = std::make_shared<Model>();
    outer->children = {{u"C", moved(0, 0, 5) * turn, inner}};
    writeVrml(*outer, folder / "t.wrl");
    const std::string text = readFile(folder / "t.wrl");
    EXPECT_EQ(countOf(text, "diffuseColor 1 0 0"), 1u);
    EXPECT_EQ(countOf(text, "diffuseColor 0 1 0"), 1u);
    const Bnd_Box scene = boxOfScene(folder / "t.wrl");
    const Bnd_Box model = boundsOf(*outer);
    EXPECT_NEAR(scene.CornerMin().Distance(model.CornerMin()), 0, 1e-6);
    EXPECT_NEAR(scene.CornerMax().Distance(model.CornerMax()), 0, 1e-6);
}

TEST(ComponentFiles, oneForEachPlacedPart)
{
    auto outer = std::make_shared<Model>();
    outer->name = u"Außen";
    outer->children = {{u"Gruppe-1", moved(0, 0, 7), assemblyModel()}, {u"A/B", gp_Trsf(), boxModel(1, 1, 1)}};
    std::vector<fs::path> names;
    const std::vector<ModelFile> files = componentFiles(outer, "/out/x.stl");
    names.reserve(files.size());
    for (const ModelFile& file : files)
        names.push_back(file.file);
    EXPECT_THAT(names,
        ::testing::ElementsAre("/out/x - Gruppe-1 - Kiste-1.stl", "/out/x - Gruppe-1 - Kiste-2.stl",
            "/out/x - Gruppe-1 - Ball-1.stl", "/out/x - A_B.stl"));
    EXPECT_NEAR(boundsOf(*files[1].model).CornerMin().X(), -200, 1e-6);
    EXPECT_NEAR(boundsOf(*files[1].model).CornerMin().Z(), 7, 1e-6);
    EXPECT_EQ(componentFiles(boxModel(1, 1, 1), "/out/y.stl").at(0).file, "/out/y.stl");
}

TEST_F(Write, bodiesGoToWhatCanHoldThem)
{
    const ModelRef curve = modelOf({{u"K", BRepBuilderAPI_MakeEdge(gp_Pnt(0, 0, 0), gp_Pnt(1, 2, 3)).Shape(), {}, {}}});
    expectError(ErrorKind::Unsupported, "no faces", [&] { writeStl(*curve, folder / "k.stl"); });
    writeStep(*curve, folder / "k.step");
    EXPECT_EQ(placed(readStep(folder / "k.step")).size(), 1u);
    expectError(ErrorKind::Unsupported, "no geometry", [&] { writeStep(Model(), folder / "n.step"); });

    const TopoDS_Shape ball = BRepPrimAPI_MakeSphere(5).Shape();
    ASSERT_EQ(mesh(ball, MeshQuality::Coarse).lost, 0u);
    BRepTools::CleanGeometry(ball);
    const ModelRef tessellation = modelOf({{u"T", ball, {}, {}}});
    writeStl(*tessellation, folder / "t.stl", {.keepPosition = true});
    EXPECT_NEAR(readBinaryStl(folder / "t.stl").volume, 4.0 / 3 * M_PI * 125, 15);
    expectError(ErrorKind::Unsupported, "only a tessellation", [&] { writeStep(*tessellation, folder / "t.step"); });
    expectError(ErrorKind::Unsupported, "only a tessellation", [&] { writeIges(*tessellation, folder / "t.igs"); });

    const TopoDS_Shape face = TopExp_Explorer(box(1, 1, 1), TopAbs_FACE).Current();
    const ModelRef surface = modelOf({{u"F", face, {}, {}}});
    writeStl(*surface, folder / "f.stl");
    EXPECT_EQ(readBinaryStl(folder / "f.stl").count, 2u);
    writeStep(*surface, folder / "f.step");
    EXPECT_EQ(placed(readStep(folder / "f.step")).size(), 1u);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 4) << "failed writers leave nothing";
}

TEST_F(Write, aFailedWriteLeavesWhatWasThere)
{
    std::ofstream(folder / "a.stl") << "before";
    std::ofstream(folder / "a.step") << "before";
    // A file that may not grow fails as a full disk does.
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto previous = signal(SIGXFSZ, SIG_IGN);
    const rlimit small{100, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    expectError(ErrorKind::NotWritable, "a.stl' can't be written: File too large.",
        [&] { writeStl(*boxModel(1, 1, 1), folder / "a.stl"); });
    expectError(ErrorKind::NotWritable, "a.step' can't be written: File too large.",
        [&] { writeStep(*boxModel(1, 1, 1), folder / "a.step"); });
    setrlimit(RLIMIT_FSIZE, &before);
    signal(SIGXFSZ, previous);
    EXPECT_EQ(readFile(folder / "a.stl"), "before");
    EXPECT_EQ(readFile(folder / "a.step"), "before");
    expectError(ErrorKind::NotWritable, "No such file or directory",
        [&] { writeStl(*boxModel(1, 1, 1), folder / "no folder" / "a.stl"); });
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 2);
}
