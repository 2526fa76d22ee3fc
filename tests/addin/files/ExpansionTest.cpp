#include "tests/addin/files/FilesFixture.h"

namespace zn {

class Expansion : public test::FilesFixture {
protected:
    std::vector<std::string> expand(const ArkSelection& items, bool fetch)
    {
        selection.clear();
        logic.ExpandSelection(*vault, task, items, selection, fetch);
        std::vector<std::string> lines;
        for (const auto& record : selection) {
            Text path = record->path;
            replaceAll(path, host.root, u"V:");
            lines.push_back(toUtf8(formatText("%s %d/%d v%d latest %d '%s'%s", path, record->docId, record->projId,
                record->version, record->latestVersion, record->selConfiguration, record->isCadFile ? " cad" : "")));
        }
        return lines;
    }

    SelectionRecords selection;
};

using Lines = std::vector<std::string>;

TEST_F(Expansion, FetchesAllInOneBatchAndLearnsTheLatestVersions)
{
    const ArkSelection items = {{7, 3, vaultPath("flange.zenprt"), u"", ArkItemType::File, -1},
        {7, 3, vaultPath("flange.zenprt"), u"", ArkItemType::File, 2},
        {99, 3, vaultPath("gone.zenprt"), u"", ArkItemType::File, 1}};
    begin(TaskKind::Conversion);
    EXPECT_EQ(expand(items, true),
        (Lines{"V:\\flange.zenprt 7/3 v-1 latest 4 '' cad", "V:\\flange.zenprt 7/3 v2 latest 4 '' cad",
            "V:\\gone.zenprt 99/3 v1 latest -1 '' cad"}));
    EXPECT_EQ(takeCalls(),
        (Lines{"CreateUtility 12", "FetchSelection 7/3 0", "FetchSelection 7/3 2", "FetchSelection 99/3 1",
            "FetchTree 0", "GetFiles", "CreateUtility 13", "CreateList"}));
    EXPECT_EQ(effectiveVersion(*selection[0]), 4);
    EXPECT_EQ(effectiveVersion(*selection[1]), 2);

    for (const char* call : {"CreateUtility 12", "FetchTree", "GetFiles", "CreateUtility 13", "CreateList"}) {
        host.failures = {{call, E_ARK_PERMISSION_DENIED}};
        EXPECT_THROW(expand(items, true), StatusError) << call;
    }
}

TEST_F(Expansion, FetchesReferencedVersionsAsTheTaskSays)
{
    struct Case {
        Value sourceRefs;
        Value printRefs;
        const char* tree;
    };
    const Case cases[] = {{5, 1, "FetchTree 1"}, {6, 0, "FetchTree 0"}, {u"1", Value(), "FetchTree 1"},
        {Value(), 0, "FetchTree 1"}, {Value(), 1, "FetchTree 0"}, {Value(), Value(), "FetchTree 0"}};
    begin(TaskKind::Conversion);
    for (const Case& c : cases) {
        host.taskVariables.clear();
        if (!c.sourceRefs.isEmpty())
            host.taskVariables[u"SourceRefs"] = c.sourceRefs;
        if (!c.printRefs.isEmpty())
            host.taskVariables[u"__printer_refversiontype"] = c.printRefs;
        expand({}, true);
        EXPECT_EQ(takeCalls()[1], c.tree);
    }
    host.taskVariables[u"SourceRefs"] = u"both";
    EXPECT_THROW(expand({}, true), StatusError);
}

TEST_F(Expansion, AsksTheVaultOnlyAboutItsOwnFiles)
{
    begin(TaskKind::Conversion);
    host.addFile(30, 3, vaultPath("themes\\theme.xml"), 1);
    EXPECT_TRUE(logic.CanReadVaultFile(u"C:\\elsewhere\\theme.xml"));
    EXPECT_TRUE(logic.CanReadVaultFile(u"<VaultPath>\\themes\\theme.xml"));
    EXPECT_EQ(takeCalls(), Lines{"HasReadRight 1 30"});
    host.failures = {{"HasReadRight 1 30", S_FALSE}};
    EXPECT_FALSE(logic.CanReadVaultFile(u"<VaultPath>\\themes\\theme.xml"));
    const std::string lookUp = "GetFileFromPath " + toUtf8(vaultPath("themes\\theme.xml"));
    host.failures = {{lookUp, E_ARK_PERMISSION_DENIED}};
    EXPECT_FALSE(logic.CanReadVaultFile(u"<VaultPath>\\themes\\theme.xml"));
    host.failures = {{lookUp, E_FAIL}};
    EXPECT_TRUE(logic.CanReadVaultFile(u"<VaultPath>\\themes\\theme.xml"));
}

} // namespace zn
