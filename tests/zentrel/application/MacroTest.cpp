#include "tests/zentrel/application/Workshop.h"

#include "zentrel/application/MacroHost.h"
#include "zentrel/application/MacroRunner.h"

namespace zn::zentrel::test {

namespace {

using ::testing::ElementsAre;
using zn::language::Reason;

MacroOutcome run(Workshop& shop, const std::string& text)
{
    writeFile(shop.file("test.znb"), text);
    return runMacro(*shop.application, shop.path("test.znb"), u"ZNMacro1", u"main");
}

TEST(Macro, ConvertsADocumentByTheObjectModel)
{
    Workshop shop;
    shop.makePart("Bar.zenprt", {u"Short", u"Long"});
    const std::string folder = zn::toUtf8(shop.path(""));
    const MacroOutcome outcome = run(shop,
        "Option Explicit\r\n"
        "Dim znApp As Object\r\n"
        "Dim znModel As Zentrel.ModelDoc2\r\n"
        "Dim znExtension As Zentrel.ModelDocExtension\r\n"
        "Dim spec As Zentrel.DocumentSpecification\r\n"
        "Sub main()\r\n"
        "    Dim names As Variant, i As Long, errors As Long, warnings As Long\r\n"
        "    Set znApp = Application.Zentrel\r\n"
        "    znApp.Visible = True\r\n"
        "    Set spec = znApp.GetOpenDocSpec(\""
            + folder
            + "\\Bar.zenprt\")\r\n"
              "    spec.DocumentType = znDocumentTypes_e.znDocPART\r\n"
              "    spec.ReadOnly = True\r\n"
              "    Set znModel = znApp.OpenDoc7(spec)\r\n"
              "    If CInt(Left(znApp.RevisionNumber, 2)) >= 18 Then znApp.Frame.KeepInVisible = True\r\n"
              "    Set znExtension = znModel.Extension\r\n"
              "    names = znModel.GetConfigurationNames\r\n"
              "    For i = LBound(names) To UBound(names)\r\n"
              "        znModel.ShowConfiguration names(i)\r\n"
              "        Debug.Print znExtension.SaveAs(\""
            + folder
            + "\\Bar_\" & names(i) & \".stl\", _\r\n"
              "            znSaveAsCurrentVersion, znSaveAsOptions_Silent, Nothing, errors, warnings), errors, "
              "warnings\r\n"
              "        Debug.Print znExtension.SaveAs(\""
            + folder
            + "\\Bar.sat\", 0, 0, Nothing, errors, warnings) & errors\r\n"
              "    Next i\r\n"
              "    znApp.QuitDoc znModel.GetTitle\r\n"
              "    Set znModel = znApp.OpenDoc7(znApp.GetOpenDocSpec(\"Z:\\no.zenprt\"))\r\n"
              "    Debug.Print znModel Is Nothing\r\n"
              "End Sub\r\n");
    EXPECT_TRUE(outcome.success) << (shop.log.empty() ? "" : shop.log.back());
    EXPECT_EQ(outcome.reason, Reason::None);
    ASSERT_EQ(shop.printed.size(), 5U);
    EXPECT_THAT(shop.printed[0], ::testing::StartsWith("True"));
    EXPECT_EQ(shop.printed[1], "False256");
    EXPECT_EQ(shop.printed[4], "True");
    EXPECT_EQ(std::filesystem::file_size(shop.file("Bar_Short.stl")), 84U + 12 * 50) << "a box has 12 facets";
    EXPECT_EQ(std::filesystem::file_size(shop.file("Bar_Long.stl")), 84U + 12 * 50);
    EXPECT_EQ(objectOf(*shop.application, u"GetFirstDocument"), nullptr);
}

TEST(Macro, AFaultHasAReasonAndShowsItsPlace)
{
    Workshop shop;
    const std::string file = zn::toUtf8(shop.path("test.znb"));
    const struct {
        const char* text;
        Reason reason;
        std::string logged;
    } cases[] = {
        {"Sub main()\r\n    x = = 1\r\nEnd Sub\r\n", Reason::CallFailed, file + ":2:9: "},
        {"Sub other()\r\nEnd Sub\r\n", Reason::InvalidProcedureName, file + ": "},
        {"Sub main()\r\n    Dim n As Long\r\n    n = \"four\"\r\nEnd Sub\r\n", Reason::TypeMismatch,
            "\n        n = \"four\"\n"},
        {"", Reason::InvalidProcedureName, file + ": "},
    };
    for (const auto& one : cases) {
        shop.log.clear();
        const MacroOutcome outcome = run(shop, one.text);
        EXPECT_FALSE(outcome.success) << one.text;
        EXPECT_EQ(outcome.reason, one.reason) << one.text;
        ASSERT_EQ(shop.log.size(), 1U) << one.text;
        EXPECT_THAT(shop.log[0], HasSubstr(one.logged)) << one.text;
    }
    EXPECT_EQ(runMacro(*shop.application, shop.path("none.znb"), u"ZNMacro1", u"main").reason, Reason::OpenFailed);
    EXPECT_THAT(shop.log.back(), HasSubstr("none.znb' cannot be read: No such file"));
    EXPECT_EQ(
        runMacro(*shop.application, shop.path("test.znb"), u"Module2", u"main").reason, Reason::InvalidProcedureName);
    EXPECT_EQ(
        faultText("a.znb", 3, 4, u"Expected: end.", u"\tif x"), "a.znb:3:4: Expected: end.\n    \tif x\n    \t  ^");
}

TEST(Macro, EndsWhenWhoeverUsesTheApplicationHasGone)
{
    int asked = 0;
    Workshop shop([&] { return ++asked > 3; });
    EXPECT_FALSE(run(shop, "Sub main()\r\n    Do\r\n    Loop\r\nEnd Sub\r\n").success);
}

TEST(Macro, FoldersAndFilesOfWideNamesAreMadeByPointers)
{
    Workshop shop;
    const std::string folder = zn::toUtf8(shop.path(""));
    const MacroOutcome outcome = run(shop,
        "#If VBA7 Then\r\n"
        "Private Declare PtrSafe Function SHCreateDirectoryEx Lib \"shell32\" Alias \"SHCreateDirectoryExW\" _\r\n"
        "    (ByVal hwnd As LongPtr, ByVal pszPath As LongPtr, ByVal psa As LongPtr) As Long\r\n"
        "Private Declare PtrSafe Function PathIsRelative Lib \"shlwapi.dll\" Alias \"PathIsRelativeW\" _\r\n"
        "    (ByVal pszPath As LongPtr) As Long\r\n"
        "#End If\r\n"
        "Sub main()\r\n"
        "    Dim path As String\r\n"
        "    path = \""
            + folder
            + "\\\" & ChrW(1046) & \"\\deep\\\"\r\n"
              "    Debug.Print SHCreateDirectoryEx(0, StrPtr(path), 0) & \" \" & SHCreateDirectoryEx(0, StrPtr(path), "
              "0)\r\n"
              "    Debug.Print PathIsRelative(StrPtr(path)) & PathIsRelative(StrPtr(\"logs\")) & "
              "PathIsRelative(StrPtr(\"\\logs\"))\r\n"
              "    path = path & \"run.log\"\r\n"
              "    Open StrPtr(path) For Append As #1\r\n"
              "    Print #1, \"first\"\r\n"
              "    Close #1\r\n"
              "    Open StrPtr(path) For Append As #1\r\n"
              "    Print #1, \"second\"\r\n"
              "    Close #1\r\n"
              "End Sub\r\n");
    EXPECT_TRUE(outcome.success) << (shop.log.empty() ? "" : shop.log.back());
    EXPECT_THAT(shop.printed, ElementsAre("0 183", "010"));
    EXPECT_EQ(readFile(shop.file("\xD0\x96/deep/run.log")), "first\r\nsecond\r\n");
}

TEST(Macro, ABoxIsAnsweredByItsDefaultButton)
{
    const std::pair<int, int> answers[]
        = {{0, 1}, {1, 1}, {1 + 256, 2}, {3 + 32, 6}, {4 + 256, 7}, {2 + 512, 5}, {5, 4}, {15, 1}};
    for (const auto& [buttons, answer] : answers)
        EXPECT_EQ(defaultAnswer(buttons), answer) << buttons;
}

} // namespace

} // namespace zn::zentrel::test
