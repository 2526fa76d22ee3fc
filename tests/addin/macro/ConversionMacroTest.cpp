#include "tests/addin/macro/DefaultMacroFixture.h"

namespace zn {

using test::Calls;

/// The conversion macro, with what no real CAD application can be made to answer.
class ConversionMacro : public test::DefaultMacroFixture {
protected:
    ConversionMacro()
        : DefaultMacroFixture(TaskKind::Conversion, u"Nightly")
    {
        set(u"OutputPath", u"C:\\out\\<Filename>");
        cad.answer("App.RevisionNumber", u"26.0.0");
        cad.answer("App.Frame", Value(cad.object(u"Frame")));
        cad.answer("App.GetExportFileData", Value(cad.object(u"PdfData")));
        cad.answer("Model.ConfigurationManager", Value(cad.object(u"ConfMgr")));
        cad.answer("Model.GetConfigurationNames", Value::arrayOf({u"A/1", u"B", u"A2"}, ValueType::String));
        cad.answer("Model.GetSheetNames", Value::arrayOf({u"S1", u"図"}, ValueType::String));
        cad.answer("Model.GetCurrentSheet", Value(cad.object(u"Sheet")));
        cad.answer("Sheet.GetName", u"S1");
        cad.answer("ConfMgr.ActiveConfiguration", Value(cad.object(u"Conf")));
        cad.answer("Conf.Name", u"B");
        cad.answer("Extension.SaveAs", true);
        cad.answer("Extension.GetMBD3DPdfData", Value(cad.object(u"Mbd")));
    }

