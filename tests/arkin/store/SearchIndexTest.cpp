#include "arkin/store/SearchIndex.h"

#include "arkin/store/DeleteFile.h"
#include "arkin/store/FolderListing.h"
#include "arkin/store/MoveFiles.h"
#include "arkin/store/Restore.h"
#include "tests/arkin/VaultFixture.h"

#include <fstream>
#include <gmock/gmock.h>
#include <soci/soci.h>

namespace zn::arkin {
namespace {

using namespace test;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

class SearchIndexTest : public VaultFixture {
protected:
    SearchIndexTest()
    {
        bolt = test.addReleased("Parts/Bolt M8.step", "1");
        nut = test.addReleased("Parts/Mutter.STEP", "2");
        write(bolt, u"Sechskantschraube, verzinkt");
        write(nut, u"GRÖSSE M8");
    }
    void write(const Place& place, const char16_t* value)
    {
        checkOut(test.vault, place);
        writeCard(place, title, u"@", value);
        test.checkInAll({place});
    }
    /// Names, by an index that is opened for it and closed again.
    std::vector<std::string> found(const char16_t* words, std::size_t most = 100)
    {
        SearchIndex index(test.vault, folder / "search");
        index.catchUp();
        std::vector<std::string> names;
        for (const std::int32_t id : index.find(words, most))
            names.push_back(zn::toUtf8(test.vault.files().row(id).value_or(FileRow()).name));
        return names;
    }

    std::int32_t title = test.vault.cards().addVariable(u"Title");
    Place bolt, nut;
};

TEST_F(SearchIndexTest, FindsPartsOfNamesAndCards)
{
    const struct {
        const char16_t* words;
        std::vector<std::string> names;
    } cases[] = {
        {u"TTER", {"Mutter.STEP"}},
        {u"SCHRAUBE", {"Bolt M8.step"}},
        {u"größ", {}},
        {u"grösse", {"Mutter.STEP"}},
        {u"m8", {"Bolt M8.step", "Mutter.STEP"}},
        {u"step m8 verz", {"Bolt M8.step"}},
        {u"x8", {}},
        {u"\"step\"", {}},
        {u"step OR nothing", {}},
        {u"", {}},
        {u"  ", {}},
    };
    for (const auto& one : cases)
        EXPECT_THAT(found(one.words), ::testing::UnorderedElementsAreArray(one.names)) << zn::toUtf8(one.words);
    EXPECT_EQ(found(u"step", 1).size(), 1U);
}

TEST_F(SearchIndexTest, FollowsWhatHappensInTheVault)
{
    EXPECT_THAT(found(u"bolt"), ElementsAre("Bolt M8.step"));
    const FileMove rename{bolt, bolt.folderId, u"Screw.step"};
    moveInVault(test.vault, {&rename, 1}, {});
    EXPECT_THAT(found(u"bolt"), ElementsAre());
    EXPECT_THAT(found(u"screw schraube"), ElementsAre("Screw.step"));

    checkOut(test.vault, bolt);
    writeCard(bolt, title, u"@", u"Zylinderkopf");
    EXPECT_THAT(found(u"zylinder"), ElementsAre()) << "not before the check-in";
    test.checkInAll({bolt});
    EXPECT_THAT(found(u"zylinder"), ElementsAre("Screw.step"));
    EXPECT_THAT(found(u"schraube"), ElementsAre()) << "the latest version only";

    deleteFile(test.vault, nut);
    EXPECT_THAT(found(u"mutter"), ElementsAre());
    restoreFile(test.vault, deletedFiles(test.vault, nut.folderId).front());
    EXPECT_THAT(found(u"mutter grösse"), ElementsAre("Mutter.STEP"));
    test.add("Parts/fresh.step", "3");
    EXPECT_THAT(found(u"fresh"), ElementsAre("fresh.step"));
}

TEST_F(SearchIndexTest, IsMadeAnewWhereItIsDamagedOrAnothers)
{
    EXPECT_THAT(found(u"bolt"), ElementsAre("Bolt M8.step"));
    const auto file = folder / "search/search-1.sqlite";
    ASSERT_TRUE(std::filesystem::exists(file));
    std::ofstream(file, std::ios::trunc) << "This is no database, however long it may be.";
    EXPECT_THAT(found(u"bolt"), ElementsAre("Bolt M8.step"));

    {
        SearchIndex index(test.vault, folder / "search");
        Transaction writing(test.store.database());
        test.store.database().session() << "UPDATE store_identity SET id = 'another'";
        test.store.database().session() << "UPDATE files SET name = 'Other.step' WHERE id = " << bolt.fileId;
        test.store.database().session() << "DELETE FROM file_changes"; // which that one has counted otherwise
        test.store.database().session() << "INSERT INTO file_changes SELECT id, 1 FROM files";
        writing.commit();
    }
    EXPECT_THAT(found(u"bolt"), ElementsAre());
    EXPECT_THAT(found(u"other"), ElementsAre("Other.step"));
}

TEST_F(SearchIndexTest, ListsWhatTheCallerMayRead)
{
    const Place secret = test.addReleased("Secret/Bolt.step", "3");
    const std::int32_t ids[] = {secret.fileId, bolt.fileId};
    EXPECT_EQ(listFiles(test.vault, ids).size(), 2U);
    test.vault.permissions().set(secret.folderId, u"anna", {.read = false});
    const auto listed = listFiles(test.vault, ids);
    ASSERT_EQ(listed.size(), 1U);
    EXPECT_EQ(listed[0].name, "Bolt M8.step");
    EXPECT_EQ(listed[0].folderId, bolt.folderId);
    EXPECT_EQ(listed[0].latestVersion, 2);
}

} // namespace
} // namespace zn::arkin
