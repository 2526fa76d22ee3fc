#include "tests/zentrel/application/Workshop.h"

#include "zentrel/application/MacroRunner.h"

#include <set>

namespace zn::zentrel::test {

namespace {

/// The settings of a task as they stand in its macro, with the defaults of a new one.
std::map<std::string, std::string> settings(Workshop& shop, const std::string& file)
{
    return {
        {"<Filepath>", zn::toUtf8(shop.path(file))},
        {"<VaultPath>", zn::toUtf8(shop.path("vault"))},
        {"<TaskInstanceGuid>", "run"},
        {"<Supported_2017ZN>", "True"},
        {"<Supported_2018ZN>", "True"},
        {"[ErrorLogPath]", "\\logs"},
        {"[OutputPath]", zn::toUtf8(shop.path("out")) + "\\<Filename>_<Configuration>"},
        {"[OutputPath2]", ""},
        {"[OutputSheets]", "2"},
        {"[FileSheets]", "4"},
        {"[NamedSheet]", ""},
        {"[OutputConfs]", "2"},
        {"[FileConfs]", "4"},
        {"[NamedConf]", ""},
        {"[StlOutputAs]", "True"},
        {"[StlQuality]", "1"},
        {"[StlComponentsIntoOneFile]", "True"},
        {"[StepVersion]", "214"},
        {"[SheetMetalOptions]", "2175"},
        {"[IgesExportSolidSurface]", "True"},
        {"[Part3DPDFThemePath]", ""},
        {"[Asm3DPDFThemePath]", ""},
    };
}

std::set<std::string> outputs(const Workshop& shop)
{
    std::set<std::string> names;
    if (std::filesystem::exists(shop.file("out")))
        for (const auto& entry : std::filesystem::directory_iterator(shop.file("out")))
            names.insert(entry.path().filename().string());
    return names;
}

TEST(ConversionMacro, WritesEachOutputAndLogsWhatItCannot)
{
    const struct {
        const char* file;
        std::map<std::string, std::string> changed;
        std::set<std::string> outputs;
        std::string log; ///< with the folder as "$"
    } cases[] = {
        {"Bar.zenprt", {{"[FileFormat]", "STL (*.stl)"}}, {"Bar_Long.stl", "Bar_Short.stl"}, ""},
        {"Bar.zenprt", {{"[FileFormat]", "STL (*.stl)"}, {"[OutputConfs]", "8"}, {"[NamedConf]", "L*"}},
            {"Bar_Long.stl"}, ""},
        {"Bar.zenprt", {{"[FileFormat]", "STL (*.stl)"}, {"[OutputConfs]", "8"}, {"[NamedConf]", "X*"}}, {},
            "Document '$\\Bar.zenprt' didn't contain any configurations named 'X*'.\r\n"},
        {"Bar.zenprt", {{"[FileFormat]", "ACIS (*.sat)"}, {"[OutputConfs]", "4"}}, {},
            "The file '$\\Bar.zenprt' and configuration 'Short' can't be converted to the file extension '.sat'.\r\n"},
        {"Bar.zenprt", {{"[FileFormat]", "DXF (*.dxf)"}}, {},
            "The file '$\\Bar.zenprt' can't be converted to the file extension '.dxf'.\r\n"},
        {"Bar.zenprt", {{"[FileFormat]", "3D PDF - MBD (*.pdf)"}}, {}, "3D PDF - Unknown error.\r\n"},
        {"Rack.zenasm", {{"[FileFormat]", "STEP (*.step)"}},
            {"Bolt^Rack_Long.step", "Bolt^Rack_Short.step", "Rack_Default.step"}, ""},
        {"Rack.zenasm", {{"[FileFormat]", "DXF (*.dxf)"}}, {},
            "Unsupported ZENTREL file extension \r\n"
            "The file '$\\work\\1\\Bolt^Rack.zenprt' can't be converted to the file extension '.dxf'.\r\n"},
        {"Plan.zendrw", {{"[FileFormat]", "Adobe PDF (*.pdf)"}}, {"Plan_One.pdf", "Plan_\xD0\x96.pdf"}, ""},
        {"Plan.zendrw", {{"[FileFormat]", "Adobe PDF (*.pdf)"}, {"[FileSheets]", "2"}}, {"Plan_All.pdf"}, ""},
        {"Plan.zendrw", {{"[FileFormat]", "DXF (*.dxf)"}, {"[OutputSheets]", "4"}}, {"Plan_One.dxf"}, ""},
        {"Plan.zendrw", {{"[FileFormat]", "3D PDF - MBD (*.pdf)"}}, {},
            "The file extension 'zendrw' is not supported.\r\n"},
        {"Bar.zenprt", {{"[FileFormat]", "Microsoft XAML (*.xaml)"}}, {"Bar_Long.xaml", "Bar_Short.xaml"}, ""},
        {"Plan.zendrw", {{"[FileFormat]", "TIF (*.tif)"}}, {"Plan_One.tif", "Plan_\xD0\x96.tif"}, ""},
        {"Bar.zenprt", {{"[FileFormat]", "JPEG (*.jpg)"}}, {"Bar_Long.jpg", "Bar_Short.jpg"}, ""},
        {"Rack.zenasm", {{"[FileFormat]", "Adobe PDF (*.pdf)"}},
            {"Bolt^Rack_Long.pdf", "Bolt^Rack_Short.pdf", "Rack_Default.pdf"}, ""},
        {"screw.step", {{"[FileFormat]", "IGES (*.igs)"}}, {"screw_Default.igs"}, ""},
        {"none.step", {{"[FileFormat]", "STL (*.stl)"}}, {},
            "Method call ModelDoc2::OpenDoc7 for document '$\\none.step' failed. Error code 2 returned.\r\n"},
        {"Bad.zenprt", {{"[FileFormat]", "STL (*.stl)"}}, {},
            "Method call ModelDoc2::OpenDoc7 for document '$\\Bad.zenprt' failed. Error code 2048 returned.\r\n"},
        {"readme.txt", {{"[FileFormat]", "STL (*.stl)"}}, {}, "The file extension 'txt' is not supported.\r\n"},
    };
    for (const auto& one : cases) {
        Workshop shop;
        shop.makePart("Bar.zenprt", {u"Short", u"Long"});
        shop.makeAssembly("Rack.zenasm");
        shop.makeDrawing("Plan.zendrw", {u"One", u"\u0416"});
        writeFile(shop.file("Bad.zenprt"), "PK, but no more");
        std::filesystem::copy_file("/usr/share/opencascade/data/step/screw.step", shop.file("screw.step"));
        auto values = settings(shop, one.file);
        for (const auto& [name, value] : one.changed)
            values[name] = value;
        writeFile(shop.file("task.znb"), macroWith("ConvertFiles.bas", values));
        const MacroOutcome outcome = runMacro(*shop.application, shop.path("task.znb"), u"ZNMacro1", u"main");
        const std::string name = std::string(one.file) + " to " + one.changed.at("[FileFormat]");
        EXPECT_TRUE(outcome.success) << name << ": " << (shop.log.empty() ? "" : shop.log.back());
        EXPECT_EQ(outputs(shop), one.outputs) << name;
        std::string log = readFile(shop.file("vault/logs/run.log"));
        const std::string folder = zn::toUtf8(shop.path(""));
        for (std::size_t at = 0; (at = log.find(folder)) != std::string::npos;)
            log.replace(at, folder.size(), "$");
        EXPECT_EQ(log, one.log) << name;
    }
}

} // namespace

} // namespace zn::zentrel::test
