#include "tests/zentrel/application/Workshop.h"

#include "contracts/objectmodel/Enumerations.h"
#include "zentrel/formats/BuildPart.h"
#include "zentrel/formats/Read.h"
#include "zentrel/kernel/KernelLimits.h"

#include <BRep_Builder.hxx>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <gp_Pln.hxx>
#include <TopoDS_Compound.hxx>

namespace zn::zentrel::test {

namespace {

using Save = WorkshopTest;

struct Saved {
    bool success = false;
    std::int32_t errors = 0;
    bool operator==(const Saved&) const = default;
};

Saved saveAs(DispatchObject& document, const Text& path, const Value& data = ObjectRef())
{
    Value success;
    const auto extension = objectOf(document, u"Extension");
    const auto results = callWithResults(*extension, u"SaveAs", {Value(path), 0, SaveSilent, data, -1, -1}, &success);
    EXPECT_EQ(results[5], Value(0)) << "warnings";
    return {success.toBool(), results[4].toInt32()};
}

TEST_F(Save, AnnouncesEachFileBeforeItExistsAndWritesTheShownConfiguration)
{
    shop.makePart("Bar.zenprt", {u"Short", u"Long"});
    const auto part = shop.open(shop.path("Bar.zenprt"), DocumentKind::Part);
    const auto sink = std::make_shared<EventLog>();
    bool existed = false;
    sink->handler = [&](std::int32_t) {
        existed = existed || std::filesystem::exists(shop.file("Bar_Long.stl"));
        return zn::S_OK;
    };
    part->advise(u"PartDocEvents", sink);
    EXPECT_TRUE(part->call(u"ShowConfiguration", {Value(u"LONG")}).toBool());
    EXPECT_FALSE(part->call(u"ShowConfiguration", {Value(u"Huge")}).toBool());
    shop.application->call(u"SetUserPreferenceToggle", {*enumerationValue(u"znSTLBinaryFormat"), false});
    shop.application->call(u"SetUserPreferenceIntegerValue", {*enumerationValue(u"znExportStlUnits"), 1});
    EXPECT_EQ(saveAs(*part, shop.path("Bar_Long.stl")), (Saved{true, 0}));
    EXPECT_FALSE(existed);
    EXPECT_THAT(sink->events, ElementsAre(u"7 " + shop.path("Bar_Long.stl")));
    const std::string stl = readFile(shop.file("Bar_Long.stl"));
    EXPECT_THAT(stl, HasSubstr("solid"));
    EXPECT_THAT(stl, HasSubstr(" 2.0")) << "20 mm are 2 cm";

    EXPECT_EQ(saveAs(*part, shop.path("Bar.step")), (Saved{true, 0}));
    EXPECT_EQ(asPart(readForeign(shop.file("Bar.step")), {}).configurations[0].bodies.size(), 1U);
    shop.application->call(u"QuitDoc", {part->call(u"GetTitle")});
    EXPECT_EQ(sink->events.back(), u"2");
    EXPECT_THROW(part->call(u"GetFirstModelView"), StatusError) << "a closed document says so";
}

TEST_F(Save, WhatWasForeignHasDocumentsOnceItHasAFileOfItsOwn)
{
    shop.makeAssembly("Rack.zenasm");
    const auto rack = shop.open(shop.path("Rack.zenasm"), DocumentKind::Assembly);
    ASSERT_EQ(saveAs(*rack, shop.path("Rack.step")), (Saved{true, 0}));
    Value loaded;
    callWithResults(*shop.application, u"LoadFile4", {Value(shop.path("Rack.step")), u"", ObjectRef(), 0}, &loaded);
    const auto foreign = zn::query<DispatchObject>(loaded.toObject());
    ASSERT_NE(foreign, nullptr);
    const auto allVirtual = [&] {
        const Value components = foreign->call(u"GetComponents", {true});
        for (const Value& component : (*components.get<ArrayRef>())->elements)
            if (!zn::query<DispatchObject>(component.toObject())->call(u"IsVirtual").toBool())
                return false;
        return true;
    };
    EXPECT_FALSE(allVirtual());
    ASSERT_EQ(saveAs(*foreign, shop.path("Copy.zenasm")), (Saved{true, 0}));
    EXPECT_TRUE(allVirtual());
}

/// A box and a face along a line, of no area, which the kernel divides into no triangle.
TopoDS_Shape boxWithThinFace()
{
    const gp_Pnt from(20, 0, 0);
    const gp_Pnt to(20, 0, 1e-4);
    BRepBuilderAPI_MakeWire wire(BRepBuilderAPI_MakeEdge(from, to), BRepBuilderAPI_MakeEdge(to, from));
    TopoDS_Compound both;
    BRep_Builder builder;
    builder.MakeCompound(both);
    builder.Add(both, box(10, 10, 10));
    builder.Add(both, BRepBuilderAPI_MakeFace(gp_Pln(from, gp_Dir(1, 0, 0)), wire.Wire()).Shape());
    return both;
}

TEST_F(Save, FacesThatNobodyCanSeeFallAwayWithASentence)
{
    writeDocument(partOf({{u"Default", {u"Kiste", boxWithThinFace(), {}, {}}}}), shop.file("Thin.zenprt"));
    const auto part = shop.open(shop.path("Thin.zenprt"), DocumentKind::Part);
    EXPECT_EQ(saveAs(*part, shop.path("Thin.stl")), (Saved{true, 0}));
    EXPECT_EQ(std::filesystem::file_size(shop.file("Thin.stl")), 84U + 12 * 50);
    Value count;
    callWithResults(*shop.application, u"GetErrorMessages", {Value(), Value(), Value()}, &count);
    EXPECT_EQ(count, Value(1));
    EXPECT_EQ(saveAs(*part, shop.path("Thin.stl")), (Saved{true, 0}));
    shop.application->runMacroWork([&] {
        callWithResults(*shop.application, u"GetErrorMessages", {Value(), Value(), Value()}, &count);
    });
    EXPECT_EQ(count, Value(0)) << "a macro would take it for a failure";
    callWithResults(*shop.application, u"GetErrorMessages", {Value(), Value(), Value()}, &count);
    EXPECT_EQ(count, Value(1));
    EXPECT_THAT(shop.log.back(), HasSubstr("Thin.stl' was written with 1 face left out"));
    shop.application->call(u"QuitDoc", {part->call(u"GetTitle")});
}

TEST_F(Save, GeometryWithoutMeasureCostsItsFileAndNothingElse)
{
    setKernelLimits({std::chrono::seconds(2), std::size_t{512} << 20, {}});
    std::string step = readFile("/usr/share/opencascade/data/step/screw.step");
    const std::string direction = "#269 = VECTOR('',#270,1.)";
    ASSERT_NE(step.find(direction), std::string::npos);
    step.replace(step.find(direction), direction.size(), "#269 = VECTOR('',#270,0.)");
    writeFile(shop.file("screw.step"), step);
    importPart({{shop.file("screw.step"), u"Default"}}, shop.file("screw.zenprt"));
    const auto part = shop.open(shop.path("screw.zenprt"), DocumentKind::Part);
    EXPECT_EQ(saveAs(*part, shop.path("screw.stl")), (Saved{false, 1}));
    EXPECT_FALSE(std::filesystem::exists(shop.file("screw.stl")));
    // Which of the limits it meets first depends on the machine. A sanitizer ends a process without memory itself.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    const char* const withoutMemory = "ended without an answer while";
#else
    const char* const withoutMemory = "ran out of memory while";
#endif
    EXPECT_THAT(shop.log.back(), ::testing::AnyOf(HasSubstr(withoutMemory), HasSubstr("no end within 3 seconds")));
    EXPECT_THAT(shop.log.back(), HasSubstr("meshing the model for the file '" + shop.file("screw.stl").string()));
    EXPECT_EQ(saveAs(*part, shop.path("screw2.step")), (Saved{true, 0}));
    setKernelLimits({});
}

TEST_F(Save, DrawingsAnnounceExchangeFilesTwiceAndPdfsOnce)
{
    shop.makeDrawing("Plan.zendrw", {u"Front", u"Blatt \u0416"});
    const auto drawing = shop.open(shop.path("Plan.zendrw"), DocumentKind::Drawing);
    const auto sink = std::make_shared<EventLog>();
    drawing->advise(u"DrawingDocEvents", sink);
    EXPECT_TRUE(drawing->call(u"ActivateSheet", {Value(u"Blatt \u0416")}).toBool());
    EXPECT_EQ(objectOf(*drawing, u"GetCurrentSheet")->call(u"GetName").toText(), u"Blatt \u0416");
    EXPECT_TRUE(saveAs(*drawing, shop.path("Plan.DXF")).success);
    const auto data = objectOf(*shop.application, u"GetExportFileData", {1});
    EXPECT_TRUE(
        data->call(u"SetSheets", {*enumerationValue(u"znExportData_ExportSpecifiedSheets"), Value(u"Front")}).toBool());
    EXPECT_TRUE(saveAs(*drawing, shop.path("Plan.pdf"), Value(data)).success);
    EXPECT_THAT(sink->events,
        ElementsAre(u"7 " + shop.path("Plan.DXF"), u"23 " + shop.path("Plan.DXF"), u"7 " + shop.path("Plan.pdf")));
    EXPECT_TRUE(readFile(shop.file("Plan.pdf")).starts_with("%PDF"));
    shop.application->call(u"QuitDoc", {drawing->call(u"GetTitle")});
    for (const char16_t* member : {u"GetSheetNames", u"GetSheetCount", u"GetCurrentSheet", u"GetViews"})
        EXPECT_THROW(drawing->call(member), StatusError) << "a closed drawing says so";
}

TEST_F(Save, WhatCannotBeSavedHasANumberASentenceAndNoFile)
{
    shop.makePart("Bar.zenprt", {u"Default"});
    shop.makeDrawing("Plan.zendrw", {u"One"});
    const auto part = shop.open(shop.path("Bar.zenprt"), DocumentKind::Part);
    const auto drawing = shop.open(shop.path("Plan.zendrw"), DocumentKind::Drawing);
    std::filesystem::create_directory(shop.file("folder.stl"));
    const struct {
        DispatchRef document;
        std::string name;
        std::int32_t errors;
        const char* sentence;
    } cases[] = {
        {part, "Bar.sat", 256, "does not write that format"},
        {part, "Bar.psd", 256, "does not write that format"},
        {part, "Bar", 256, "does not write that format"},
        {drawing, "Plan.stl", 256, "does not write that format"},
        {part, "missing/Bar.stl", SaveNotWritable, "missing"},
        {part, "folder.stl", SaveNotWritable, "folder.stl"},
        {part, "Bar.zenprt", SaveNotWritable, "read-only"},
    };
    const std::string before = readFile(shop.file("Bar.zenprt"));
    for (const auto& one : cases) {
        shop.log.clear();
        EXPECT_EQ(saveAs(*one.document, shop.path(one.name)), (Saved{false, one.errors})) << one.name;
        ASSERT_EQ(shop.log.size(), 1U) << one.name;
        EXPECT_THAT(shop.log[0], HasSubstr(one.sentence)) << one.name;
        EXPECT_FALSE(std::filesystem::is_regular_file(shop.file(one.name)) && one.name != "Bar.zenprt") << one.name;
    }
    EXPECT_EQ(readFile(shop.file("Bar.zenprt")), before);

    shop.application->call(u"SetUserPreferenceIntegerValue", {*enumerationValue(u"znStepAP"), 299});
    EXPECT_EQ(saveAs(*part, shop.path("Bar.step")), (Saved{false, SaveGenericError}));
    EXPECT_EQ(shop.log.back(), "The STEP protocol cannot be 299.");
}

TEST_F(Save, AListenerThatMakesNoRoomKeepsTheOldFile)
{
    shop.makePart("Bar.zenprt", {u"Default"});
    writeFile(shop.file("Bar.stl"), "old");
    const auto part = shop.open(shop.path("Bar.zenprt"), DocumentKind::Part);
    const auto sink = std::make_shared<EventLog>();
    part->advise(u"PartDocEvents", sink);
    sink->handler = [](std::int32_t) { return zn::E_ACCESSDENIED; };
    EXPECT_EQ(saveAs(*part, shop.path("Bar.stl")), (Saved{false, SaveRefusedByListener}));
    EXPECT_EQ(readFile(shop.file("Bar.stl")), "old");
    sink->handler = [](std::int32_t) { return zn::RPC_E_DISCONNECTED; };
    EXPECT_THROW(saveAs(*part, shop.path("Bar.stl")), StatusError) << "who listened has died: all work ends";
}

TEST_F(Save, ComponentsGoIntoFilesOfTheirOwnUnlessAskedForOne)
{
    shop.makeAssembly("Rack.zenasm");
    const auto assembly = shop.open(shop.path("Rack.zenasm"), DocumentKind::Assembly);
    const auto sink = std::make_shared<EventLog>();
    assembly->advise(u"AssemblyDocEvents", sink);
    EXPECT_TRUE(saveAs(*assembly, shop.path("Rack.stl")).success);
    ASSERT_EQ(sink->events.size(), 2U);
    for (const Text& event : sink->events)
        EXPECT_TRUE(shop.platform.files().fileExists(event.substr(2))) << zn::toUtf8(event);
    EXPECT_FALSE(std::filesystem::exists(shop.file("Rack.stl")));
    shop.application->call(u"SetUserPreferenceToggle", {*enumerationValue(u"znSTLComponentsIntoOneFile"), true});
    EXPECT_TRUE(saveAs(*assembly, shop.path("Rack.stl")).success);
    EXPECT_EQ(sink->events.back(), u"7 " + shop.path("Rack.stl"));
}

} // namespace

} // namespace zn::zentrel::test