    void failSaves(std::int32_t errors, std::int32_t warnings)
    {
        cad.answers["Extension.SaveAs"] = [=](MemberCall& call) {
            call.arguments.at(4) = errors;
            call.arguments.at(5) = warnings;
            return Value(false);
        };
    }
    std::string run(const char16_t* file, const char16_t* format, const char16_t* version = u"zn2018")
    {
        set(u"FileFormat", format);
        return runMacro(file, u"", version);
    }
};

TEST_F(ConversionMacro, GoesThroughAPartStepByStep)
{
    set(u"OutputPath2", u"C:\\copy\\<Extension>\\<Configuration>");
    set(u"OutputConfs", 8);
    set(u"NamedConf", u"A*");
    EXPECT_EQ(run(u"C:\\V\\日本.zenprt", u"Parasolid (*.x_t)"), "");
    EXPECT_EQ(cad.calls,
        (Calls{"Application.Zentrel", "App.Visible(-1)", "App.GetOpenDocSpec(C:\\V\\日本.zenprt)",
            "Spec.DocumentType(1)", "Spec.ReadOnly(-1)", "Spec.Silent(-1)", "Spec.ConfigurationName()",
            "Spec.DisplayState()", "Spec.IgnoreHiddenComponents(-1)", "App.OpenDoc7(Spec)", "Spec.Error",
            "App.RevisionNumber", "App.Frame", "Frame.KeepInVisible(-1)", "App.ActivateDoc2(C:\\V\\日本.zenprt, -1, 0)",
            "Model.GetPathName", "mkdir C:\\out\\", "mkdir C:\\copy\\zenprt\\",
            "App.SetUserPreferenceIntegerValue(znParasolidOutputVersion, 17)",
            "App.SetUserPreferenceToggle(znXTAssemSaveFormat, 0)", "Model.Extension", "Model.ConfigurationManager",
            "Model.GetConfigurationNames", "Model.ShowConfiguration(A/1)",
            "Extension.SaveAs(C:\\out\\日本_0.x_t, znSaveAsCurrentVersion, 1, Nothing, 0, 0)",
            "Extension.SaveAs(C:\\copy\\zenprt\\A1.x_t, znSaveAsCurrentVersion, 1, Nothing, 0, 0)",
            "Model.ShowConfiguration(A2)",
            "Extension.SaveAs(C:\\out\\日本_1.x_t, znSaveAsCurrentVersion, 1, Nothing, 0, 0)",
            "Extension.SaveAs(C:\\copy\\zenprt\\A2.x_t, znSaveAsCurrentVersion, 1, Nothing, 0, 0)",
            "delete C:\\out\\~$holder", "delete C:\\copy\\zenprt\\~$holder", "Model.GetTitle", "App.QuitDoc(Title)"}));
}

TEST_F(ConversionMacro, LogsFailedSaves)
{
    const std::string ole = "This document contains OLE objects. Such objects can't be converted outside of Zentrel. "
                            "Please open the document and perform the conversion from Zentrel.\r\n";
    const auto failed = [](const std::string& target, const std::string& item) {
        return "Method call ModelDocExtension::SaveAs for document '" + target + "'" + item
            + " failed. Error code 4097 returned.\r\n";
    };
    set(u"OutputConfs", 4);
    set(u"OutputSheets", 4);
    set(u"OutputPath2", u"C:\\two");
    failSaves(4097, 512);
    EXPECT_EQ(run(u"C:\\V\\p.zenprt", u"STEP (*.step)"),
        failed("C:\\out\\p.step", " and configuration 'B'") + ole + failed("C:\\two.step", " and configuration 'B'")
            + "warnings1 = 512\r\n" + ole);
    EXPECT_EQ(run(u"C:\\V\\d.zendrw", u"DWG (*.dwg)"),
        failed("C:\\out\\d.dwg", " and sheet 'S1'") + ole + failed("C:\\two.dwg", " and sheet 'S1'") + ole);
    set(u"FileConfs", 2);
    EXPECT_EQ(run(u"C:\\V\\p.zenprt", u"STEP (*.step)"), failed("C:\\out\\p.step", "") + failed("C:\\two.step", ""));

    failSaves(4097, 0);
    set(u"OutputPath2", u"");
    EXPECT_EQ(run(u"C:\\V\\d.zendrw", u"DWG (*.dwg)"), failed("C:\\out\\d.dwg", " and sheet 'S1'"));
    failSaves(256, 512);
    EXPECT_EQ(run(u"C:\\V\\d.zendrw", u"DWG (*.dwg)"),
        "The file 'C:\\V\\d.zendrw' and sheet 'S1' can't be converted to the file extension '.dwg'.\r\n");
}

TEST_F(ConversionMacro, TellsViewpaneAndPdfWhichSheetsToHold)
{
    run(u"C:\\V\\d.zendrw", u"Viewpane (*.vprt; *.vasm; *.vdrw)");
    EXPECT_EQ(callsOf("App.SetUserPreferenceIntegerValue"),
        Calls(2, "App.SetUserPreferenceIntegerValue(znViewpaneSaveAsSelectionOption, znViewpaneSaveActive)"));
    EXPECT_EQ(callsOf("Extension.SaveAs").front(),
        "Extension.SaveAs(C:\\out\\d_0.vdrw, znSaveAsCurrentVersion, 17, Nothing, 0, 0)");

    set(u"FileSheets", 2);
    set(u"OutputSheets", 8);
    set(u"NamedSheet", u"?*");
    run(u"C:\\V\\d.zendrw", u"Viewpane (*.vprt; *.vasm; *.vdrw)");
    EXPECT_EQ(callsOf("App.SetUserPreferenceStringListValue"),
        Calls{"App.SetUserPreferenceStringListValue(znEmodelSelectionList, S1\n図)"});
    run(u"C:\\V\\d.zendrw", u"Adobe PDF (*.pdf)");
    EXPECT_EQ(callsOf("PdfData"), Calls{"PdfData.SetSheets(znExportData_ExportSpecifiedSheets, [S1 図])"});
    EXPECT_EQ(callsOf("Extension.SaveAs"),
        Calls{"Extension.SaveAs(C:\\out\\d.pdf, znSaveAsCurrentVersion, 17, PdfData, 0, 0)"});

    set(u"NamedSheet", u"図面");
    EXPECT_EQ(run(u"C:\\V\\d.zendrw", u"Adobe PDF (*.pdf)"),
        "Document 'C:\\V\\d.zendrw' didn't contain any sheets named '<U+56F3><U+9762>'.\r\n");
}

TEST_F(ConversionMacro, Publishes3DPdf)
{
    set(u"PartThemeAndViewsChecks", 6);
    set(u"PartPrimaryViews", 4 + 64 + 512);
    set(u"Part3DPDFThemePath", u"C:\\V\\theme.xml");
    set(u"OutputPath2", u"C:\\two");
    cad.answer("Extension.Get3DViewNames", Value::arrayOf({u"*Dim"}, ValueType::String));
    cad.answer("Extension.PublishTo3DPDF", 0);
    const char16_t* format = u"3D PDF - MBD (*.pdf)";
    EXPECT_EQ(run(u"C:\\V\\p.zenprt", format), "");
    EXPECT_EQ(callsOf("Mbd"),
        (Calls{"Mbd.FilePath(C:\\out\\p.pdf)", "Mbd.ViewPdfAfterSaving(0)", "Mbd.ThemeName(C:\\V\\theme.xml)",
            "Mbd.SetStandardViews([1 3 9 0 0 0 0 0 0 0])", "Mbd.SetMoreViews([*Dim])", "Mbd.GetTextAndCustomProperties",
            "Mbd.FilePath(C:\\two.pdf)"}));
    EXPECT_EQ(callsOf("Extension.Publish").size(), 2U);

    const char* lines[]
        = {"3D PDF - Invalid path.\r\n", "Couldn\x92t access Theme file\r\n", "3D PDF - Unknown error.\r\n",
            "The source file 'C:\\V\\p.zenprt' does not contain any view(s) to publish.\r\n"};
    for (std::int32_t status = 1; status <= 4; ++status) {
        cad.answer("Extension.PublishTo3DPDF", status);
        EXPECT_EQ(run(u"C:\\V\\p.zenprt", format), lines[status - 1]);
        EXPECT_EQ(callsOf("Extension.Publish").size(), 1U);
    }
    EXPECT_EQ(run(u"C:\\V\\p.zenprt", format, u"zn2016"), "Unsupported ZENTREL version found on the task host \r\n");
    EXPECT_EQ(run(u"C:\\V\\d.zendrw", format), "The file extension 'zendrw' is not supported.\r\n");
    EXPECT_TRUE(callsOf("App.QuitDoc").empty());
}

TEST_F(ConversionMacro, FlattensSheetMetal)
{
    const char16_t* format = u"DXF (*.dxf)";
    cad.answer("Model.ExportToDWG2", true);
    EXPECT_EQ(run(u"C:\\V\\p.prt", format), "");
    EXPECT_EQ(callsOf("Model.Export"),
        Calls{"Model.ExportToDWG2(C:\\out\\p.dxf, C:\\V\\p.prt, znExportToDWG_ExportSheetMetal, -1, [0 0 0 1 0 0 0 1 "
              "0 0 0 1], 0, 0, 2175, Null)"});
    EXPECT_EQ(run(u"C:\\V\\p.zenprt", format, u"zn2017"), "Unsupported ZENTREL version found on the task host \r\n");
}

TEST_F(ConversionMacro, SaysWhatItCannotOpen)
{
    cad.answer("Spec.Error", 8192);
    EXPECT_EQ(run(u"C:\\V\\p.zenprt", u"STL (*.stl)"), "Document 'C:\\V\\p.zenprt' is future version.\r\n");

    // Any run-time error reaches the one handler.
    cad.answers["App.LoadFile4"] = [](MemberCall&) -> Value { throw StatusError(DISP_E_TYPEMISMATCH, "Odd"); };
    const std::string log = run(u"C:\\V\\p.STEP", u"STL (*.stl)");
    EXPECT_TRUE(log.starts_with("Error while converting file 'C:\\V\\p.STEP': \r\nAn unexpected error occurred while "
                                "executing the generated script. Script syntax error?\r\nError number: 13\r\nError "
                                "description: '"))
        << log;
    EXPECT_TRUE(log.ends_with("'\r\n\r\n")) << log;
}

TEST_F(ConversionMacro, ConvertsVirtualComponentsAfterTheirAssembly)
{
    set(u"OutputConfs", 4);
    cad.answer("Model.GetComponents", Value::arrayOf({Value(cad.object(u"Real")), Value(cad.object(u"Virtual"))}));
    cad.answer("Real.IsVirtual", false);
    cad.answer("Virtual.IsVirtual", true);
    cad.answer("Virtual.GetPathName", u"C:\\temp\\Bolt^Rack.zenprt");
    EXPECT_EQ(run(u"C:\\V\\Rack.zenasm", u"Viewpane (*.vprt; *.vasm; *.vdrw)"), "");
    EXPECT_EQ(callsOf("Extension.SaveAs"),
        (Calls{"Extension.SaveAs(C:\\out\\Rack.vasm, znSaveAsCurrentVersion, 1, Nothing, 0, 0)",
            "Extension.SaveAs(C:\\out\\Bolt^Rack.vprt, znSaveAsCurrentVersion, 1, Nothing, 0, 0)"}));
    EXPECT_EQ(callsOf("App.QuitDoc").size(), 2U);
}

} // namespace zn
