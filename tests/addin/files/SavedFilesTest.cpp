#include "tests/addin/files/FilesFixture.h"

namespace zn {

class SavedFiles : public test::FilesFixture { };

using Lines = std::vector<std::string>;

TEST_F(SavedFiles, ClearAStaleFileThatTheVaultDoesNotKnow)
{
    begin(TaskKind::Conversion);
    const Text path = vaultPath("out\\..\\a.stl");
    write(vaultPath("out\\x"));
    write(vaultPath("a.stl"));
    files.setReadOnly(vaultPath("a.stl"), true);
    logic.NoteSavedFile(path, u"Long", false);
    EXPECT_FALSE(files.fileExists(vaultPath("a.stl")));
    ASSERT_EQ(logic.records().size(), 1U);
    const OutputRecord& record = logic.records().front();
    EXPECT_EQ(record.path, path);
    EXPECT_EQ(record.configuration, u"Long");
    EXPECT_EQ(record.source, &source);
    EXPECT_TRUE(record.insideVault);
    EXPECT_FALSE(record.added);

    // Three messages: a code, the canonical path in 16-bit units and a zero.
    ASSERT_EQ(platform.pipe.messages.size(), 3U);
    const std::string& message = platform.pipe.messages[0];
    EXPECT_EQ(message.size(), vaultPath("a.stl").size() * 2 + 6);
    EXPECT_EQ(message.substr(0, 6), std::string("\1\0\0\0Z\0", 6));
    EXPECT_EQ(message.substr(message.size() - 4), std::string("l\0\0\0", 4));

    // A second save is recognised by its canonical path, which is compared with the path of the first.
    logic.NoteSavedFile(u"C:\\Out\\b.stl", u"", false);
    logic.NoteSavedFile(u"c:\\out\\x\\..\\B.STL", u"Late", false);
    logic.NoteSavedFile(u"", u"", false);
    ASSERT_EQ(logic.records().size(), 2U);
    EXPECT_FALSE(logic.records()[1].insideVault);
    EXPECT_EQ(logic.records()[1].configuration, u"Late") << "the application had gone away before it could tell";
    platform.pipe.messages.clear();
    logic.NoteSavedFile(u"C:\\" + Text(400, u'x'), u"", false);
    EXPECT_EQ(platform.pipe.messages.at(0).size(), 260U * 2 + 6) << "a message's path is cut";
}

TEST_F(SavedFiles, CheckOutForANewVersion)
{
    const Text path = vaultPath("a.stl");
    write(path);
    host.addFile(20, 5, path, 9);
    begin(TaskKind::Conversion);
    logic.NoteSavedFile(path, u"", false);
    EXPECT_EQ(takeCalls(), Lines{"CheckOut 20 5"});
    ASSERT_EQ(logic.records().size(), 1U);
    const OutputRecord& record = logic.records().front();
    EXPECT_EQ(std::tuple(record.docId, record.projId, record.version, record.added), std::tuple(20, 5, 9, true));
    EXPECT_TRUE(files.fileExists(path));
    EXPECT_TRUE(platform.pipe.messages.empty());

    // Whose check-out it is makes no difference.
    begin(TaskKind::Conversion);
    logic.NoteSavedFile(path, u"", false);
    EXPECT_TRUE(takeCalls().empty());
    EXPECT_TRUE(logic.records().front().added);

    host.find(20)->checkedOut = false;
    host.failures["CheckOut"] = E_ARK_PERMISSION_DENIED;
    begin(TaskKind::Conversion);
    logic.NoteSavedFile(path, u"", false);
    EXPECT_TRUE(logic.records().empty());
    logic.NoteSavedFile(path, u"", true); // the system's own file
    EXPECT_TRUE(logic.records().empty());
    host.failures.clear();
    host.calls.clear();
    for (int look = 0; look < 2; ++look) // the log, once for the run
        logic.PrepareLogFile(vaultPath(".\\a.stl"));
    EXPECT_EQ(takeCalls(), Lines{"CheckOut 20 5"});
}

} // namespace zn
