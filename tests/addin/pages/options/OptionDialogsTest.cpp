#include "addin/pages/options/AdvancedConvOpDlg.h"

#include "addin/pages/options/ConvOpDlg.h"
#include "tests/support/FakeHost.h"
#include "tests/support/pages/PageFixture.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QTextBrowser>

namespace zn::test {

namespace {

constexpr std::uint32_t formatsWithOptions[] = {5, 10, 22, 3, 16, 17, 13, 18, 19, 20, 6, 9, 8};

enum Format : std::uint32_t {
    Acis = 3,
    Pdf = 5,
    Dxf = 8,
    Dwg = 9,
    Viewpane = 10,
    Iges = 13,
    ParasolidBinary = 17,
    Step = 18,
    Stl = 19,
    Tif = 20,
    Vrml = 22
};

/// "on", "off", a list's row or "-" for none; in brackets when the control is greyed.
std::string stateOf(QWidget& frame, const char* role)
{
    auto* control = find<QWidget>(frame, role);
    std::string state;
    if (const auto* list = qobject_cast<QComboBox*>(control))
        state = list->currentIndex() < 0 ? "-" : list->currentText().toStdString();
    else if (const auto* button = qobject_cast<QAbstractButton*>(control))
        state = button->isChecked() ? "on" : "off";
    return control->isEnabled() ? state : "[" + state + "]";
}

std::string statesOf(QWidget& frame, const std::vector<const char*>& roles)
{
    std::string states;
    for (const char* role : roles)
        states += (states.empty() ? "" : ", ") + stateOf(frame, role);
    return states;
}

/// "role": a click. "role=row": the choice of a list's row with keys.
void act(QWidget& frame, const std::string& action)
{
    const auto equals = action.find('=');
    const std::string role = action.substr(0, equals);
    if (equals == std::string::npos)
        return find<QAbstractButton>(frame, role.c_str())->click();
    auto* list = find<QComboBox>(frame, role.c_str());
    const int row = list->findText(QString::fromStdString(action.substr(equals + 1)));
    ASSERT_GE(row, 0) << action;
    press(list, Qt::Key_Home);
    for (int i = 0; i < row; ++i)
        press(list, Qt::Key_Down);
}

class OptionDialogs : public PageFixture {
protected:
    OptionDialogs() { openTask(TaskKind::Conversion); }

    /// Opens the frame for a format and lets a person at it.
    bool open(std::uint32_t format, const std::function<void(QWidget& frame)>& person)
    {
        CAdvancedConvOpDlg dialog(pages().environment(), task, format, u"Some (*.x)", &window, true);
        Answers answers(std::vector<Answers::Answer>{person});
        const bool accepted = dialog.DoModal();
        return accepted;
    }

    void openAndPress(std::uint32_t format, const std::vector<std::string>& actions)
    {
        open(format, [&](QWidget& frame) {
            for (const std::string& action : actions)
                act(frame, action);
        });
    }

    /// What the dialog shows when it opens.
    std::string shownAt(std::uint32_t format, const std::vector<const char*>& roles)
    {
        std::string states;
        open(format, [&](QWidget& frame) {
            states = statesOf(frame, roles);
            act(frame, "cancel");
        });
        return states;
    }

