#include "zentrel/model/Container.h"
#include "tests/zentrel/Documents.h"
#include "zentrel/model/Build.h"
#include "zentrel/model/Describe.h"

#include <BRep_Builder.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <TopoDS_Compound.hxx>
#include <zip.h>

using namespace zn::zentrel;
using namespace zn::zentrel::test;

namespace {

PartDocument boxAndCylinder()
{
    PartDocument part;
    part.configurations = {{u"Small", {{u"Block", box(10, 20, 30), Color{1, 0.5, 0}, {}}}, {{u"Mass", u"6 g"}}},
        {u"Größe 2 – 大", {{u"Pin", BRepPrimAPI_MakeCylinder(5.0, 40.0).Shape(), {}, {{2, Color{0, 0, 1}}}}}, {}}};
    part.active = 1;
    part.properties = {{u"Number", u"4711"}, {u"Имя", u"Болт"}};
    return part;
}

/// Replaces or removes (empty content) an entry of a container.
void changeEntry(const fs::path& file, const char* name, const std::string& content)
{
    zip_t* archive = zip_open(file.c_str(), 0, nullptr);
    ASSERT_NE(archive, nullptr);
    if (content.empty())
        zip_delete(archive, static_cast<zip_uint64_t>(zip_name_locate(archive, name, 0)));
    else
        zip_file_add(archive, name, zip_source_buffer(archive, content.data(), content.size(), 0), ZIP_FL_OVERWRITE);
    ASSERT_EQ(zip_close(archive), 0);
}

void expectUnread(const fs::path& file, ErrorKind kind, const std::string& words)
{
    EXPECT_THAT(expectError(kind, words, [&] { readDocument(file); }), HasSubstr(file.filename().string()));
}

using Container = FolderTest;

} // namespace

TEST_F(Container, geometryThatFewBytesMultiplyIsRefusedAtOnce)
{
    TopoDS_Shape shape = box(1, 2, 3);
    for (int level = 0; level < 60; ++level) {
        TopoDS_Compound twice;
        BRep_Builder builder;
        builder.MakeCompound(twice);
        builder.Add(twice, shape);
        builder.Add(twice, shape);
        shape = twice;
        if (level == 9)
            writeDocument(partOf({{u"A", {u"B", shape, {}, {}}}}), folder / "some.zenprt");
    }
    writeDocument(partOf({{u"A", {u"B", shape, {}, {}}}}), folder / "all.zenprt");
    EXPECT_EQ(readPart(folder / "some.zenprt").configurations[0].bodies[0].shape.facts().faces, 6144u);
    expectUnread(folder / "all.zenprt", ErrorKind::Damaged, "shapes/0.brep' can't be read (it has more than 10000000");
}

TEST_F(Container, aPartComesBackAsItWas)
{
    const fs::path file = folder / "Болт.zenprt";
    writeDocument(boxAndCylinder(), file);
    const PartDocument part = readPart(file);

    ASSERT_EQ(part.configurations.size(), 2u);
    EXPECT_EQ(part.active, 1u);
    EXPECT_EQ(part.properties.at(u"Имя"), u"Болт");
    EXPECT_EQ(part.configurations[0].properties.at(u"Mass"), u"6 g");
    EXPECT_EQ(part.configurations[0].bodies[0].color, (Color{1, 0.5, 0}));
    EXPECT_EQ(part.configurations[1].name, u"Größe 2 – 大");
    EXPECT_EQ(part.configurations[1].bodies[0].faceColors.at(2), (Color{0, 0, 1}));
    const DocumentInfo info = describe(file);
    EXPECT_NEAR(info.configurations[0].volume, 6000.0, 1e-6);
    EXPECT_EQ(info.configurations[0].faces, 6u);
    EXPECT_NEAR(info.configurations[1].volume, 1000.0 * M_PI, 1e-6);
    EXPECT_NEAR(info.configurations[1].size[2], 40.0, 1e-6);
}

