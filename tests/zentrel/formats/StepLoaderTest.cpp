#include "zentrel/formats/StepLoader.h"
#include "tests/zentrel/Documents.h"
#include "zentrel/formats/Part21Text.h"

#include <fmt/format.h>
#include <Interface_Check.hxx>
#include <sstream>
#include <StepData_Protocol.hxx>
#include <StepData_StepModel.hxx>
#include <StepData_StepWriter.hxx>
#include <XSControl_WorkSession.hxx>

using namespace zn::zentrel;
using namespace zn::zentrel::test;

namespace {

/// All that a reader has loaded: how it ended, what it found wrong, and the entities as the kernel writes them.
std::string loadedBy(STEPControl_Reader& reader, const fs::path& file)
{
    std::string all = fmt::format("status {}\n", static_cast<int>(reader.ReadFile(file.c_str())));
    const Handle(StepData_StepModel) model = reader.StepModel();
    if (model.IsNull())
        return all;
    const auto check = model->GlobalCheck(Standard_False);
    for (int number = 1; number <= check->NbFails(); ++number)
        all += std::string(check->CFail(number)) + "\n";
    StepData_StepWriter writer(model);
    writer.SendModel(Handle(StepData_Protocol)::DownCast(model->Protocol()));
    std::ostringstream text;
    writer.Print(text);
    return all + text.str();
}

bool isParsed(const fs::path& file) { return parsePart21(readFile(file)).has_value(); }

void expectAsTheKernel(const fs::path& file)
{
    STEPControl_Reader own;
    STEPControl_Reader kernels;
    loadFast(own);
    EXPECT_TRUE(loadedBy(own, file) == loadedBy(kernels, file)) << file;
}

std::string stepOf(const std::string& records)
{
    return "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('a','',(''),(''),'','','');\n"
           "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\nDATA;\n"
        + records + "\nENDSEC;\nEND-ISO-10303-21;\n";
}

class StepLoader : public FolderTest { };

} // namespace

TEST_F(StepLoader, FilesLoadAsByTheKernelsParser)
{
    for (const char* name : {"screw.step", "linkrods.step"}) {
        const fs::path file = fs::path("/usr/share/opencascade/data/step") / name;
        EXPECT_TRUE(isParsed(file)) << file;
        expectAsTheKernel(file);
    }
    for (const auto& seed : fs::directory_iterator(ZN_SOURCE_DIR "/tests/fuzz/seeds/step"))
        expectAsTheKernel(seed.path());
}

TEST_F(StepLoader, WhatTheTextMayHoldIsParsedOrLeftToTheKernel)
{
    const struct {
        const char* records;
        bool isParsed;
    } rows[] = {
        {"#1=CARTESIAN_POINT('',(1.,-2.5E-3,+3.));", true},
        {"#1 \t= CARTESIAN_POINT /* a, (b) */ ( 'x' , ( .5 , 0. , 1.E+2 ) ) ;", true},
        {"#1=CARTESIAN_POINT('it''s (1), '' \" x',(1.,2.,3.));#2=DIRECTION('\\X2\\0416\\X0\\',(0.,0.,1.));", true},
        {"#1=CARTESIAN_POINT('a\nb'\n ,(1.,2.,3.));", true},
        {"#2=ORIENTED_EDGE('',*,*,#1,.T.);", true},
        {"#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));", true},
        {"#1=UNCERTAINTY_MEASURE_WITH_UNIT(LENGTH_MEASURE(1.E-07),#2,'a',$);", true},
        {"#1=B_SPLINE_CURVE('',1,(#2,#3),.UNSPECIFIED.,.F.,.U.);#9=POLY_LOOP('',(#2,(#3,(#4))));", true},
        {"#1=A(\"0A\");", true},
        {"#1=A(());#2=A();", true},
        {"#1=CARTESIAN_POINT('',(1.,2.,3.)", false},
        {"#1=CARTESIAN_POINT('',(1.,2.,3.));;", false},
        {"#1=CARTESIAN_POINT('',(1E5,2.,1.e3));", false},
        {"#1=CARTESIAN_POINT('',(1.,,3.));", false},
        {"#1=CARTESIAN_POINT('',(1.,2. 3.));", false},
        {"#1=DIRECTION('',.t.);", false},
        {"#1=&SCOPE #2=DIRECTION('',(0.,0.,1.)); ENDSCOPE DIRECTION('',(0.,0.,1.));", false},
        {"#1=();", false},
        {"#1=DIRECTION('',(0.,0.,1.)", false},
    };
    for (const auto& row : rows) {
        const fs::path file = folder / "a.step";
        writeFile(file, stepOf(row.records));
        EXPECT_EQ(isParsed(file), row.isParsed) << row.records;
        if (row.isParsed) // the kernel's parser comes to no end in some of the others
            expectAsTheKernel(file);
    }
    writeFile(folder / "a.step", stepOf("#1\n=DIRECTION('',(0.,0.,1.));"));
    EXPECT_TRUE(isParsed(folder / "a.step")) << "the kernel takes the name for a reference";
    writeFile(folder / "a.step", stepOf("#1=A(" + std::string(500, '(') + std::string(500, ')') + ");"));
    EXPECT_FALSE(isParsed(folder / "a.step"));
    expectAsTheKernel(folder / "gone.step");
}

TEST_F(StepLoader, RecordsStandInTheOrderOfTheirEnds)
{
    const auto made = parsePart21(stepOf("#7=(A((1,(2)))B(X(#3)));"));
    ASSERT_TRUE(made);
    std::string all;
    std::size_t at = 0;
    for (const auto& record : made->records) {
        all += fmt::format("{} {}", record.name, record.type);
        for (std::size_t left = record.parameters; left > 0; --left)
            all += fmt::format(" {}", made->parameters[at++].value);
        all += "\n";
    }
    EXPECT_EQ(made->headRecords, 7U);
    EXPECT_EQ(all.substr(all.find("$2 ", all.find("FILE_SCHEMA"))),
        "$2 /* (SUB) */ 2\n$1 /* (SUB) */ 1 $2\n#7 A $1\n$1 X #3\n#0 B $1\n");
}
