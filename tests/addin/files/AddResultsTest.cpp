#include "base/Dates.h"
#include "tests/addin/files/FilesFixture.h"

#include <algorithm>

namespace zn {

class AddResults : public test::FilesFixture {
protected:
    static std::vector<std::string> checkIn(const std::string& pairs)
    {
        return {
            "CreateUtility 6", "SetComment ZENTREL Task Add-in", "UnlockSelection " + pairs, "UnlockTree 1", "Unlock"};
    }
};

using Lines = std::vector<std::string>;

Lines operator+(Lines a, const Lines& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

TEST_F(AddResults, GoInByOneBatchForEachStep)
{
    host.cardVariables = {u"Note"};
    host.taskVariables = {{u"FileCardData", u"Note;3;\n"}, {u"RefToSource", true}};
    host.addFile(20, 5, vaultPath("old.stl"), 9);
    begin(TaskKind::Conversion);
    save(vaultPath("old.stl"), u"Long");
    save(vaultPath("out\\new.stl"), u"Short");
    save(platform.path("outside.stl"));
    logic.NoteSavedFile(vaultPath("failed.stl"), u"", false);
    logic.NotePrintedItem(u"Laser", u"");
    host.calls.clear();

    EXPECT_EQ(addResults(), S_OK);
    EXPECT_EQ(takeCalls(),
        (Lines{"CreateUtility 16", "AddFile V:\\out\\new.stl | V:\\out | - | 0", "AddCommit 1", "CreateUtility 2",
             "GetVersionInfo 7 2 3", "SetVariable 20 1 Long (type 8) 1", "GetVersionInfo 7 2 3",
             "SetVariable 1001 1 Short (type 8) 1", "CardCommit", "CreateUtility 8", "AddReferences 20 > 7/3",
             "AddReferences 1001 > 7/3", "ReferenceTree", "ReferenceCommit"}
            + checkIn("20/5 1001/50")));
    EXPECT_TRUE(logLines.empty());
    EXPECT_EQ(source.latestVersion, 4);
}

TEST_F(AddResults, WithNothingSavedTouchNothing)
{
    begin(TaskKind::Conversion);
    EXPECT_EQ(addResults(), S_OK);
    EXPECT_TRUE(host.calls.empty());
    logic.NotePrintedItem(u"Laser", u"");
    EXPECT_EQ(addResults(), S_OK);
    EXPECT_EQ(takeCalls(), Lines{"CreateUtility 16"});
}

TEST_F(AddResults, FailFileByFile)
{
    begin(TaskKind::General);
    for (const char* name : {"a.stl", "b.stl", "c.stl"})
        save(vaultPath(name));
    host.addStatuses[vaultPath("a.stl")] = E_ARK_PERMISSION_DENIED;
    // Not found at the save, but there when the batch comes: its ids are looked up.
    host.addStatuses[vaultPath("b.stl")] = E_ARK_NAME_ALREADY_EXISTS;
    host.addFile(33, 3, vaultPath("b.stl"), 1);
    EXPECT_EQ(addResults(), S_OK);
    EXPECT_EQ(logLines, Lines{"80040203 Error adding a file to the vault."});
    const Lines calls = takeCalls();
    EXPECT_EQ(Lines(calls.end() - 5, calls.end()), checkIn("33/3 1003/50"));

    // Without any rights to look that file up, the whole step ends.
    begin(TaskKind::General);
    save(vaultPath("d.stl"));
    host.addStatuses[vaultPath("d.stl")] = E_ARK_NAME_ALREADY_EXISTS;
    host.failures["GetFileFromPath " + toUtf8(vaultPath("d.stl"))] = E_ARK_PERMISSION_DENIED;
    EXPECT_EQ(addResults(), E_ARK_PERMISSION_DENIED);
}

TEST_F(AddResults, LogAFailureOfTheWhole)
{
    struct Case {
        const char* call;
        const char* line;
    };
    const std::string references = "80040203 Error creating references from source to destination file.";
    const Case cases[] = {
        {"CreateUtility 16", "80040203 Creating ArkUtil_BatchAdd interface."},
        {"AddFile", "80040203 Adding file 'V:\\out' from path."},
        {"AddCommit", "80040203 Adding files to the vault. No permission to add files to the destination folder?"},
        {"CreateUtility 2", references.c_str()},
        {"GetVersionInfo", references.c_str()},
        {"SetVariable", references.c_str()},
        {"CardCommit", references.c_str()},
        {"GetValue FileCardData", references.c_str()},
        {"GetValue RefToSource", references.c_str()},
        {"CreateUtility 8", references.c_str()},
        {"AddReferences", references.c_str()},
        {"ReferenceTree", references.c_str()},
        {"ReferenceCommit", references.c_str()},
        {"CreateUtility 6", "80040203 Checking in all checked out docs."},
        {"UnlockTree", "80040203 Unlocking files."},
        {"Unlock", "80040203 Unlocking files."},
    };
    host.cardVariables = {u"Note"};
    host.taskVariables = {{u"FileCardData", u"Note;3;\n"}, {u"RefToSource", true}};
    for (const Case& c : cases) {
        logLines.clear();
        host.failures.clear();
        begin(TaskKind::Conversion);
        save(vaultPath("out\\a.stl"));
        host.failures[c.call] = E_ARK_PERMISSION_DENIED;
        host.calls.clear();
        EXPECT_EQ(addResults(), E_ARK_PERMISSION_DENIED) << c.call;
        EXPECT_EQ(logLines, Lines{c.line}) << c.call;
        const Lines calls = takeCalls();
        if (c.line == references) {
            EXPECT_EQ(std::ranges::count(calls, "CreateUtility 6"), 0) << "checked in after " << c.call;
        }
    }
}

TEST_F(AddResults, ResolveCardTokensInTheFolder)
{
    host.cardVariables = {u"Project", u"Phase"};
    host.find(7)->card = {{{u"Project", u"Long"}, u"Pump"}, {{u"Project", u"@"}, u"Own"}};
    host.taskVariables[u"UsedVariables"] = u"Project,Gone,Phase,,Number";
    begin(TaskKind::General);
    save(vaultPath("%Project%\\x%Phase%\\%Gone%\\a_%Project%.stl"), u"Long");
    save(vaultPath("%Project%\\b.stl"), u"");
    host.calls.clear();
    EXPECT_EQ(addResults(), S_OK);
    EXPECT_EQ(takeCalls(),
        (Lines{"CreateUtility 16",
             "AddFile V:\\%Project%\\x%Phase%\\%Gone%\\a_%Project%.stl | V:\\Pump\\x\\%Gone% | a_%Project%.stl | 64",
             "AddFile V:\\%Project%\\b.stl | V:\\Own | b.stl | 64", "AddCommit 2"}
            + checkIn("1001/50 1002/50")));
    EXPECT_EQ(logic.records()[0].path, vaultPath("Pump\\x\\%Gone%\\a_%Project%.stl"));
}

TEST_F(AddResults, TransferCardValuesBySourceKind)
{
    platform.clock.time = 1520258829;
    const std::string now = "1 " + toUtf8(dateText(dayCountFromUnix(platform.clock.time))) + " (type 7) 1,";
    host.cardVariables = {u"Out", u"Title", u"Weight", u"Empty"};
    test::FakeFile& file = *host.find(7);
    file.revision = u"B";
    file.workflowState = u"Released";
    file.card = {{{u"Title", u"Long"}, u"Long flange"}, {{u"Title", u"@"}, u"Flange"}, {{u"Weight", u"@"}, 2.5},
        {{u"Empty", u"Long"}, Value()}, {{u"Empty", u"@"}, u"own"}};
    const auto valueOf = [&](const char16_t* line, bool cadFile, std::int32_t version) {
        host.taskVariables[u"FileCardData"] = line;
        source.isCadFile = cadFile;
        source.version = version;
        begin(TaskKind::Conversion);
        save(vaultPath("a.stl"), u"Long");
        host.calls.clear();
        EXPECT_EQ(addResults(), S_OK);
        std::string values;
        for (const std::string& call : takeCalls()) {
            if (call.starts_with("SetVariable 1001 "))
                values += call.substr(17) + ",";
        }
        return values;
    };
    struct Case {
        const char16_t* line = u"";
        const char* value = "";
        bool cadFile = true;
        std::int32_t version = 0;
    };
    const Case cases[] = {
        {u"Out;1;\n", "1 V:\\flange.zenprt (type 8) 1,"},
        {u"Out;2;\n", "1 V: (type 8) 1,"},
        {u"Out;3;\n", "1 Long (type 8) 1,"},
        {u"Out;4;\n", "1 B (type 8) 1,"},
        {u"Out;5;\n", "1 4 (type 3) 1,"},
        {u"Out;5;\n", "1 2 (type 3) 1,", true, 2},
        {u"Out;6;\n", "1 Released (type 8) 1,"},
        {u"Out;7;\n", now.c_str()},
        {u"Out;8;a; b;\n", "1 a; b; (type 8) 1,"},
        {u"Out;8", "1  (type 8) 1,"},
        {u"Out;100;Title\n", "1 Long flange (type 8) 1,"},
        {u"Out;100;Weight\n", "1 2.5 (type 5) 1,"},
        {u"Out;100;Empty\n", "1 own (type 8) 1,"},
        {u"Out;100;Title\n", "", false}, // no CAD file: the fake has no value for the empty configuration
        {u"out;1;\n;1;\nOut;9;\nOut;100;Nothing\nOut;3;\n\nOut;4;\n", "1 Long (type 8) 1,"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(toUtf8(c.line));
        EXPECT_EQ(valueOf(c.line, c.cadFile, c.version), c.value);
    }
    for (const char16_t* nothing : {u"", u"Gone;1;\n"}) {
        EXPECT_EQ(valueOf(nothing, true, 0), "");
        host.taskVariables[u"FileCardData"] = nothing;
    }
}

TEST_F(AddResults, AddALogOfItsOwn)
{
    const Text log = vaultPath("Logs\\run.log");
    write(log);
    begin(TaskKind::Conversion);
    host.failures["Unlock"] = E_FAIL;
    test::expectStatus(E_FAIL, [&] { logic.CommitLogFile(log); });
    EXPECT_EQ(takeCalls(),
        (Lines{"CreateUtility 16", "AddFile V:\\Logs\\run.log | V:\\Logs | - | 0", "AddCommit 1"}
            + checkIn("1001/50")));
    ASSERT_EQ(logic.records().size(), 1U); // it is there all the same
    EXPECT_TRUE(logic.records().front().hidden);
    logic.WriteList(task, TaskKind::Conversion, nullptr);
    EXPECT_EQ(host.taskVariables.at(u"__output_list"), Value(u"<sels/>"));

    begin(TaskKind::Conversion);
    host.failures = {{"AddCommit", E_ARK_PERMISSION_DENIED}};
    test::expectStatus(E_ARK_PERMISSION_DENIED, [&] { logic.CommitLogFile(log); });
    EXPECT_TRUE(logic.records().empty());
}

} // namespace zn
