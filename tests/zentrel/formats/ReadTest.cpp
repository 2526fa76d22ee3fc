#include "zentrel/formats/Read.h"
#include "platform/ContentCache.h"
#include "tests/zentrel/Documents.h"
#include "zentrel/formats/BuildPart.h"
#include "zentrel/formats/CafTree.h"
#include "zentrel/formats/ReadInKernel.h"
#include "zentrel/formats/Write.h"
#include "zentrel/kernel/KernelCache.h"
#include "zentrel/model/Describe.h"

#include <csignal>
#include <set>
#include <STEPControl_Reader.hxx>

using namespace zn::zentrel;
using namespace zn::zentrel::test;

namespace {

const fs::path samples = "/usr/share/opencascade/data";

/// The text without the STEP record that begins with `record`.
std::string withoutRecord(std::string text, const std::string& record)
{
    const auto start = text.find("\n" + record);
    EXPECT_NE(start, std::string::npos) << record;
    return text.erase(start, text.find(';', start) + 1 - start);
}

std::string replaced(std::string text, const std::string& what, const std::string& with)
{
    const auto start = text.find(what);
    EXPECT_NE(start, std::string::npos) << what;
    return text.replace(start, what.size(), with);
}

using Read = FolderTest;

} // namespace

TEST_F(Read, theDistributionsSamplesComeWhole)
{
    struct Case {
        const char* file;
        std::size_t faces;
        double volume;
    };
    for (const Case& expected : {Case{"step/screw.step", 10, 3788.27}, Case{"step/linkrods.step", 37, 3.847},
             Case{"iges/bearing.iges", 213, 0.0}, Case{"iges/hammer.iges", 45, 0.0}}) {
        SCOPED_TRACE(expected.file);
        importPart({{samples / expected.file, {}}}, folder / "p.zenprt");
        const ConfigurationInfo found = describe(folder / "p.zenprt").configurations.at(0);
        EXPECT_EQ(found.name, u"Default");
        EXPECT_EQ(found.bodies, 1u);
        EXPECT_EQ(found.faces, expected.faces);
        EXPECT_NEAR(found.volume, expected.volume, 0.001 * expected.volume);
    }
}

TEST_F(Read, aPartGetsAConfigurationForEachFile)
{
    importPart(
        {{samples / "step/screw.step", u"Schraube"}, {samples / "iges/hammer.iges", u"Молоток"}}, folder / "p.zenprt");
    const DocumentInfo info = describe(folder / "p.zenprt");
    EXPECT_EQ(info.active, u"Schraube");
    EXPECT_EQ(info.configurations.at(1).name, u"Молоток");
    EXPECT_THROW(
        importPart({{samples / "step/screw.step", u"A"}, {samples / "step/screw.step", u"a"}}, folder / "p.zenprt"),
        DocumentError);
    EXPECT_EQ(describe(folder / "p.zenprt").active, u"Schraube") << "a failed import replaces nothing";
}

TEST_F(Read, badFilesGiveASentenceAndAKind)
{
    const std::string screw = readFile(samples / "step/screw.step");
    const std::string hammer = readFile(samples / "iges/hammer.iges");
    const std::string end = "\nENDSEC;\nEND-ISO-10303-21;\n";
    struct Case {
        const char* file;
        std::string content;
        ErrorKind kind;
        const char* words;
    };
    const Case cases[] = {
        {"empty.step", "", ErrorKind::Damaged, "is empty"},
        {"empty.iges", "", ErrorKind::Damaged, "is empty"},
        {"cut.step", screw.substr(0, screw.size() / 2), ErrorKind::Damaged, "truncated"},
        {"cut.iges", hammer.substr(0, hammer.size() / 2), ErrorKind::Damaged, "truncated"},
        {"iges.step", hammer, ErrorKind::Damaged, "looks like an IGES file"},
        {"step.igs", screw, ErrorKind::Damaged, "looks like a STEP file"},
        {"pdf.stp", "%PDF-1.4\n", ErrorKind::Damaged, "looks like a PDF file"},
        {"cutAndClosed.step", screw.substr(0, screw.size() / 2) + end, ErrorKind::Damaged, "well-formed"},
        {"noData.step", screw.substr(0, screw.find("DATA;")) + "DATA;" + end, ErrorKind::Incomplete, "no geometry"},
        {"lostFace.step", withoutRecord(screw, "#14 = "), ErrorKind::Incomplete, "in part"},
        {"lostSurface.step", replaced(screw, "(#15),#49", "(#15),#999999"), ErrorKind::Incomplete,
            "1 of its 10 faces are missing"},
        {"lostSolid.step", withoutRecord(screw, "#12 = "), ErrorKind::Incomplete, "10 of its 10 faces are missing"},
        {"lostProduct.step", withoutRecord(screw, "#6 = "), ErrorKind::Incomplete, "1 of its 1 solids"},
        {"lostSurface.iges", replaced(hammer, "144,5,1,0,7;", "144,9,1,0,7;"), ErrorKind::Incomplete, "faces"},
        {"crash.step", withoutRecord(screw, "#15 = "), ErrorKind::Kernel, "crashed"},
        {"cut.stl", std::string(80, 'x') + std::string("\x02\0\0\0", 4) + std::string(50, '\1'), ErrorKind::Damaged,
            "truncated"},
        {"cutText.stl", "solid a\n facet normal 0 0 1\n", ErrorKind::Damaged, "truncated"},
        {"noFacets.stl", "solid a\nendsolid a\n", ErrorKind::Damaged, "well-formed"},
        {"step.stl", screw, ErrorKind::Damaged, "looks like a STEP file"},
        {"other.sldx", screw, ErrorKind::Unsupported, "only STEP"},
    };
    for (const Case& bad : cases) {
        SCOPED_TRACE(bad.file);
        writeFile(folder / bad.file, bad.content);
        EXPECT_THAT(expectError(bad.kind, bad.words, [&] { readForeign(folder / bad.file); }), HasSubstr(bad.file));
    }
    EXPECT_THROW(readForeign(folder / "none.step"), DocumentError);
}

