#include "tests/zentrel/Documents.h"
#include "zentrel/model/Bounds.h"
#include "zentrel/model/Build.h"
#include "zentrel/model/Describe.h"
#include "zentrel/model/Packets.h"

#include <cstring>

using namespace zn::zentrel;
using namespace zn::zentrel::test;

namespace {

void writeBoxes(const fs::path& file)
{
    writeDocument(partOf({{u"S", {u"B", box(10, 10, 10), {}, {}}}, {u"L", {u"B", box(100, 50, 20), {}, {}}}}), file);
}

using Models = FolderTest;

/// Why a drawing with this view isn't written.
std::string refusal(const std::function<void(Sheet&, View&)>& spoil)
{
    Sheet sheet;
    sheet.name = u"S";
    View& view = sheet.views.emplace_back();
    view.name = u"V";
    view.model = "a.zenprt";
    spoil(sheet, view);
    DrawingDocument drawing;
    drawing.sheets = {sheet};
    try {
        writeDocument(drawing, "/nowhere/d.zendrw");
    } catch (const std::exception& error) {
        return error.what();
    }
    return "";
}

} // namespace

TEST_F(Models, fewFilesCannotMakeUpAnyNumberOfBodies)
{
    writeBoxes(folder / "0.zenprt");
    fs::path below = folder / "0.zenprt";
    for (int level = 1; level <= 19; ++level) {
        const fs::path above = folder / (std::to_string(level) + ".zenasm");
        AssemblyDocument assembly;
        for (const Text name : {u"A", u"B"})
            assembly.components.push_back({name, below, {}, {}});
        assembly.configurations = {{u"Default", {{}, {}}, {}}};
        writeDocument(assembly, above);
        below = above;
    }
    EXPECT_EQ(placedBodies(*ModelLoader().load(folder / "10.zenasm")).size(), 1024u);
    expectError(ErrorKind::Unsupported, "19.zenasm' is too large: it places more than 1000000 bodies",
        [&] { ModelLoader().load(below); });
}

TEST(DrawingRules, nameWhatIsWrong)
{
    const double none = std::nan("");
    const std::pair<std::function<void(Sheet&, View&)>, const char*> cases[] = {
        {[](Sheet&, View& v) { v.model.clear(); }, "the view 'V' shows no model"},
        {[](Sheet&, View& v) { v.up = v.direction; }, "the view 'V' has no upward direction"},
        {[](Sheet&, View& v) { v.scale = -1; }, "the view 'V' has an impossible place or scale"},
        {[&](Sheet&, View& v) { v.y = none; }, "the view 'V' has an impossible place or scale"},
        {[](Sheet& s, View&) { s.scale = 0; }, "the sheet 'S' has an impossible scale"},
        {[](Sheet& s, View&) { s.name.clear(); }, "sheet"},
    };
    for (const auto& [spoil, sentence] : cases)
        EXPECT_THAT(refusal(spoil), ::testing::HasSubstr(sentence));
}

TEST_F(Models, anAssemblyShowsItsComponentsAsTheConfigurationSays)
{
    writeBoxes(folder / "box.zenprt");
    assemble(folder / "a.zenasm",
        {{folder / "box.zenprt", false}, {folder / "box.zenprt", false}, {folder / "box.zenprt", true}});
    AssemblyDocument assembly = readAssembly(folder / "a.zenasm");
    assembly.configurations.push_back({u"Bare", {{true, false, {}}, {false, true, {}}, {false, false, u"l"}}, {}});
    writeDocument(assembly, folder / "a.zenasm");

    ModelLoader loader;
    const ModelRef all = loader.load(folder / "a.zenasm");
    ASSERT_EQ(all->children.size(), 3u);
    EXPECT_EQ(all->children[0].model, all->children[1].model) << "equal components share one model";
    const Bnd_Box box = boundsOf(*all);
    EXPECT_NEAR(box.CornerMax().X(), 34.0, 1e-9) << "three boxes of 10 with gaps of 1 + 1";
    const DocumentInfo info = describe(folder / "a.zenasm");
    EXPECT_NEAR(info.configurations[0].volume, 3000.0, 1e-6);
    EXPECT_NEAR(info.configurations[1].volume, 100000.0, 1e-6);
    EXPECT_EQ(info.configurations[1].bodies, 1u);
}

TEST_F(Models, whatCannotBeLoadedIsNamed)
{
    writeBoxes(folder / "box.zenprt");
    assemble(folder / "inner.zenasm", {{folder / "box.zenprt", false}});
    assemble(folder / "outer.zenasm", {{folder / "inner.zenasm", false}});
    fs::copy_file(folder / "outer.zenasm", folder / "inner.zenasm", fs::copy_options::overwrite_existing);
    expectError(ErrorKind::Damaged, "contains itself", [&] { ModelLoader().load(folder / "outer.zenasm"); });
    expectError(
        ErrorKind::InvalidArgument, "no configuration 'XL'", [&] { ModelLoader().load(folder / "box.zenprt", u"XL"); });
    expectError(ErrorKind::InvalidArgument, "", [&] { draw(folder / "d.zendrw", {}); });

    assemble(folder / "a.zenasm", {{folder / "box.zenprt", false}});
    fs::remove(folder / "box.zenprt");
    expectError(ErrorKind::NotFound, "box.zenprt", [&] { ModelLoader().load(folder / "a.zenasm"); });
    EXPECT_TRUE(describe(folder / "a.zenasm").components[0].isMissing);
}

TEST_F(Models, aDrawingHasItsViewsAtAStandardScale)
{
    writeBoxes(folder / "box.zenprt");
    draw(folder / "d.zendrw",
        {{u"One", PaperSize::A4, true, folder / "box.zenprt", u"L"},
            {u"Two", PaperSize::A3, false, folder / "box.zenprt", u"S"}});
    const DrawingDocument drawing = readDrawing(folder / "d.zendrw");
    ASSERT_EQ(drawing.sheets.size(), 2u);
    EXPECT_EQ(drawing.sheets[0].size(), std::pair(297.0, 210.0));
    // 100 + about 106 mm beside each other on 237 mm, 20 + about 70 mm above each other on 125 mm.
    EXPECT_DOUBLE_EQ(drawing.sheets[0].scale, 1.0);
    // 10 + 14 mm on 237 mm and 10 + 16 mm on 335 mm.
    EXPECT_DOUBLE_EQ(drawing.sheets[1].scale, 5.0);
    EXPECT_EQ(drawing.sheets[1].views.size(), 4u);
}

TEST_F(Models, equalOnesMakeEqualPackets)
{
    const auto packet = [](int filling) {
        // What lies between the values of a placement comes from wherever it is made.
        alignas(gp_Trsf) std::array<unsigned char, sizeof(gp_Trsf)> storage{};
        std::memset(storage.data(), filling, storage.size());
        auto* placement = new (storage.data()) gp_Trsf;
        placement->SetTranslation(gp_Vec(1, 2, 3));
        Model model;
        Model::Child& child = model.children.emplace_back();
        child.model = std::make_shared<Model>();
        std::memcpy(static_cast<void*>(&child.placement), storage.data(), storage.size());
        return packModel(model);
    };
    EXPECT_TRUE(packet(0x00) == packet(0xff));
    EXPECT_EQ(unpackModel(packet(0xff))->children.at(0).placement.TranslationPart().Z(), 3);
}
