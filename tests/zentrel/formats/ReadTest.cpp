#include "zentrel/formats/Read.h"
#include "tests/zentrel/Documents.h"
#include "zentrel/formats/BuildPart.h"
#include "zentrel/model/Describe.h"

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
        {"other.sldx", screw, ErrorKind::Unsupported, "only STEP"},
    };
    for (const Case& bad : cases) {
        SCOPED_TRACE(bad.file);
        writeFile(folder / bad.file, bad.content);
        EXPECT_THAT(expectError(bad.kind, bad.words, [&] { readForeign(folder / bad.file); }), HasSubstr(bad.file));
    }
    EXPECT_THROW(readForeign(folder / "none.step"), DocumentError);
}