TEST_F(Container, equalDocumentsGiveEqualFilesAndNothingElseIsLeft)
{
    writeDocument(boxAndCylinder(), folder / "a.zenprt");
    writeDocument(boxAndCylinder(), folder / "b.zenprt");
    EXPECT_EQ(readFile(folder / "a.zenprt"), readFile(folder / "b.zenprt"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 2);
}

TEST_F(Container, badFilesGiveASentenceAndAKind)
{
    const fs::path good = folder / "good.zenprt";
    writeDocument(boxAndCylinder(), good);
    const std::string bytes = readFile(good);
    const auto changed = [&](const char* name, const char* entry, const std::string& content) {
        fs::copy_file(good, folder / name);
        changeEntry(folder / name, entry, content);
        return folder / name;
    };

    expectUnread(folder / "none.zenprt", ErrorKind::NotFound, "isn't there");
    writeFile(folder / "empty.zenprt", "");
    expectUnread(folder / "empty.zenprt", ErrorKind::Damaged, "is empty");
    for (const std::size_t part : {1u, 3u, 9u}) {
        writeFile(folder / "cut.zenprt", bytes.substr(0, bytes.size() * part / 10));
        expectUnread(folder / "cut.zenprt", ErrorKind::Damaged, "truncated");
    }
    writeFile(folder / "step.zenprt", "ISO-10303-21;\nHEADER;");
    expectUnread(folder / "step.zenprt", ErrorKind::Damaged, "something else");
    std::string flipped = bytes;
    flipped[bytes.find("shapes/0.brep") + 60] ^= 0x40;
    writeFile(folder / "flipped.zenprt", flipped);
    expectUnread(folder / "flipped.zenprt", ErrorKind::Damaged, "'shapes/0.brep'");
    expectUnread(changed("lost.zenprt", "shapes/1.brep", ""), ErrorKind::Damaged, "'shapes/1.brep' is missing");
    expectUnread(changed("noise.zenprt", "shapes/1.brep", "no geometry"), ErrorKind::Damaged, "can't be read");
    expectUnread(changed("text.zenprt", "manifest.json", "{]"), ErrorKind::Damaged, "manifest");
    expectUnread(changed("future.zenprt", "manifest.json", R"({"format": "zentrel-part", "version": 2, "new": 1})"),
        ErrorKind::FutureVersion, "later version");
    expectUnread(
        changed("none2.zenprt", "manifest.json",
            R"({"format": "zentrel-part", "version": 1, "active": 0, "properties": {}, "configurations": []})"),
        ErrorKind::Damaged, "no configuration");
    fs::copy_file(good, folder / "part.zenasm");
    expectUnread(folder / "part.zenasm", ErrorKind::Damaged, "holds a part, not an assembly");
}

TEST_F(Container, aFailedSaveLeavesWhatWasThere)
{
    const fs::path file = folder / "kept.zenprt";
    writeDocument(boxAndCylinder(), file);
    const std::string before = readFile(file);
    PartDocument broken = boxAndCylinder();
    broken.configurations[1].name = u"SMALL";
    EXPECT_THROW(writeDocument(broken, file), DocumentError);
    EXPECT_THROW(writeDocument(boxAndCylinder(), folder / "no such folder" / "x.zenprt"), DocumentError);
    EXPECT_THROW(writeDocument(boxAndCylinder(), folder.path()), DocumentError);
    EXPECT_EQ(readFile(file), before);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
}

TEST_F(Container, documentsMovedTogetherFindEachOther)
{
    fs::create_directories(folder / "old/parts");
    writeDocument(boxAndCylinder(), folder / "old/parts/p.zenprt");
    assemble(folder / "old/a.zenasm", {{folder / "old/parts/p.zenprt", false}, {folder / "old/parts/p.zenprt", true}});
    draw(folder / "old/d.zendrw", {{u"One", PaperSize::A3, true, folder / "old/a.zenasm", {}}});
    fs::rename(folder / "old", folder / "new");

    const AssemblyDocument assembly = readAssembly(folder / "new/a.zenasm");
    ASSERT_EQ(assembly.components.size(), 2u);
    EXPECT_EQ(assembly.components[0].path, folder / "new/parts/p.zenprt");
    EXPECT_EQ(assembly.components[0].name, u"p-1");
    EXPECT_TRUE(assembly.components[1].isVirtual());
    EXPECT_EQ(readDrawing(folder / "new/d.zendrw").sheets[0].views[0].model, folder / "new/a.zenasm");

    // Copied into one folder without the structure, the name alone leads there.
    fs::rename(folder / "new/parts/p.zenprt", folder / "new/p.zenprt");
    EXPECT_EQ(readAssembly(folder / "new/a.zenasm").components[0].path, folder / "new/p.zenprt");
}