namespace {

/// The text with further STEP records at the end of its data.
std::string withRecords(const std::string& text, const std::string& records)
{
    return replaced(text, "\nENDSEC;\nEND-ISO", "\n" + records + "\nENDSEC;\nEND-ISO");
}

} // namespace

TEST_F(Read, whatIsNoGeometryMayBeBrokenOrMissing)
{
    const std::string screw = readFile(samples / "step/screw.step");
    const std::string loneFace = "#9000=PLANE('',#9001);#9001=AXIS2_PLACEMENT_3D('',#9002,$,$);"
                                 "#9002=CARTESIAN_POINT('',(0.,0.,0.));#9003=ADVANCED_FACE('',(),#9000,.T.);";
    const std::string brokenPoint = "#9010=CARTESIAN_POINT('',('x',0.,0.));#9011=DIRECTION('',(1.,0.,0.));"
                                    "#9012=VECTOR('',#9011,1.);#9013=LINE('',#9010,#9012);";
    struct Case {
        const char* file;
        std::string records;
        const char* refusal; ///< null: the file is read
    };
    const Case cases[] = {
        {"number.step", "#9000=INTEGER_REPRESENTATION_ITEM('count',4.5);", nullptr},
        {"text.step", "#9000=TEXT_LITERAL('','x',#9001,'left',.RIGHT.,$);#9001=AXIS2_PLACEMENT_3D('',$,$,$);", nullptr},
        {"note.step", brokenPoint + "#9014=ANNOTATION_CURVE_OCCURRENCE('',(),#9013);", nullptr},
        {"aid.step", loneFace + "#9004=CONSTRUCTIVE_GEOMETRY_REPRESENTATION('',(#9003),#1236);", nullptr},
        {"name.step", "#9000=DIRECTION(7,(1.,0.,0.));", nullptr},
        {"face.step", loneFace, "1 of its 11 faces"},
        {"styledFace.step", loneFace + "#9004=STYLED_ITEM('',(),#9003);", "1 of its 11 faces"},
        {"point.step", brokenPoint, "of its entities are broken"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.file);
        writeFile(folder / one.file, withRecords(screw, one.records));
        if (one.refusal) {
            expectError(ErrorKind::Incomplete, one.refusal, [&] { readForeign(folder / one.file); });
            continue;
        }
        Remarks remarks;
        EXPECT_EQ(distinctBodies(readForeign(folder / one.file, &remarks)).at(0).shape.facts().faces, 10u);
        EXPECT_THAT(remarks, ::testing::IsEmpty());
    }
}

TEST_F(Read, paddingBehindTheEndIsNoDamage)
{
    for (const char* sample : {"step/screw.step", "iges/hammer.iges"}) {
        const std::string content = readFile(samples / sample);
        const fs::path file = folder / fs::path(sample).filename();
        for (const std::string& padding :
            {std::string(9001, '\0'), std::string(5000, ' '), std::string("\r\n\x1a\0", 4)}) {
            writeFile(file, content + padding);
            EXPECT_EQ(distinctBodies(readForeign(file)).size(), 1u) << padding.size();
        }
        writeFile(file, std::string(9001, '\0'));
        expectError(ErrorKind::Damaged, "is empty", [&] { readForeign(file); });
    }
}

