#include "tests/addin/macro/DefaultMacroFixture.h"

namespace zn {

using test::Calls;

/// The print macro, with a printer that is there or not.
class PrintMacro : public test::DefaultMacroFixture {
protected:
    PrintMacro()
        : DefaultMacroFixture(TaskKind::Printing, u"Paper")
    {
        set(u"__printer_prname", u"Plotter");
        set(u"__printer_margintype", 0);
        cad.answer("App.GetErrorMessages", 0);
        cad.answer("App.LoadFile4", Value(cad.object(u"Model")));
        cad.answer("Model.PageSetup", Value(cad.object(u"Setup")));
        cad.answer("Model.GetSheetNames", Value::arrayOf({u"Front", u"図"}, ValueType::String));
        cad.answer("Model.Sheet", Value(cad.object(u"Sheet")));
        cad.answers["Model.printer"] = [this](MemberCall& call) {
            if (!call.arguments.empty())
                printer = call.arguments[0].toText();
            return Value(printer);
        };
        setSheet(8, 0.42, 0.297);
    }

    void setSheet(double format, double width, double height)
    {
        cad.answer("Sheet.GetProperties", Value::arrayOf({format, 0.0, 1.0, 1.0, 1.0, width, height}));
    }
    std::string run(const char16_t* file, const char16_t* item = u"")
    {
        printer.clear();
        return runMacro(file, item, u"zn2018");
    }
    /// Printer, paper, orientation and sheets of the last run.
    std::string printed() const
    {
        std::string text;
        for (const char* call : {"Setup.PrinterPaperSize(", "Setup.Orientation(", "Extension.PrintOut2("})
            for (const std::string& one : callsOf(call))
                text += (text.empty() ? "" : " ")
                    + one.substr(std::string_view(call).size(), one.rfind(')') - std::string_view(call).size());
        return text;
    }

