#include "arkin/store/DeleteFile.h"
#include "arkin/vault/VaultObject.h"
#include "contracts/host/ArkBatch.h"
#include "tests/arkin/VaultFixture.h"

namespace zn::arkin {
namespace {

using namespace test;
using namespace zn;

constexpr const char16_t* allColumns
    = u"#ArkCol_Name\n#ArkCol_Path\n#ArkCol_Configuration\n#ArkCol_ParentFileID\n#ArkCol_ParentFileConfiguration\n"
      u"#ArkCol_ArkListRetFileFlag\n#ArkCol_AttachedVersion";
constexpr const char16_t* shortColumns
    = u"#ArkCol_ParentFileID\r\n#ArkCol_Name\r\n#ArkCol_Configuration\r\n#ArkCol_AttachedVersion\r\n";

class BatchListTest : public VaultFixture {
protected:
    /// A new version that refers to a further file.
    void refer(const Place& from, const std::string& relative, const Place& to)
    {
        checkOut(test.vault, from);
        writeFile(test.local(relative), relative + " again");
        test.refer(from, {to});
        test.checkInAll({from});
    }

    static ArkSelItem file(const Place& place, const char16_t* configuration = u"", std::int32_t version = 0)
    {
        return {place.fileId, place.folderId, u"", configuration, ArkItemType::File, version};
    }

    std::vector<ArkListRow> rows(const ArkSelection& selection, const char16_t* columns, std::int32_t flag = 0)
    {
        ObjectRef object;
        EXPECT_EQ(vault.CreateUtility(ArkUtil_BatchList, object), S_OK);
        const auto list = query<IArkBatchList>(object);
        EXPECT_EQ(list->AddSelection(vault, selection), S_OK);
        std::vector<ArkListRow> all;
        EXPECT_EQ(list->GetRows(columns, flag, all), S_OK);
        return all;
    }

    /// "parent>name:configuration@version" of each row, the parents by name.
    std::vector<std::string> outline(const ArkSelection& selection, std::int32_t flag = 0)
    {
        std::vector<std::string> lines;
        for (const ArkListRow& row : rows(selection, shortColumns, flag)) {
            const auto parent = test.vault.files().row(leadingInteger(row.columns[0]));
            const Text& configuration = row.columns[2];
            lines.push_back((parent ? toUtf8(parent->name) + ">" : "") + toUtf8(row.columns[1])
                + (configuration.empty() ? "" : ":" + toUtf8(configuration)) + "@" + toUtf8(row.columns[3]));
        }
        return lines;
    }