ForeignFile crashNamed(const fs::path&, ReadWay way)
{
    if (way == ReadWay::Named)
        raise(SIGSEGV);
    PartDocument plain = partOf({{u"Default", {u"Box", box(1, 2, 3), {}, {}}}});
    plain.name = u"plain";
    return {plain, true};
}

ForeignFile refuse(const fs::path&, ReadWay) { throw DocumentError(ErrorKind::Incomplete, "Lost."); }

ForeignFile hopeless(const fs::path&, ReadWay way)
{
    if (way == ReadWay::Named)
        raise(SIGSEGV);
    throw DocumentError(ErrorKind::Incomplete, "Lost.");
}

TEST_F(Read, whereTheNamedReaderCrashesThePlainOneIsTried)
{
    writeFile(folder / "a.step", "x");
    Remarks remarks;
    EXPECT_EQ(
        std::get<PartDocument>(readInKernel(folder / "a.step", "crash", packed<crashNamed>, &remarks)).name, u"plain");
    EXPECT_THAT(remarks, ElementsAre(HasSubstr("a.step' was read without its names and colours")));
    expectError(
        ErrorKind::Incomplete, "Lost.", [&] { readInKernel(folder / "a.step", "refuse", packed<refuse>, nullptr); });
    expectError(
        ErrorKind::Kernel, "crashed", [&] { readInKernel(folder / "a.step", "hopeless", packed<hopeless>, nullptr); });
    // The plain way would give what the file holds itself for the whole.
    writeFile(folder / "parts.step",
        "ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\nDATA;\n"
        "#1=DOCUMENT_FILE('bolt.stp','',$,#2,'',$);\n"
        "#3=APPLIED_EXTERNAL_IDENTIFICATION_ASSIGNMENT('bolt.stp',#4,#5,(#1));\nENDSEC;\nEND-ISO-10303-21;\n");
    expectError(ErrorKind::Kernel, "crashed",
        [&] { readInKernel(folder / "parts.step", "crash", packed<crashNamed>, nullptr); });
}

TEST_F(Read, thePlainWayKeepsTheShapes)
{
    STEPControl_Reader reader;
    ASSERT_EQ(reader.ReadFile((samples / "step/linkrods.step").c_str()), IFSelect_RetDone);
    const auto document = newCafDocument();
    ASSERT_TRUE(transferPlainly(reader, document));
    std::size_t faces = 0;
    for (const Body& body : distinctBodies(documentOf(document)))
        faces += body.shape.facts().faces;
    EXPECT_EQ(faces, 37u);
}

TEST_F(Read, whatWasReadAndMeshedBeforeComesFromTheCache)
{
    struct Reset {
        ~Reset() { setKernelCache({}, {}); }
    } const reset;
    setKernelCache(std::make_unique<zn::ContentCache>(folder / "cache", 1 << 24), {});
    for (const char* name : {"first.step", "second.step"}) {
        writeFile(folder / name, "x");
        Remarks remarks;
        readInKernel(folder / name, "crash", packed<crashNamed>, &remarks);
        EXPECT_THAT(remarks, ElementsAre(HasSubstr(std::string(name) + "' was read without its names and colours")));
    }
    EXPECT_EQ(zn::ContentCache(folder / "cache", 1 << 24).amount().blocks, 1U);
    zn::ContentCache(folder / "cache", 1 << 24).clear();
    std::set<fs::path> known;
    const auto newBlock = [&] {
        fs::path found;
        for (const auto& entry : fs::directory_iterator(folder / "cache"))
            if (entry.path().filename() != "locks" && known.insert(entry.path()).second)
                found = entry.path();
        return found;
    };
    struct Made {
        fs::path read;
        fs::path meshed;
        std::string stl;
    };
    const auto make = [&](const char* file) {
        Made made;
        const ModelRef model = ModelLoader().load(std::get<PartDocument>(readForeign(samples / file)), file);
        made.read = newBlock();
        writeStl(*model, folder / "a.stl");
        made.meshed = newBlock();
        made.stl = zn::test::readFile(folder / "a.stl");
        return made;
    };
    const auto exchange = [&](const fs::path& one, const fs::path& other) {
        fs::rename(one, folder / "between");
        fs::rename(other, one);
        fs::rename(folder / "between", other);
    };
    const Made screw = make("step/screw.step");
    const Made rods = make("step/linkrods.step");
    ASSERT_FALSE(screw.read.empty() || screw.meshed.empty() || rods.read.empty() || rods.meshed.empty());
    ASSERT_FALSE(screw.stl == rods.stl);
    EXPECT_TRUE(make("step/screw.step").stl == screw.stl);
    exchange(screw.meshed, rods.meshed);
    EXPECT_TRUE(make("step/screw.step").stl == rods.stl);
    exchange(screw.read, rods.read);
    EXPECT_TRUE(make("step/screw.step").stl == screw.stl);
}
