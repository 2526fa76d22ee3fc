#include "tests/addin/files/FilesFixture.h"

namespace zn {

class FileLists : public test::FilesFixture {
protected:
    std::string listText(const char16_t* variable) { return toUtf8(host.taskVariables.at(variable).toText()); }
};

TEST_F(FileLists, NamesTheSourceAndWhereItsResultWent)
{
    begin(TaskKind::Conversion);
    source.path = u"C:\\V\\a & <b>.zendrw";
    logic.NoteSavedFile(u"C:\\out\\日 1.pdf", u"Sheet1", false);
    for (int copy = 0; copy < 2; ++copy) // each printout is noted
        logic.NotePrintedItem(u"Laser", u"Sheet2");
    const std::string head = "<sel><doc_id>7</doc_id><proj_id>3</proj_id><path>C:\\V\\a &amp; "
                             "&lt;b&gt;.zendrw</path><ver>2</ver><conf>Sheet";
    struct Case {
        TaskKind kind;
        std::string first;
        std::string second;
    };
    const Case cases[] = {
        {TaskKind::Conversion, "1</conf><extra>C:\\out\\日 1.pdf</extra>", "2</conf><extra></extra>"},
        {TaskKind::Printing, "1</conf>", "2</conf><extra>Laser</extra>"},
        {TaskKind::General, "1</conf>", "2</conf>"},
    };
    for (const Case& c : cases) {
        logic.WriteList(task, c.kind, nullptr);
        EXPECT_EQ(listText(u"__output_list"),
            "<sels>" + head + c.first + "</sel>" + head + c.second + "</sel>" + head + c.second + "</sel></sels>");
    }
}

TEST_F(FileLists, ComeBackAsTheyWereWritten)
{
    const Text paths[] = {u" a\r\nb\t]]>&amp;\"'.prt ", u"\U0001F600\\%20{}.step", u"  ", u""};
    SelectionRecords selection;
    for (const Text& path : paths) {
        selection.push_back(std::make_unique<OutputRecord>());
        selection.back()->path = path;
        selection.back()->docId = -5;
        selection.back()->projId = 2147483647;
        selection.back()->version = -1;
        selection.back()->selConfiguration = u"not stored";
    }
    begin(TaskKind::Conversion);
    logic.NotePrintedItem(u"gone afterwards", u"");
    logic.WriteList(task, TaskKind::Unknown, &selection);
    EXPECT_EQ(logic.records().size(), 4U);

    const auto records = logic.ReadList(task, false);
    ASSERT_TRUE(records && records->size() == 4U);
    for (std::size_t i = 0; i < 4; ++i) {
        const OutputRecord& record = (*records)[i];
        EXPECT_EQ(record.path, paths[i]);
        EXPECT_EQ(std::tuple(record.docId, record.projId, record.version, record.latestVersion),
            std::tuple(-5, 2147483647, -1, -1));
        EXPECT_EQ(record.selConfiguration, u"");
    }
    EXPECT_FALSE(logic.ReadList(task, true));
}

TEST_F(FileLists, ReadWhatOthersMayHaveWritten)
{
    const auto read = [this](const char16_t* text) {
        host.taskVariables[u"__output_list"] = text;
        return logic.ReadList(task, true).value();
    };
    EXPECT_TRUE(read(u"<sels></sels>").empty());
    const auto records = read(u"<?xml version=\"1.0\"?>\r\n<sels><group><sel><ver>abc</ver><path>a</path><path>b</path>"
                              u"<DOC_ID>9</DOC_ID><doc_id> 12x</doc_id><conf>C</conf><extra>e</extra><new/></sel>"
                              u"</group>\r\n<sel/></sels>");
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0].path, u"b");
    EXPECT_EQ(records[0].version, 0);
    EXPECT_EQ(records[0].docId, 12);
    EXPECT_EQ(records[0].selConfiguration, u"C");
    EXPECT_EQ(records[0].configuration, u"");
    EXPECT_EQ(records[0].extra, u"e");

    const auto parted
        = read(u"<sels><sel><path>C:\\a<!-- moved -->\\b.<![CDATA[st]]>l</path><ver><?x y?>4</ver></sel></sels>");
    ASSERT_EQ(parted.size(), 1U);
    EXPECT_EQ(parted[0].path, u"C:\\a\\b.stl");
    EXPECT_EQ(parted[0].version, 4);

    for (const char16_t* broken : {u"", u"<sels>", u"sels"}) {
        host.taskVariables[u"__output_list"] = broken;
        EXPECT_THROW(logic.ReadList(task, true), BrokenListError);
    }
    host.failures["GetValue __output_list"] = E_ACCESSDENIED;
    test::expectStatus(E_ACCESSDENIED, [&] { logic.ReadList(task, true); });
}

TEST_F(FileLists, CountAndCollectWhatIsOnDisk)
{
    begin(TaskKind::Conversion);
    const Text outside = platform.path("a.stl");
    const Text log = vaultPath("run.log");
    save(vaultPath("a.stl"));
    save(vaultPath("b.stl"));
    save(outside);
    logic.NoteSavedFile(vaultPath("never written.stl"), u"", false);
    logic.NotePrintedItem(u"Laser", u"");
    logic.CommitLogFile(log); // there is none yet
    EXPECT_FALSE(logic.HasHiddenFile());
    write(log);
    logic.CommitLogFile(log);
    EXPECT_TRUE(logic.HasHiddenFile());

    EXPECT_EQ(logic.CountResultFiles(false, false), 2);
    EXPECT_EQ(logic.CountResultFiles(true, false), 3);
    EXPECT_EQ(logic.CountResultFiles(true, true), 4);
    host.addFile(20, 3, vaultPath("B.STL"), 6);
    host.addFile(21, 3, log, 1);
    using Documents = std::vector<ArkTaskResultDoc>;
    EXPECT_EQ(logic.CollectResultFiles(false), (Documents{{20, 1, 3, 6}})); // "a.stl" isn't in the vault
    EXPECT_EQ(logic.CollectResultFiles(true), (Documents{{20, 1, 3, 6}, {21, 1, 3, 1}}));

    SelectionRecords selection;
    logic.WriteList(task, TaskKind::Conversion, &selection);
    EXPECT_FALSE(logic.HasHiddenFile());
    EXPECT_EQ(listText(u"__selection_list"), "<sels/>");
}

} // namespace zn