    using Lines = std::vector<std::string>;
    VaultObject vault{test.vault};
};

TEST_F(BatchListTest, GivesTheColumnsInTheOrderAskedFor)
{
    const Place part = test.addReleased("parts/Bolt.zenprt", "a bolt");
    const Place drawing = test.addReferring("Plate.ZENDRW", {part});
    const auto all = rows({file(drawing, u"Sheet1")}, allColumns);
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(
        all[0].columns, (std::vector<Text>{u"Plate.ZENDRW", test.path("") + u"\\", u"Sheet1", u"0", u"", u"1", u"1"}));
    EXPECT_EQ(all[1].columns,
        (std::vector<Text>{
            u"Bolt.zenprt", test.path("parts") + u"\\", u"", numberText(drawing.fileId), u"Sheet1", u"0", u"1"}));
    EXPECT_EQ((Place{all[1].fileId, all[1].folderId}), part);

    ObjectRef object;
    ASSERT_EQ(vault.CreateUtility(ArkUtil_BatchList, object), S_OK);
    std::vector<ArkListRow> none;
    EXPECT_EQ(query<IArkBatchList>(object)->GetRows(u"#ArkCol_Colour", 0, none), E_INVALIDARG);
    EXPECT_EQ(rows({}, allColumns).size(), 0u);
}

TEST_F(BatchListTest, TakesReferencesInTheVersionOfTheChoice)
{
    const Place washer = test.addReleased("washer.zenprt", "washer");
    const Place bolt = test.addReleased("bolt.zenprt", "bolt 1");
    const Place assembly = test.addReferring("asm.zenasm", {bolt});
    refer(bolt, "bolt.zenprt", washer);
    EXPECT_EQ(outline({file(assembly)}, 1), (Lines{"asm.zenasm@1", "asm.zenasm>bolt.zenprt@1"}));
    EXPECT_EQ(outline({file(assembly)}, 0),
        (Lines{"asm.zenasm@1", "asm.zenasm>bolt.zenprt@2", "bolt.zenprt>washer.zenprt@1"}));
    EXPECT_EQ(outline({file(bolt, u"", 1)}, 0), Lines{"bolt.zenprt@1"}) << "a noted version stays";
}

TEST_F(BatchListTest, ListsASharedFileAtEachPlaceAndItsReferencesOnce)
{
    const Place bolt = test.addReleased("bolt.zenprt", "bolt");
    const Place shared = test.addReferring("shared.zenasm", {bolt});
    const Place left = test.addReferring("left.zenasm", {shared, bolt});
    const Place right = test.addReferring("right.zenasm", {shared});
    const Place top = test.addReferring("top.zenasm", {right, left});
    refer(bolt, "bolt.zenprt", top);
    EXPECT_EQ(outline({file(top)}),
        (Lines{"top.zenasm@1", "top.zenasm>left.zenasm@1", "top.zenasm>right.zenasm@1", "left.zenasm>bolt.zenprt@2",
            "left.zenasm>shared.zenasm@1", "right.zenasm>shared.zenasm@1", "bolt.zenprt>top.zenasm@1",
            "shared.zenasm>bolt.zenprt@2"}));
}

TEST_F(BatchListTest, ManyLevelsOfSharingCostOneRowForEachReference)
{
    // Each level refers twice to the next one: as a tree 2^20 places.
    Place below[2] = {test.addReleased("leaf0.zenprt", "0"), test.addReleased("leaf1.zenprt", "1")};
    for (int level = 0; level < 20; ++level) {
        Place made[2];
        for (int side = 0; side < 2; ++side)
            made[side] = test.addReferring(
                "a" + std::to_string(level) + "_" + std::to_string(side) + ".zenasm", {below[0], below[1]});
        std::copy(std::begin(made), std::end(made), std::begin(below));
    }
    EXPECT_EQ(rows({file(below[0])}, shortColumns).size(), 1u + 20u * 2u + 19u * 2u);
}

TEST_F(BatchListTest, ListsADrawingsOwnSheetsInItsOrder)
{
    const Place drawing = test.addReleased("plan.zendrw", readFile(ZN_SOURCE_DIR "/samples/Чертёж.zendrw"));
    EXPECT_EQ(outline({file(drawing)}), (Lines{"plan.zendrw:Stand@1", "plan.zendrw:Bracket@1"}));
    const std::int32_t title = test.vault.cards().addVariable(u"Title");
    checkOut(test.vault, drawing);
    writeCard(drawing, title, u"Bracket", u"b");
    test.checkInAll({drawing});
    EXPECT_EQ(outline({file(drawing)}), (Lines{"plan.zendrw:Stand@2", "plan.zendrw:Bracket@2"}))
        << "whatever its card knows";
}

TEST_F(BatchListTest, ListsTheDrawingsOfPartsAndTheirSheets)
{
    const std::int32_t title = test.vault.cards().addVariable(u"Title");
    const Place bolt = test.addReleased("bolt.zenprt", "bolt");
    const Place assembly = test.addReferring("asm.zenasm", {bolt});
    const Place drawing = test.add("bolt.zendrw", "drawing").place;
    test.refer(drawing, {bolt});
    const CardWrite writes[]
        = {{drawing.fileId, title, u"Sheet2", Value(u"b")}, {drawing.fileId, title, u"Sheet10", Value(u"a")},
            {drawing.fileId, title, u"Sheet1", Value(u"a")}, {drawing.fileId, title, u"@", Value(u"c")}};
    writeCards(test.vault, writes);
    test.checkInAll({drawing});
    test.addReferring("bolt.stl", {bolt});
    EXPECT_EQ(outline({file(assembly)}),
        (Lines{"asm.zenasm@1", "asm.zenasm>bolt.zenprt@1", "bolt.zenprt>bolt.zendrw:Sheet1@1",
            "bolt.zenprt>bolt.zendrw:Sheet2@1", "bolt.zenprt>bolt.zendrw:Sheet10@1"}))
        << "a damaged drawing has the sheets that its card knows, as people count";
    EXPECT_EQ(outline({file(drawing, u"Sheet2")}), (Lines{"bolt.zendrw:Sheet2@1", "bolt.zendrw>bolt.zenprt@1"}))
        << "a noted drawing doesn't stand below its own part again";
}

TEST_F(BatchListTest, LeavesOutWhatTheCallerMayNotReadAndWhatIsGone)
{
    const Place secret = test.addReleased("secret/engine.zenprt", "engine");
    const Place hidden = test.addReferring("secret/hidden.zenasm", {secret});
    const Place bolt = test.addReleased("bolt.zenprt", "bolt");
    const Place gone = test.addReleased("gone.zenprt", "gone");
    const Place assembly = test.addReferring("sub/asm.zenasm", {hidden, bolt, gone});
    deleteFile(test.vault, gone);
    test.vault.permissions().set(secret.folderId, u"anna", {false, false, false});
    EXPECT_EQ(outline({file(assembly), file(secret), file(gone), file({999, 1})}),
        (Lines{"asm.zenasm@1", "asm.zenasm>bolt.zenprt@1"}));
}

TEST_F(BatchListTest, ExpandsFoldersWithTheirSubfolders)
{
    test.addReleased("f/b.zenprt", "b");
    test.addReleased("f/A.zenprt", "a");
    test.addReleased("f/deep/c.zenprt", "c");
    test.addReleased("g/d.zenprt", "d");
    const ArkSelItem known{0, 0, test.path("F"), u"", ArkItemType::Folder, 0};
    const ArkSelItem unknown{0, 0, test.path("nowhere"), u"", ArkItemType::Folder, 0};
    EXPECT_EQ(outline({unknown, known}), (Lines{"A.zenprt@1", "b.zenprt@1", "c.zenprt@1"}));
}

} // namespace
} // namespace zn::arkin
