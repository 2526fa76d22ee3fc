#include "tests/support/Shell.h"
#include "tests/zentrel/Documents.h"
#include "zentrel/formats/Extent.h"
#include "zentrel/formats/Mesh.h"
#include "zentrel/formats/Projection.h"
#include "zentrel/formats/WriteDrawing.h"
#include "zentrel/kernel/KernelLimits.h"
#include "zentrel/model/Build.h"
#include "zentrel/model/Describe.h"

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepTools.hxx>
#include <fstream>

using namespace zn::zentrel;
using namespace zn::zentrel::test;
using ::testing::Not;
using zn::test::outputOf;

namespace {

/// A plate of 100 x 60 x 20 with a hole of 20 through it from above.
TopoDS_Shape plate()
{
    const gp_Ax2 axis(gp_Pnt(50, 30, -1), gp_Dir(0, 0, 1));
    return BRepAlgoAPI_Cut(box(100, 60, 20), BRepPrimAPI_MakeCylinder(axis, 10, 22).Shape());
}

void writePlate(const fs::path& file, std::optional<Color> color = {})
{
    writeDocument(partOf({{u"Default", {u"Platte", plate(), color, {}}}}), file);
}

DrawingDocument twoSheets(const fs::path& folder)
{
    writePlate(folder / "plate.zenprt", Color{1, 0, 0});
    draw(folder / "d.zendrw",
        {{u"Лист 1", PaperSize::A3, true, folder / "plate.zenprt", {}},
            {u"Detail", PaperSize::A4, false, folder / "plate.zenprt", {}}});
    return readDrawing(folder / "d.zendrw");
}

/// The entities of a DXF file: type, then its group codes and values.
struct Entity {
    std::string type;
    std::multimap<int, std::string> groups;

    double number(int code) const { return std::stod(groups.find(code)->second); }
    std::string layer() const { return groups.find(8)->second; }
};

std::vector<Entity> entitiesOf(const fs::path& file)
{
    std::ifstream stream(file);
    std::vector<Entity> entities;
    bool inEntities = false;
    std::string code;
    for (std::string value; std::getline(stream, code) && std::getline(stream, value);) {
        value.erase(value.find_last_not_of('\r') + 1);
        if (value == "ENTITIES")
            inEntities = true;
        else if (inEntities && std::stoi(code) == 0)
            entities.push_back({value, {}});
        else if (!entities.empty())
            entities.back().groups.emplace(std::stoi(code), value);
    }
    return entities;
}

std::size_t countOf(const std::vector<Entity>& entities, const std::string& type, const std::string& layer)
{
    return static_cast<std::size_t>(std::count_if(entities.begin(), entities.end(),
        [&](const Entity& entity) { return entity.type == type && entity.layer() == layer; }));
}

using WriteDxf = FolderTest;
using WritePdf = FolderTest;
using Samples = FolderTest;

} // namespace

TEST(Projection, aPlateFromAboveAndFromTheFront)
{
    Model model;
    model.bodies = {{u"Platte", plate(), {}, {}}};
    const std::vector<Stroke> top = project(model, gp_Dir(0, 0, 1), gp_Dir(0, 1, 0), 0.01, false, "p.zenprt");
    std::vector<Arc> circles;
    double length = 0.0;
    for (const Stroke& stroke : top) {
        if (stroke.arc)
            circles.push_back(*stroke.arc);
        else
            length += std::hypot(
                stroke.points.back()[0] - stroke.points.front()[0], stroke.points.back()[1] - stroke.points.front()[1]);
    }
    ASSERT_GE(circles.size(), 1u);
    EXPECT_NEAR(circles[0].radius, 10, 1e-9);
    EXPECT_NEAR(circles[0].center[0], 50, 1e-9);
    EXPECT_NEAR(circles[0].center[1], 30, 1e-9);
    EXPECT_NEAR(length, 2 * (100 + 60), 1e-6);

    double hidden = 0.0;
    for (const Stroke& stroke : project(model, gp_Dir(0, -1, 0), gp_Dir(0, 0, 1), 0.01, true, "p.zenprt")) {
        if (stroke.kind == LineKind::Hidden)
            hidden += std::hypot(
                stroke.points.back()[0] - stroke.points.front()[0], stroke.points.back()[1] - stroke.points.front()[1]);
    }
    EXPECT_NEAR(hidden, 2 * 20, 0.1) << "the sides of the hole; all else lies behind visible lines";

    // Without its surfaces the plate shows the sharp edges of its mesh: those of the box, and the hole's two rims.
    Model meshed = model;
    ASSERT_EQ(mesh(meshed.bodies[0].shape, MeshQuality::Fine).lost, 0u);
    BRepTools::CleanGeometry(meshed.bodies[0].shape);
    double visible = 0.0;
    for (const Stroke& stroke : project(meshed, gp_Dir(0, 0, 1), gp_Dir(0, 1, 0), 0.01, false, "p.zenprt"))
        visible += std::hypot(stroke.points[1][0] - stroke.points[0][0], stroke.points[1][1] - stroke.points[0][1]);
    EXPECT_NEAR(visible, 2 * (100 + 60) + 2 * M_PI * 10, 0.5);
}