    std::string storedTexts(const std::vector<const char16_t*>& names)
    {
        std::string texts;
        const auto values = stored();
        for (const char16_t* name : names) {
            const auto value = values.find(name);
            texts += (texts.empty() ? "" : " ") + (value == values.end() ? "none" : toUtf8(value->second.toText()));
        }
        return texts;
    }
};

const std::vector<const char16_t*> sheetMetal = {u"SheetMetalGeometry", u"SheetMetalHiddenEdges",
    u"SheetMetalBendLines", u"SheetMetalSketches", u"SheetMetalLibraryFeatures", u"SheetMetalFormingTools",
    u"SheetMetalBoundingBox", u"SheetMetalMergeCoplanar", u"SheetMetalExportAs", u"SheetMetalOptions"};

} // namespace

TEST_F(OptionDialogs, StoreEveryFormatsSettingsWithoutAWindow)
{
    store({{u"StlQuality", 2}, {u"IgesSystem", u"10"}});
    for (const std::uint32_t format : formatsWithOptions) {
        CAdvancedConvOpDlg dialog(pages().environment(), task, format, {}, nullptr, false);
        EXPECT_TRUE(dialog.PersistOptions());
    }
    std::string all;
    for (const auto& [name, value] : stored()) {
        if (!name.starts_with(u"__"))
            all += toUtf8(name) + (value.type() == ValueType::Boolean ? "?" : "=") + toUtf8(value.toText()) + "\n";
    }
    EXPECT_EQ(all, R"(AcisGeometry=0
AcisOutputAsUnit=0
AcisVersion=18
IgesComponentsIntoOneFile?-1
IgesCurveRepresentation=0
IgesExportFreeCurves?-1
IgesExportSketchEntities?0
IgesExportSolidSurface?-1
IgesExportWireframe?0
IgesFlattenAssemblyHierarchy?-1
IgesHighCurveAccuracy?-1
IgesRepresentation=0
IgesSystem=10
ParasolidFlattenHierarchy?0
ParasolidVersion=17
PdfEmbedFonts?-1
PdfHighQuality?0
PdfInColor?-1
PdfPrintHeaderFooter?0
PdfUsePrinterLineWeights?-1
SheetMetalBendLines=1
SheetMetalBoundingBox=1
SheetMetalExportAs?-1
SheetMetalFormingTools=1
SheetMetalGeometry=1
SheetMetalHiddenEdges=1
SheetMetalLibraryFeatures=1
SheetMetalMergeCoplanar=0
SheetMetalOptions=2175
SheetMetalSketches=1
StepGeometry=0
StepVersion=203
StlCheckForInterferences?0
StlComponentsIntoOneFile?0
StlDontTranslatePositive?0
StlOutputAs?-1
StlOutputAsUnit=0
StlQuality=2
TifCompressionScheme=0
TifImageType=1
VrmlOutputAsUnit=0
VrmlSaveAssemblyAsOneFile?0
VwpnAllowExportOfSTL?0
VwpnOkayToMeasure?0
VwpnRecalcMotionStudies?-1
VwpnSaveBOM?-1
VwpnSaveMotionStudies?-1
VwpnSaveMotionStudiesToAllConfs?0
VwpnSaveShadedData?-1
)");
    EXPECT_EQ(stored().at(u"IgesSystem"), Value(10)); // the text has become the number that macros expect
}

TEST_F(OptionDialogs, ShowWhatIsStored)
{
    store({{u"AcisVersion", 9}, {u"AcisGeometry", 2}, {u"AcisOutputAsUnit", 4}, {u"StepGeometry", 1},
        {u"StepVersion", 214}, {u"IgesRepresentation", 1}, {u"IgesExportWireframe", true},
        {u"IgesCurveRepresentation", 1}, {u"IgesSystem", 9}, {u"StlQuality", 5}, {u"StlOutputAs", false},
        {u"StlComponentsIntoOneFile", true}, {u"VwpnSaveMotionStudies", false}, {u"SheetMetalGeometry", 0},
        {u"SheetMetalMergeCoplanar", 1}, {u"ParasolidVersion", 12}, {u"TifCompressionScheme", 2}});
    const struct {
        Format format;
        std::vector<const char*> roles;
        const char* expected;
    } rows[] = {
        {Acis, {"surfaceGeometry", "curveGeometry", "exportSketches", "version", "unit"}, "off, on, on, 8.0, Feets"},
        {Step, {"surfaceGeometry", "curveGeometry", "exportSketches", "version"}, "off, on, off, AP214"},
        {ParasolidBinary, {"version", "flattenHierarchy"}, "15.1, off"},
        {Iges, {"representation", "curveRepresentation", "system", "exportFreeCurves"},
            "-, Parametric Splines (Entity type 112), MULTICAM, on"},
        {Stl, {"binary", "ascii", "coarse", "fine", "checkForInterferences"}, "off, on, off, on, off"},
        {Tif, {"imageType", "compressionScheme"}, "RGB full color, Group 4 Fax"},
        {Vrml, {"unit", "oneFile"}, "Millimeters, off"},
        // With motion studies off the recalculation can be changed all the same.
        {Viewpane, {"everyConfiguration", "lastConfiguration", "recalculate"}, "[off], [on], on"},
        {Dxf, {"geometry", "hiddenEdges", "bendLines", "mergeFaces", "dontMergeFaces", "singleFile"},
            "off, [on], on, off, on, on"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(shownAt(row.format, row.roles), row.expected) << "format " << row.format;
    store({{u"AcisGeometry", 0}});
    EXPECT_EQ(shownAt(Acis, {"surfaceGeometry", "exportSketches"}), "on, [off]");
}

TEST_F(OptionDialogs, StoreWhatIsClicked)
{
    const struct {
        Format format;
        std::vector<std::string> actions;
        std::vector<const char16_t*> names;
        const char* expected;
    } rows[] = {
        {Acis, {"curveGeometry", "exportSketches", "version=1.7", "unit=Inches", "ok"},
            {u"AcisGeometry", u"AcisVersion", u"AcisOutputAsUnit"}, "2 1 3"},
        {Acis, {"exportSketches", "ok"}, {u"AcisGeometry"}, "1"},
        {Acis, {"surfaceGeometry", "exportSketches", "cancel"}, {u"AcisGeometry"}, "1"},
        {Step, {"curveGeometry", "exportSketches", "surfaceGeometry", "version=AP214", "ok"},
            {u"StepGeometry", u"StepVersion"}, "0 214"},
        {ParasolidBinary, {"version=8.0", "flattenHierarchy", "ok"},
            {u"ParasolidVersion", u"ParasolidFlattenHierarchy"}, "1 -1"},
        {Pdf, {"inColor", "highQuality", "ok"}, {u"PdfInColor", u"PdfHighQuality", u"PdfEmbedFonts"}, "0 -1 -1"},
        {Iges, {"representation=Manifold Solid B-rep Objectsurface (type 186)", "system=ALPHACAM", "ok"},
            {u"IgesRepresentation", u"IgesCurveRepresentation", u"IgesSystem"}, "3 0 8"},
        {Stl, {"ascii", "fine", "unit=Feets", "oneFile", "checkForInterferences", "ok"},
            {u"StlOutputAs", u"StlQuality", u"StlOutputAsUnit", u"StlComponentsIntoOneFile",
                u"StlCheckForInterferences"},
            "0 2 4 -1 -1"},
        {Tif, {"imageType=Gray scale", "compressionScheme=Packbits", "ok"}, {u"TifImageType", u"TifCompressionScheme"},
            "2 1"},
        {Viewpane, {"everyConfiguration", "saveBom", "ok"},
            {u"VwpnSaveMotionStudiesToAllConfs", u"VwpnSaveBOM", u"VwpnSaveMotionStudies"}, "-1 0 -1"},
        {Dwg, {"geometry", "ok"}, sheetMetal, "0 1 1 1 1 1 1 0 -1 2076"},
        {Dxf, {"separateFiles", "dontMergeFaces", "bendLines", "sketches", "boundingBox", "ok"}, sheetMetal,
            "0 1 0 0 1 1 0 1 0 0"},
    };
    for (const auto& row : rows) {
        openAndPress(row.format, row.actions);
        EXPECT_EQ(storedTexts(row.names), row.expected) << "format " << row.format;
    }
}

TEST_F(OptionDialogs, GreyWhatDependsOnAnotherControl)
{
    open(Viewpane, [](QWidget& frame) {
        const std::vector<const char*> roles = {"everyConfiguration", "lastConfiguration", "recalculate"};
        EXPECT_EQ(statesOf(frame, roles), "off, on, on");
        act(frame, "everyConfiguration");
        EXPECT_EQ(statesOf(frame, roles), "on, off, [on]");
        act(frame, "saveMotionStudies");
        EXPECT_EQ(statesOf(frame, roles), "[on], [off], [on]");
        act(frame, "saveMotionStudies");
        act(frame, "lastConfiguration");
        EXPECT_EQ(statesOf(frame, roles), "off, on, on");
        act(frame, "cancel");
    });
    open(Acis, [](QWidget& frame) {
        ASSERT_TRUE(QTest::qWaitForWindowActive(&frame)); // only then keys move the focus
        auto* surfaces = find<QWidget>(frame, "surfaceGeometry");
        surfaces->setFocus();
        press(surfaces, Qt::Key_Down);
        EXPECT_EQ(statesOf(frame, {"curveGeometry", "exportSketches"}), "on, off");
        act(frame, "ok");
    });
    EXPECT_EQ(storedTexts({u"AcisGeometry"}), "1");
    open(Iges, [](QWidget& frame) {
        EXPECT_EQ(statesOf(frame, {"representation", "curveRepresentation"}),
            "Trimmed Surface (type 144), [B-Splines (Entity type 126)]");
        act(frame, "exportSolidSurface");
        act(frame, "exportWireframe");
        EXPECT_EQ(statesOf(frame, {"representation", "curveRepresentation"}),
            "[Trimmed Surface (type 144)], B-Splines (Entity type 126)");
        act(frame, "cancel");
    });
    open(Dwg, [](QWidget& frame) {
        act(frame, "geometry");
        act(frame, "hiddenEdges"); // greyed: nothing happens
        EXPECT_EQ(statesOf(frame, {"geometry", "hiddenEdges", "libraryFeatures", "formingTools", "sketches"}),
            "off, [on], [on], [on], on");
        act(frame, "resetAll");
        EXPECT_EQ(statesOf(frame, {"geometry", "hiddenEdges"}), "on, [on]"); // until the next click
        act(frame, "cancel");
    });
}

TEST_F(OptionDialogs, ResetToTheDefaultsThatOkStores)
{
    const std::vector<const char16_t*> names = {u"VrmlOutputAsUnit", u"VrmlSaveAssemblyAsOneFile"};
    open(Vrml, [](QWidget& frame) {
        EXPECT_EQ(frame.windowTitle(), "Advanced Scripting Options (Some)");
        EXPECT_EQ(statesOf(frame, {"unit", "oneFile"}), "Millimeters, off");
        act(frame, "resetAll");
        EXPECT_EQ(statesOf(frame, {"unit", "oneFile"}), "Meters, on");
        press(&frame, Qt::Key_Escape);
    });
    EXPECT_EQ(storedTexts(names), "none none");
    open(Vrml, [](QWidget& frame) {
        act(frame, "resetAll");
        press(find<QWidget>(frame, "oneFile"), Qt::Key_Return);
    });
    EXPECT_EQ(storedTexts(names), "2 -1");

    store({{u"AcisVersion", 4}, {u"AcisGeometry", 2}, {u"StlQuality", 2}, {u"VwpnSaveMotionStudiesToAllConfs", true}});
    openAndPress(Acis, {"resetAll", "ok"});
    openAndPress(Stl, {"resetAll", "ok"});
    openAndPress(Viewpane, {"resetAll", "ok"});
    EXPECT_EQ(
        storedTexts({u"AcisVersion", u"AcisGeometry", u"StlQuality", u"VwpnSaveMotionStudiesToAllConfs"}), "18 0 1 0");
}

TEST_F(OptionDialogs, LeaveANumberThatNoRowHasAsItIs)
{
    store({{u"IgesRepresentation", 1}, {u"AcisVersion", 99}, {u"StlQuality", 7}, {u"SheetMetalMergeCoplanar", 5}});
    for (const std::uint32_t format : {Iges, Acis, Stl, Dwg})
        openAndPress(format, {"ok"});
    EXPECT_EQ(
        storedTexts({u"IgesRepresentation", u"AcisVersion", u"StlQuality", u"SheetMetalMergeCoplanar"}), "1 99 7 5");
}

TEST_F(OptionDialogs, GoOnAfterAVariableOfAnotherType)
{
    store({{u"StlOutputAsUnit", u"inches"}, {u"StlCheckForInterferences", true}, {u"StlQuality", 2}});
    Answers answers({[](QWidget& box) { box.close(); },
        [](QWidget& frame) {
            // Read up to the text, in the order of the names.
            EXPECT_EQ(statesOf(frame, {"checkForInterferences", "unit", "fine"}), "[on], Millimeters, off");
            act(frame, "unit=Meters");
            act(frame, "ok");
        }});
    CAdvancedConvOpDlg dialog(pages().environment(), task, Stl, u"STL (*.stl)", &window, true);
    EXPECT_TRUE(dialog.DoModal());
    EXPECT_EQ(answers.shown()[0],
        "The task variable \"StlOutputAsUnit\" must hold a whole number, but holds something else. Correct its value "
        "in "
        "the task.");
    EXPECT_EQ(storedTexts({u"StlOutputAsUnit", u"StlQuality"}), "2 1");
}

TEST_F(OptionDialogs, TellARefusedWriteAndClose)
{
    FakeHost host;
    host.failures["SetValue PdfHighQuality"] = E_ACCESSDENIED;
    CAdvancedConvOpDlg dialog(pages().environment(), host.task(), Pdf, u"Adobe PDF (*.pdf)", &window, true);
    Answers answers({[](QWidget& frame) { act(frame, "ok"); }, [](QWidget& box) { box.close(); },
        [](QWidget& box) { box.close(); }});
    EXPECT_TRUE(dialog.DoModal());
    EXPECT_EQ(host.taskVariables, (std::map<Text, Value>{{u"PdfEmbedFonts", true}})); // as far as it came
    EXPECT_FALSE(dialog.PersistOptions());
}

TEST_F(OptionDialogs, OpenTheHelpOfTheirFormat)
{
    const std::pair<std::uint32_t, const char*> topics[] = {{3, "ConvOpACISDlg"}, {5, "ConvOpPDFDlg"},
        {6, "ConvOpTifPsdDlg"}, {8, "ConvOpDWG_DXFDlg"}, {9, "ConvOpDWG_DXFDlg"}, {10, "ConvOpViewpaneDlg"},
        {13, "ConvOpIGESDlg"}, {16, "ConvOpParasolidDlg"}, {17, "ConvOpParasolidDlg"}, {18, "ConvOpStepDlg"},
        {19, "ConvOpSTLDlg"}, {20, "ConvOpTifPsdDlg"}, {22, "ConvOpVRMLDlg"}, {12, "AdvancedConvOpDlg"}};
    for (const auto& [format, topic] : topics) {
        open(format, [topic = topic](QWidget& frame) {
            act(frame, "help");
            EXPECT_EQ(find<QTextBrowser>(frame, "helpText")->source().fileName(), QString(topic) + ".html");
            find<QWidget>(frame, "helpWindow")->close();
            act(frame, "cancel");
        });
    }
}

TEST_F(OptionDialogs, ExistForNoOtherFormat)
{
    CAdvancedConvOpDlg dialog(pages().environment(), task, 0, {}, &window, true);
    for (const std::uint32_t format : {0u, 1u, 2u, 4u, 7u, 11u, 12u, 14u, 15u, 21u, 23u})
        EXPECT_EQ(dialog.MakeOptionDialog(format), nullptr) << format;
    const auto before = stored();
    EXPECT_TRUE(dialog.PersistOptions());
    EXPECT_EQ(stored(), before);
}

} // namespace zn::test