    Text printer;
};

TEST_F(PrintMacro, GoesThroughADrawingStepByStep)
{
    set(u"__printer_margintype", 2);
    set(u"__printer_margintop", 10.0F);
    set(u"__printer_marginleft", 25);
    set(u"__printer_headertype", 2);
    set(u"__printer_headerleft", u"one\r\ntwo");
    set(u"__printer_headerright", u"図");
    set(u"__printer_footertype", 1);
    set(u"__printer_footerleft", u"asked for");
    EXPECT_EQ(run(u"C:\\V\\日本.zendrw", u"FRONT"), "");
    EXPECT_EQ(cad.calls,
        (Calls{"Application.Zentrel", "App.GetOpenDocSpec(C:\\V\\日本.zendrw)", "Spec.DocumentType(3)",
            "Spec.ReadOnly(-1)", "Spec.Silent(-1)", "Spec.ConfigurationName()", "Spec.DisplayState()",
            "App.OpenDoc7(Spec)", "Spec.Error", "Model.PageSetup",
            "App.SetUserPreferenceToggle(znPageSetupPrinterUsePrinterMargin, 0)",
            "App.SetUserPreferenceDoubleValue(znPageSetupPrinterTopMargin, 0.01)",
            "App.SetUserPreferenceDoubleValue(znPageSetupPrinterBottomMargin, 0)",
            "App.SetUserPreferenceDoubleValue(znPageSetupPrinterLeftMargin, 0.025)",
            "App.SetUserPreferenceDoubleValue(znPageSetupPrinterRightMargin, 0)", "Setup.SetHeader(one\ntwo, , 図)",
            "Model.Extension", "Model.GetSheetNames", "Model.Sheet(Front)", "Sheet.GetProperties",
            "Model.printer(Plotter)", "Model.printer", "Extension.UsePageSetup(znPageSetupInUse_Document)",
            "Setup.PrinterPaperSize(8)", "Setup.Orientation(2)", "App.GetErrorMessages(, , )",
            "Extension.PrintOut2([1], 1, 0, Plotter, )", "App.GetErrorMessages(, , )", "Model.GetTitle",
            "App.QuitDoc(Title)"}));
}

TEST_F(PrintMacro, TakesThePaperOfTheSheet)
{
    set(u"__printer_prseltype", 2);
    set(u"__printer_papsize_A", u"pA");
    set(u"__printer_papsize_B", u"pB");
    set(u"__printer_papsize_E", u"pE");
    set(u"__printer_papsize_A0", u"pA0");
    set(u"__printer_papsize_A3", u"pA3");
    set(u"__printer_papsize_A4", u"pA4");
    set(u"__printer_papsize_DEF", u"pDefault");
    const std::tuple<double, double, double, const char*> sheets[] = {
        {0, 2, 1, "262 2 [2], 1, 0, pA, "},
        {1, 1, 2, "262 1 [2], 1, 0, pA, "},
        {2, 2, 1, "263 2 [2], 1, 0, pB, "},
        {3, 2, 1, "24 2 [2], 1, 0, Plotter, "},
        {5, 1, 2, "26 1 [2], 1, 0, pE, "},
        {6, 2, 1, "9 2 [2], 1, 0, pA4, "},
        {7, 1, 2, "9 1 [2], 1, 0, pA4, "},
        {8, 2, 2, "8 2 [2], 1, 0, pA3, "},
        {9, 2, 1, "66 2 [2], 1, 0, Plotter, "},
        {10, 2, 1, "261 2 [2], 1, 0, Plotter, "},
        {11, 2, 1, "260 2 [2], 1, 0, pA0, "},
        {12, 2, 1, "9 2 [2], 1, 0, pDefault, "},
        {99, 1, 2, "9 1 [2], 1, 0, Plotter, "},
    };
    for (const auto& [format, width, height, expected] : sheets) {
        setSheet(format, width, height);
        EXPECT_EQ(run(u"C:\\V\\d.zendrw", u"図"), "") << format;
        EXPECT_EQ(printed(), expected) << format;
    }
}

TEST_F(PrintMacro, TakesThePaperOfTheTask)
{
    set(u"__printer_usedrwnfo", false);
    set(u"__printer_deforientation", 0);
    const std::pair<std::int32_t, const char*> sizes[] = {{-1, "9"}, {0, "262"}, {1, "262"}, {2, "263"}, {3, "24"},
        {4, "25"}, {5, "26"}, {6, "260"}, {7, "261"}, {8, "66"}, {9, "8"}, {10, "9"}, {11, "77"}, {12, "9"}};
    for (const auto& [code, paper] : sizes) {
        set(u"__printer_defpapsize", code);
        EXPECT_EQ(run(u"C:\\V\\d.drw"), "") << code;
        EXPECT_EQ(printed(), std::string(paper) + " 1 , 1, 0, Plotter, ") << code;
    }
    set(u"__printer_prseltype", 2);
    set(u"__printer_papsize_A4", u"pA4");
    set(u"__printer_defpapsize", 11);
    set(u"__printer_deforientation", 1);
    set(u"__printer_copycount", 7);
    EXPECT_EQ(run(u"C:\\V\\d.drw", u"not there"), "");
    EXPECT_EQ(printed(), "77 2 , 7, 0, pA4, ") << "a sheet that isn't there leaves the list empty";
}

TEST_F(PrintMacro, PrintsModelsWithThePrinterOfTheDefaultPaper)
{
    EXPECT_EQ(run(u"C:\\V\\p.zenprt", u"Large"), "");
    EXPECT_EQ(callsOf("Model.ShowConfiguration"), Calls{"Model.ShowConfiguration(Large)"});
    EXPECT_EQ(printed(), "9 2 , 1, 0, Plotter, ");
    set(u"__printer_papsize_DEF", u"Default");
    set(u"__printer_copycount", u"");
    EXPECT_EQ(run(u"C:\\V\\a.ASM"), "");
    EXPECT_TRUE(callsOf("Model.ShowConfiguration").empty());
    EXPECT_EQ(printed(), "9 2 , 1, 0, Default, ");
    EXPECT_EQ(run(u"C:\\V\\f.igs", u"Large"), "");
    EXPECT_EQ(callsOf("App.LoadFile4"), Calls{"App.LoadFile4(C:\\V\\f.igs, , Nothing, 0)"});
    EXPECT_TRUE(callsOf("Model.ShowConfiguration").empty()) << "a foreign file has no configurations";
    EXPECT_EQ(printed(), "9 2 , 1, 0, Default, ");
    EXPECT_EQ(run(u"C:\\V\\f.docx"), "The file extension 'docx' is not supported.\r\n");
}

TEST_F(PrintMacro, LogsWhatCannotBePrinted)
{
    set(u"__printer_prname", u"");
    EXPECT_EQ(run(u"C:\\V\\p.prt", u"L"),
        "Could not print document 'C:\\V\\p.prt' and configuration 'L'. No printer was selected.\r\n");
    set(u"__printer_usedrwnfo", false);
    EXPECT_EQ(run(u"C:\\V\\d.drw", u"S"),
        "Could not print document 'C:\\V\\d.drw' and sheet 'S'. No printer was selected.\r\n");
    EXPECT_EQ(run(u"C:\\V\\d.drw"), "Could not print document 'C:\\V\\d.drw'. No printer was selected.\r\n");
    EXPECT_TRUE(callsOf("Extension.PrintOut2").empty());
    EXPECT_TRUE(callsOf("App.QuitDoc").empty());

    set(u"__printer_prname", u"Plotter");
    int asked = 0;
    cad.answers["App.GetErrorMessages"] = [&](MemberCall& call) {
        call.arguments.at(0) = Value::arrayOf({u"No paper.", u"No ink."}, ValueType::String);
        return Value(++asked * 2);
    };
    EXPECT_EQ(run(u"C:\\V\\d.drw"),
        "Could not print file 'C:\\V\\d.drw'. The following errors occured: \r\nNo paper.\r\nNo ink.\r\n\r\n");
    EXPECT_EQ(callsOf("App.QuitDoc").size(), 1U);

    cad.answer("App.OpenDoc7", Value(ObjectRef()));
    cad.answer("Spec.Error", 2);
    EXPECT_EQ(run(u"C:\\V\\d.drw"),
        "Method call ModelDoc2::OpenDoc6 for document 'C:\\V\\d.drw' failed. Error code 2 returned.\r\n");
}

} // namespace zn
