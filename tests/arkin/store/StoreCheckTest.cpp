#include "arkin/store/StoreClean.h"

#include "arkin/store/DeleteFile.h"
#include "platform/Sqlite.h"
#include "tests/arkin/VaultFixture.h"

#include <gmock/gmock.h>
#include <soci/soci.h>

namespace zn::arkin {
namespace {

using namespace test;
using zn::test::TemporaryFolder;

/// A vault with a bit of everything: file 1 with a card and two versions, file 2 that refers to it, file 3 deleted,
/// file 4 checked out with an open card.
class StoreCheckTest : public VaultFixture {
protected:
    StoreCheckTest()
    {
        const Place one = test.addReleased("one", "1");
        const std::int32_t title = test.vault.cards().addVariable(u"Title");
        checkOut(test.vault, one);
        writeCard(one, title, u"@", u"x");
        writeFile(test.local("one"), "1 again");
        test.checkInAll({one});
        const Place two = test.add("sub/two", "2").place;
        test.refer(two, {one});
        test.checkInAll({two});
        deleteFile(test.vault, test.addReleased("three", "3"));
        const Place four = test.addReleased("four", "4");
        checkOut(test.vault, four);
        writeCard(four, title, u"@", u"y");
    }

    /// A content that no version holds, as interrupted work leaves it.
    void leaveOrphan()
    {
        ArchiveBatch batch(test.store.archive());
        writeFile(folder / "orphan", "no version holds me");
        LocalFile orphan(folder / "orphan");
        batch.put(orphan);
        batch.publish();
    }
};

TEST_F(StoreCheckTest, CountsASoundStoreAndChangesNothing)
{
    leaveOrphan();
    std::string progress;
    const CheckReport report = checkStore(test.store, [&](std::int64_t done, std::int64_t total) {
        progress += std::to_string(done) + "/" + std::to_string(total) + " ";
    });
    EXPECT_EQ(report.problems, std::vector<std::string>());
    EXPECT_EQ(report.notes,
        std::vector<std::string>{"1 contents in the archive belong to no version, as interrupted work leaves them; "
                                 "'arkin vault clean' sets them aside."});
    EXPECT_EQ(progress, "1/5 2/5 3/5 4/5 5/5 ");
    EXPECT_EQ(report.files, 3);
    EXPECT_EQ(report.deletedFiles, 1);
    EXPECT_EQ(report.versions, 5);
    EXPECT_EQ(report.bytes, 11);
    EXPECT_EQ(report.checkedOut, 1);
    EXPECT_EQ(checkStore(test.store).notes, report.notes);
}

TEST_F(StoreCheckTest, ACleanSetsAsideWhatIsOlderThanTheNewestVersionOfASoundStore)
{
    leaveOrphan();
    EXPECT_EQ(cleanStore(test.store).done->tooNew, 1); // the vault's clock is far behind that of the disk
    soci::session& session = test.store.database().session();
    session << "UPDATE versions SET made_at = 4000000000";
    session << "UPDATE files SET latest_version = 7 WHERE id = 1";
    EXPECT_FALSE(cleanStore(test.store).done);
    session << "UPDATE files SET latest_version = 2 WHERE id = 1";
    EXPECT_EQ(cleanStore(test.store).done->moved, 1);
    EXPECT_EQ(checkStore(test.store).notes, std::vector<std::string>());
    EXPECT_EQ(checkStore(test.store).problems, std::vector<std::string>());
}

TEST_F(StoreCheckTest, OpensOnlyADatabaseAndAnArchiveThatBelongTogether)
{
    const auto opened = [&](const std::filesystem::path& database, const std::filesystem::path& archive) {
        zn::SqliteRegistry registry(folder / "registry");
        zn::LinuxFileSystem files(registry);
        try {
            const Store store(zn::sqliteConnection(database), archive, files, test.clock);
            return std::string();
        } catch (const zn::StatusError& error) {
            return std::string(error.what());
        }
    };
    const auto archive = folder / "archive", database = folder / "vault.db", copy = folder / "copy.db";
    EXPECT_EQ(opened(database, archive), "");
    // A database that is missing, one of another vault, and an archive that is missing.
    TemporaryFolder elsewhere;
    TestVault other{elsewhere.path()};
    other.addReleased("foreign", "foreign");
    EXPECT_THAT(opened(folder / "new.db", archive), ::testing::StartsWith("The database is new or not the one of"));
    EXPECT_THAT(opened(elsewhere / "vault.db", archive), ::testing::HasSubstr("belong to different vaults"));
    EXPECT_THAT(opened(database, folder / "gone"), ::testing::StartsWith("The archive is missing"));
    EXPECT_EQ(checkStore(test.store).problems, std::vector<std::string>());

    // Both from before there were identities.
    test.store.database().session() << "VACUUM INTO '" << copy.string() << "'";
    Database(zn::sqliteConnection(copy)).session() << "DELETE FROM store_identity";
    std::filesystem::remove(archive / "identity");
    EXPECT_EQ(opened(copy, archive), "");
    EXPECT_EQ(readFile(archive / "identity").size(), 37u);
    EXPECT_THAT(opened(database, archive), ::testing::HasSubstr("belong to different vaults"));
}

TEST_F(StoreCheckTest, ListsOldNamesThatTasksCannotWorkWith)
{
    soci::session& session = test.store.database().session();
    session << "UPDATE files SET name = 'o\"ne' WHERE name = 'one'";
    session << "UPDATE file_folders SET name_key = 'o\"ne' WHERE name_key = 'one'";
    session << "UPDATE vaults SET root = root || '/\u0085'";
    const CheckReport report = checkStore(test.store);
    EXPECT_EQ(report.problems, std::vector<std::string>());
    const std::string has
        = " has a character in its name that tasks can't work with (\", <, > or a control character).";
    EXPECT_THAT(
        report.notes, ::testing::ElementsAre("The file \"o\"ne\"" + has, ::testing::HasSubstr("/\u0085\"" + has)));
}

TEST_F(StoreCheckTest, SaysInWordsWhatIsWrong)
{
    const struct {
        const char* damage;
        const char* sentence;
    } cases[] = {
        {"DELETE FROM versions WHERE file_id = 2", "The file \"two\" (number 2) has no version."},
        {"UPDATE files SET latest_version = 3 WHERE id = 1",
            "The file \"one\" (number 1) counts version 3 as its latest, which it isn't."},
        {"DELETE FROM versions WHERE file_id = 1 AND version = 1",
            "The file \"one\" (number 1) has 1 versions, but their numbers don't run from 1."},
        {"DELETE FROM files WHERE id = 2", "The folder number 2 shows the file number 2, which doesn't exist."},
        {"DELETE FROM files WHERE id = 3", "Version 1 belongs to the file number 3, which doesn't exist."},
        {"DELETE FROM file_folders WHERE file_id = 1",
            "The file \"one\" (number 1) stands in no folder and isn't deleted."},
        {"UPDATE files SET deleted_at = 0 WHERE id = 3",
            "The file \"three\" (number 3) stands in no folder and isn't deleted."},
        {"UPDATE files SET deleted_at = 1 WHERE id = 1",
            "The file \"one\" (number 1) is deleted, but the folder number 1 shows it."},
        {"UPDATE folders SET parent_id = 77 WHERE id = 2",
            "The folder \"sub\" (number 2) lies in the folder number 77, which doesn't exist."},
        {"UPDATE folders SET parent_id = 2 WHERE id = 2",
            "The folder \"sub\" (number 2) can't be reached from its vault's root folder."},
        {"DELETE FROM vaults", "The folder \"sub\" (number 2) belongs to the vault number 1, which doesn't exist."},
        {"DELETE FROM vaults", "The file \"one\" (number 1) belongs to the vault number 1, which doesn't exist."},
        {"UPDATE next_ids SET next_id = 2 WHERE sequence = 'files'",
            "The next of the files would get a number up to 4, which are taken; the count stands at 2."},
        {"DROP TABLE permissions", "The database has no table permissions. Bring the database back from a backup."},
        {"UPDATE check_outs SET base_version = 4",
            "anna has the file number 4 checked out in version 4, which isn't its latest."},
        {"UPDATE check_outs SET card_open = 0",
            "Card values belong to version 2 of the file number 4, which doesn't exist."},
        {"UPDATE file_references SET version = 9",
            "Version 9 of the file number 2, which doesn't exist, refers to other files."},
        {"UPDATE file_references SET to_version = 9",
            "A file refers to version 9 of the file number 1, which doesn't exist."},
        {"UPDATE file_folders SET name_key = 'ONE' WHERE file_id = 1",
            "The file \"one\" can't be found under its name."},
        {"UPDATE versions SET row_sum = row_sum + 1 WHERE file_id = 2",
            "The table versions isn't as it was written in its row 3 (file_id 2). Look at it, and bring the database "
            "back from a backup."},
        {"DROP TRIGGER row_sum_changed_folders",
            "The database doesn't keep the sums of its table folders as it should. Bring the database back from a "
            "backup."},
    };
    soci::session& session = test.store.database().session();
    session << "PRAGMA foreign_keys = OFF";
    for (const auto& damage : cases) {
        // The check can't run inside a transaction, so each damage is done to a copy of the database.
        const auto copy = folder / "copy.db";
        std::filesystem::remove(copy);
        session << "VACUUM INTO '" << copy.string() << "'";
        {
            Database database(zn::sqliteConnection(copy));
            database.session() << "PRAGMA foreign_keys = OFF";
            database.session() << damage.damage;
        }
        TemporaryFolder scratch;
        zn::SqliteRegistry registry(scratch / "registry");
        zn::LinuxFileSystem files(registry);
        Store store(zn::sqliteConnection(copy), folder / "archive", files, test.clock);
        const CheckReport report = checkStore(store);
        EXPECT_TRUE(std::find(report.problems.begin(), report.problems.end(), damage.sentence) != report.problems.end())
            << damage.damage << "\n"
            << ::testing::PrintToString(report.problems);
    }
}

TEST_F(StoreCheckTest, FindsDamagedAndMissingContents)
{
    const auto pathOf = [&](std::int32_t fileId, std::int32_t version) {
        return test.store.archive().pathOf(test.vault.files().version(fileId, version)->content.hash);
    };
    std::filesystem::remove(pathOf(1, 1));
    std::filesystem::remove(pathOf(3, 1));
    writeFile(pathOf(3, 1), "X");
    const CheckReport report = checkStore(test.store);
    ASSERT_EQ(report.problems.size(), 2u);
    EXPECT_EQ(report.problems[0],
        "\"three\", version 1: its content is damaged in the archive: " + pathOf(3, 1).string() + ".");
    EXPECT_EQ(report.problems[1],
        "\"one\", version 1: its content is missing in the archive: " + pathOf(1, 1).string() + ".");
    expectStatus(E_ARK_ARCHIVE, [&] { get({1, test.vault.folders().rootId()}, 1); });
    EXPECT_EQ(readFile(test.local("one")), "1 again") << "the local copy is kept when the archive's is gone";
}

} // namespace
} // namespace zn::arkin
