#include "tests/zentrel/application/Workshop.h"

#include "zentrel/application/MacroHost.h"
#include "zentrel/application/MacroRunner.h"

namespace zn::zentrel::test {

namespace {

using Macro = WorkshopTest;

using zn::language::Reason;

MacroOutcome run(Workshop& shop, const std::string& text)
{
    writeFile(shop.file("test.znb"), text);
    return runMacro(*shop.application, shop.path("test.znb"), u"ZNMacro1", u"main");
}

TEST_F(Macro, ConvertsADocumentByTheObjectModel)
{
    shop.makePart("Bar.zenprt", {u"Short", u"Long"});
    const std::string folder = zn::toUtf8(shop.path(""));
    const MacroOutcome outcome = run(shop,
        "Option Explicit\r\n"
        "Sub main()\r\n"
        "    Dim model As Zentrel.ModelDoc2, spec As Zentrel.DocumentSpecification, errors As Long, warnings As "
        "Long\r\n"
        "    Set spec = Application.Zentrel.GetOpenDocSpec(\""
            + folder
            + "\\Bar.zenprt\")\r\n"
              "    spec.DocumentType = znDocumentTypes_e.znDocPART\r\n"
              "    Set model = Application.Zentrel.OpenDoc7(spec)\r\n"
              "    Debug.Print model.Extension.SaveAs(\""
            + folder
            + "\\Bar.stl\", znSaveAsCurrentVersion, znSaveAsOptions_Silent, _\r\n"
              "        Nothing, errors, warnings); errors; warnings\r\n"
              "    Debug.Print model.Extension.SaveAs(\""
            + folder
            + "\\Bar.sat\", 0, 0, Nothing, errors, warnings) & errors\r\n"
              "    Application.Zentrel.QuitDoc model.GetTitle\r\n"
              "    Set model = Application.Zentrel.OpenDoc7(Application.Zentrel.GetOpenDocSpec(\"Z:\\no.zenprt\"))\r\n"
              "    Debug.Print model Is Nothing\r\n"
              "End Sub\r\n");
    EXPECT_TRUE(outcome.success) << (shop.log.empty() ? "" : shop.log.back());
    EXPECT_EQ(outcome.reason, Reason::None);
    EXPECT_THAT(shop.printed, ElementsAre(::testing::StartsWith("True"), "False256", "True"));
    EXPECT_EQ(std::filesystem::file_size(shop.file("Bar.stl")), 84U + 12 * 50) << "a box has 12 facets";
    EXPECT_EQ(objectOf(*shop.application, u"GetFirstDocument"), nullptr);
}

TEST_F(Macro, AFaultHasAReasonAndShowsItsPlace)
{
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

TEST_F(Macro, EndsWhenWhoeverUsesTheApplicationHasGone)
{
    int asked = 0;
    Workshop left([&] { return ++asked > 3; });
    EXPECT_FALSE(run(left, "Sub main()\r\n    Do\r\n    Loop\r\nEnd Sub\r\n").success);
}

TEST_F(Macro, FoldersAndFilesOfWideNamesAreMadeByPointers)
{
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

TEST_F(Macro, ABoxIsAnsweredByItsDefaultButton)
{
    const std::pair<int, int> answers[]
        = {{0, 1}, {1, 1}, {1 + 256, 2}, {3 + 32, 6}, {4 + 256, 7}, {2 + 512, 5}, {5, 4}, {15, 1}};
    for (const auto& [buttons, answer] : answers)
        EXPECT_EQ(defaultAnswer(buttons), answer) << buttons;
}

} // namespace

} // namespace zn::zentrel::test
