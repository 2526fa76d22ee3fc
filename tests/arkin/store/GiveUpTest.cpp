#include "tests/arkin/VaultFixture.h"

#include "arkin/store/GiveUp.h"
#include "arkin/store/StoreCheck.h"

#include <gmock/gmock.h>

namespace zn::arkin {

namespace {

using test::TestVault;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using zn::test::sentenceOf;
using zn::test::TemporaryFolder;

class GiveUpTest : public ::testing::Test {
protected:
    CheckOutRow held(const Place& place) { return *test.vault.files().checkOut(place.fileId); }

    TemporaryFolder folder;
    TestVault test{folder.path()};
    Vault boss{test.store, test.vault.info(), Caller{"boss", "office"}};
};

} // namespace

TEST_F(GiveUpTest, EndsAnothersCheckOutAndLosesNothingOfHis)
{
    const Place place = test.addReleased("a.txt", "one");
    checkOut(test.vault, place);
    test::writeFile(test.local("a.txt"), "his own work");
    giveUp(boss, held(place), "he is on holiday");
    EXPECT_FALSE(boss.files().checkOut(place.fileId));
    EXPECT_EQ(test::readFile(test.local("a.txt")), "his own work");

    const auto kept = givenUp(test.store.database(), place.fileId);
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(kept[0].user + "/" + kept[0].machine + "/" + kept[0].byUser + "/" + kept[0].reason,
        "anna/bench/boss/he is on holiday");
    EXPECT_EQ(kept[0].at, test.clock.now());

    // His check-in tells it, whether or not somebody else has the file by then, and no get takes his work away.
    const auto told = AllOf(StartsWith("The check-out of \"a.txt\" by anna was given up by boss on "),
        HasSubstr("because \"he is on holiday\". The local copy is as it was left"));
    EXPECT_THAT(sentenceOf([&] { planCheckIn(test.vault, {&place, 1}); }), told);
    const GetRequest latest{place, 0};
    EXPECT_THAT(sentenceOf([&] { getFiles(test.vault, {&latest, 1}); }), HasSubstr("holds changes"));
    EXPECT_EQ(test::readFile(test.local("a.txt")), "his own work");

    // Moved aside, checked out again and put back, it comes in.
    std::filesystem::remove(test.local("a.txt"));
    test.change(place, "a.txt", "his own work");
    EXPECT_EQ(test.vault.version(place.fileId, 0).version, 2);
    EXPECT_EQ(givenUp(test.store.database(), place.fileId).size(), 1u);
    EXPECT_EQ(checkStore(test.store).problems, std::vector<std::string>());
}

TEST_F(GiveUpTest, KeepsAFileThatWasNeverCheckedInAsItWasAdded)
{
    const Place place = test.add("new.txt", "draft").place;
    giveUp(boss, held(place), "left the company");
    EXPECT_EQ(boss.version(place.fileId, 0).content.size, 5);
    EXPECT_EQ(givenUp(test.store.database(), place.fileId).front().baseVersion, 0);
    EXPECT_EQ(checkStore(test.store).problems, std::vector<std::string>());
}

TEST_F(GiveUpTest, RefusesWhatItIsNotFor)
{
    const Place place = test.addReleased("a.txt", "one");
    checkOut(test.vault, place);
    const CheckOutRow row = held(place);
    CheckOutRow older = row;
    older.takenAt -= 1;
    EXPECT_THAT(sentenceOf([&] { giveUp(boss, row, " "); }), HasSubstr("with a reason only"));
    EXPECT_THAT(sentenceOf([&] { giveUp(test.vault, row, "why"); }), HasSubstr("checked out to you here"));
    EXPECT_THAT(sentenceOf([&] { giveUp(boss, older, "why"); }), HasSubstr("has changed meanwhile"));
    test.vault.permissions().set(test.vault.info().rootFolderId, u"boss", {true, true, false});
    EXPECT_THAT(sentenceOf([&] { giveUp(boss, row, "why"); }), HasSubstr("boss has no permission to delete"));
    EXPECT_TRUE(boss.files().checkOut(place.fileId));
    EXPECT_TRUE(givenUp(test.store.database(), place.fileId).empty());
}

} // namespace zn::arkin
