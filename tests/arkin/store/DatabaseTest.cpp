#include "arkin/store/Database.h"

#include "arkin/store/Codes.h"
#include "arkin/store/Schema.h"
#include "platform/Sqlite.h"
#include "tests/support/Children.h"
#include "tests/support/Failures.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <soci/soci.h>

namespace zn::arkin {
namespace {

using zn::test::sentenceOf;
using zn::test::TemporaryFolder;

const char* const counterTable[] = {"CREATE TABLE counters (id INTEGER NOT NULL PRIMARY KEY, n INTEGER NOT NULL)",
    "INSERT INTO counters (id, n) VALUES (1, 0)"};
const char* const counterColumn[] = {"ALTER TABLE counters ADD note VARCHAR(20) DEFAULT 'new'"};
const SchemaStep counterSteps[] = {{counterTable}, {counterColumn}};

int readCounter(Database& database)
{
    int n = -1;
    database.session() << "SELECT n FROM counters WHERE id = 1", soci::into(n);
    return n;
}

TEST(Database, UncommittedWorkAndItsIdsAreUndone)
{
    TemporaryFolder folder;
    Database database(zn::sqliteConnection(folder / "with blanks = and 'ticks'.db"));
    applySchema(database, {"counters", counterSteps});
    {
        Transaction transaction(database);
        EXPECT_EQ(database.allocateIds("things", 5), 1);
        database.session() << "UPDATE counters SET n = 7 WHERE id = 1";
    }
    EXPECT_EQ(readCounter(database), 0);
    Transaction transaction(database);
    EXPECT_EQ(database.allocateIds("things", 2), 1);
    EXPECT_EQ(database.allocateIds("things"), 3);
    EXPECT_THROW(Transaction(database, Transaction::Kind::Read), zn::StatusError);
}

TEST(Database, SumsOfRowsComeWithAStepAndKeepOtherProgramsFromWriting)
{
    const char* const summed[] = {"counters"};
    const SchemaStep steps[] = {{counterTable}, {counterColumn, summed}};
    TemporaryFolder folder;
    const std::string connection = zn::sqliteConnection(folder / "counters.db");
    Database database(connection);
    applySchema(database, {"counters", std::span(steps).first(1)});
    const SchemaArea area{"counters", steps};
    applySchema(database, area);
    database.session() << "UPDATE counters SET note = 'other' WHERE id = 1";
    database.session() << "INSERT INTO counters (id, n) VALUES (2, -5), (3, 3)";
    EXPECT_THAT(changedRows(database, area), ::testing::IsEmpty());
    soci::session stranger(connection);
    EXPECT_THROW(stranger << "UPDATE counters SET n = 8 WHERE id = 3", soci::soci_error);
    stranger << "DROP TRIGGER row_sum_changed_counters";
    stranger << "UPDATE counters SET n = 8 WHERE id = 3";
    EXPECT_THAT(changedRows(database, area),
        ::testing::ElementsAre(::testing::StartsWith("The database doesn't keep the sums of its table counters"),
            ::testing::StartsWith("The table counters isn't as it was written in its row 3 (id 3).")));
}

TEST(Database, WritersOfSeveralProcessesTakeTurnsFromTheFirstMomentOn)
{
    TemporaryFolder folder;
    const std::string connection = zn::sqliteConnection(folder / "vault.db");
    constexpr int processes = 4, rounds = 50;
    // All of them create the file, the tables, and read before they write.
    zn::test::sumOfProcesses(processes, [&](int) {
        Database database(connection);
        applySchema(database, {"counters", counterSteps});
        for (int round = 0; round < rounds; ++round) {
            Transaction transaction(database);
            const int next = readCounter(database) + 1;
            database.session() << "UPDATE counters SET n = :n WHERE id = 1", soci::use(next);
            transaction.commit();
        }
        return 0;
    });
    Database database(connection);
    EXPECT_EQ(readCounter(database), processes * rounds);
}

TEST(Database, SchemaGrowsStepByStepAndRefusesANewerOne)
{
    TemporaryFolder folder;
    Database database(zn::sqliteConnection(folder / "vault.db"));
    applySchema(database, {"counters", std::span(counterSteps).first(1)});
    database.session() << "UPDATE counters SET n = 3 WHERE id = 1";
    applySchema(database, {"counters", counterSteps});
    std::string note;
    database.session() << "SELECT note FROM counters WHERE n = 3", soci::into(note);
    EXPECT_EQ(note, "new");
    EXPECT_EQ(sentenceOf([&] {
        applySchema(database, {"counters", std::span(counterSteps).first(1)});
    }),
        "The database was written by a newer version of this program (counters tables, step 2). Use that version.");
    database.session() << "UPDATE schema_steps SET step = -1";
    EXPECT_THROW(applySchema(database, {"counters", counterSteps}), zn::StatusError);
}

TEST(Database, SaysWhyItCannotBeOpened)
{
    const auto raised = zn::test::raisedBy([] { Database(zn::sqliteConnection("/nonexistent/folder/vault.db")); });
    EXPECT_EQ(raised.status, E_ARK_DATABASE);
    EXPECT_TRUE(raised.sentence.starts_with("The vault's database could not be opened: ")) << raised.sentence;
}

} // namespace
} // namespace zn::arkin