TEST(Projection, strokesOutOfABodysBoxAreFound)
{
    Extent box;
    box.add({0.0, 0.0});
    box.add({10.0, 5.0});
    const Arc half{{5.0, 2.0}, 4.0, 0.0, M_PI, false};
    const std::vector<Point2> ends{{9.0, 2.0}, {1.0, 2.0}};
    EXPECT_FALSE(box.holds(extentOf({{LineKind::Visible, {}, ends, half}}), 0.5)) << "its ends are within";
    EXPECT_TRUE(box.holds(extentOf({{LineKind::Visible, {}, ends, half}}), 1.5));
    EXPECT_TRUE(box.holds(extentOf({{LineKind::Visible, {}, {{0.0, 0.0}, {10.0, 5.0}}, {}}}), 0.0));
    EXPECT_FALSE(box.holds(extentOf({{LineKind::Hidden, {}, {{5.0, 2.0}, {-900.0, 3.0}}, {}}}), 1.0));
}

TEST(Projection, polylinesStayWithinTheTolerance)
{
    // A drum on its side, seen aslant: its rims are ellipses.
    const gp_Ax2 axis(gp_Pnt(0, 0, 0), gp_Dir(1, 0, 0));
    Model model;
    model.bodies = {{u"Trommel", BRepPrimAPI_MakeCylinder(axis, 50, 20).Shape(), {}, {}}};
    std::size_t before = 0;
    for (const double tolerance : {1.0, 0.01}) {
        std::size_t points = 0;
        double lowest = 0.0;
        for (const Stroke& stroke : project(model, gp_Dir(1, -1, 0), gp_Dir(0, 0, 1), tolerance, false, "p.zenprt")) {
            points += stroke.points.size();
            for (const Point2& point : stroke.points)
                lowest = std::min(lowest, point[1]);
        }
        EXPECT_NEAR(lowest, -50, tolerance);
        EXPECT_GT(points, before);
        before = points + 20;
    }
}

TEST_F(WriteDxf, aViewIsProjectedOnceForAllSheetsAndFormats)
{
    const DrawingDocument drawing = twoSheets(folder.path());
    writePdf(drawing, folder / "d.zendrw", folder / "d.pdf");
    // Whatever a new child of the kernel's does now fails.
    const KernelLimits before = kernelLimits(); // NOLINT(performance-unnecessary-copy-initialization): it changes
    setKernelLimits({std::chrono::seconds(60), 1, {}});
    fs::copy_file(folder / "plate.zenprt", folder / "copy.zenprt");
    DrawingDocument other = drawing;
    other.sheets[0].views[0].model = folder / "copy.zenprt";
    writeDxf(other, folder / "d.zendrw", folder / "d.dxf", {{u"Лист 1", u"Detail"}});
    EXPECT_GE(countOf(entitiesOf(folder / "d.dxf"), "LINE", "VISIBLE"), 24u);
    DrawingDocument turned = drawing;
    turned.sheets[0].views[0].direction = gp_Dir(1, 2, 3);
    EXPECT_THROW(writeDxf(turned, folder / "d.zendrw", folder / "t.dxf"), DocumentError);
    writePlate(folder / "plate.zenprt", Color{0, 0, 1});
    EXPECT_THROW(writeDxf(drawing, folder / "d.zendrw", folder / "t.dxf"), DocumentError) << "the content has changed";
    setKernelLimits(before);
}

TEST_F(WriteDxf, theActiveSheetInItsPlace)
{
    const DrawingDocument drawing = twoSheets(folder.path());
    writeDxf(drawing, folder / "d.zendrw", folder / "d.dxf");
    const std::string text = readFile(folder / "d.dxf");
    EXPECT_TRUE(text.starts_with("  0\r\nSECTION\r\n  2\r\nHEADER\r\n  9\r\n$ACADVER\r\n  1\r\nAC1009\r\n"));
    EXPECT_TRUE(text.ends_with("  0\r\nENDSEC\r\n  0\r\nEOF\r\n"));

    const std::vector<Entity> entities = entitiesOf(folder / "d.dxf");
    const auto circle = std::find_if(
        entities.begin(), entities.end(), [](const Entity& e) { return e.type == "CIRCLE" && e.layer() == "VISIBLE"; });
    ASSERT_NE(circle, entities.end());
    const View& top = drawing.sheets[0].views[1];
    EXPECT_NEAR(circle->number(40), 10 * drawing.sheets[0].scale, 1e-6);
    EXPECT_NEAR(circle->number(10), top.x, 1e-4) << "the hole stands in the middle of its view";
    EXPECT_NEAR(circle->number(20), top.y, 1e-4);
    EXPECT_GE(countOf(entities, "LINE", "VISIBLE"), 12u);
    EXPECT_GE(countOf(entities, "LINE", "HIDDEN"), 4u);
    std::vector<std::string> texts;
    for (const Entity& entity : entities) {
        if (entity.type == "TEXT")
            texts.push_back(entity.groups.find(1)->second);
    }
    EXPECT_THAT(texts, ElementsAre("d", "\\U+041B\\U+0438\\U+0441\\U+0442 1", "A3", "1:1"));
}

TEST_F(WritePdf, aPageForEachSheetInItsSize)
{
    const DrawingDocument drawing = twoSheets(folder.path());
    const std::string pdf = (folder / "все.pdf").string();
    writePdf(drawing, folder / "d.zendrw", pdf, {.headerFooter = true});
    const std::string info = outputOf("pdfinfo -l 9 '" + pdf + "'");
    EXPECT_THAT(info, HasSubstr("Pages:           2"));
    EXPECT_THAT(info, HasSubstr("Page    1 size:  1190.55 x 841.89 pts (A3)"));
    EXPECT_THAT(info, HasSubstr("Page    2 size:  595.276 x 841.89 pts (A4)"));
    const std::string text = outputOf("pdftotext -layout '" + pdf + "' -");
    for (const char* words : {"Лист 1", "Detail", "d.zendrw", "Page 1 of 2", "Page 2 of 2", "A3"})
        EXPECT_THAT(text, HasSubstr(words));
    EXPECT_THAT(outputOf("pdfimages -list '" + pdf + "'"), Not(HasSubstr("image "))) << "vectors, no picture";

    // Letters come from whichever font has them.
    writePdf(drawing, folder / "图纸 ポンプ.zendrw", pdf, {.sheets = {u"Detail"}, .headerFooter = true});
    EXPECT_THAT(outputOf("pdfinfo '" + pdf + "'"), HasSubstr("Pages:           1"));
    EXPECT_THAT(outputOf("pdftotext '" + pdf + "' -"), AllOf(Not(HasSubstr("Лист")), HasSubstr("图纸 ポンプ.zendrw")));
}

TEST_F(Samples, areWhatTheirNamesSay)
{
    const fs::path samples = fs::path(ZN_SOURCE_DIR) / "samples";
    const DocumentInfo part = describe(samples / "Bracket.zenprt");
    ASSERT_EQ(part.configurations.size(), 3u);
    EXPECT_EQ(part.configurations[1].name, u"Medium");
    EXPECT_NEAR(part.configurations[1].size[0], 80, 1e-6);
    const DocumentInfo assembly = describe(samples / "Stand.zenasm");
    ASSERT_EQ(assembly.components.size(), 3u);
    EXPECT_EQ(assembly.components[0].path, samples / "Bracket.zenprt");
    EXPECT_TRUE(assembly.components[2].isVirtual);
    const double pin = M_PI * 9.5 * 9.5 * 60;
    EXPECT_NEAR(assembly.configurations[0].volume, 2 * part.configurations[1].volume + pin, 1);
    const fs::path drawing = samples / "Чертёж.zendrw";
    writePdf(readDrawing(drawing), drawing, folder / "x.pdf");
    EXPECT_THAT(outputOf("pdftotext '" + (folder / "x.pdf").string() + "' -"), HasSubstr("Чертёж"));
}

TEST_F(WritePdf, colourAndLineWeightsFollowTheOptions)
{
    const DrawingDocument drawing = twoSheets(folder.path());
    const auto picture = [&](const PdfOptions& options) {
        writePdf(drawing, folder / "d.zendrw", folder / "d.pdf", options);
        outputOf("pdftoppm -r 100 -f 1 -l 1 '" + (folder / "d.pdf").string() + "' '" + (folder / "d").string() + "'");
        std::size_t colored = 0;
        std::size_t dark = 0;
        const std::string pixels = readFile(folder / "d-1.ppm");
        for (std::size_t at = pixels.size() % 3; at + 2 < pixels.size(); at += 3) {
            const auto channel = [&](std::size_t i) { return static_cast<unsigned char>(pixels[at + i]); };
            colored += channel(0) > channel(1) + 60;
            dark += channel(1) < 128;
        }
        return std::pair(colored, dark);
    };
    const auto [coloredPixels, darkPixels] = picture({});
    EXPECT_GT(coloredPixels, 500u);
    const auto [none, black] = picture({.color = false});
    EXPECT_EQ(none, 0u);
    EXPECT_GT(black, 500u);
    const auto [still, thin] = picture({.color = false, .lineWeights = false});
    EXPECT_LT(thin, black) << "0.25 mm for the frame's 0.5";
}

TEST_F(WritePdf, whatIsMissingIsNamedAndNothingIsWritten)
{
    DrawingDocument drawing = twoSheets(folder.path());
    expectError(ErrorKind::InvalidArgument, "no sheet 'Blatt'",
        [&] { writePdf(drawing, folder / "d.zendrw", folder / "x.pdf", {.sheets = {u"Blatt"}}); });
    fs::remove(folder / "plate.zenprt");
    expectError(ErrorKind::NotFound, "plate.zenprt", [&] { writePdf(drawing, folder / "d.zendrw", folder / "x.pdf"); });
    EXPECT_FALSE(fs::exists(folder / "x.pdf"));
}
