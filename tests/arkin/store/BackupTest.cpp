#include "arkin/store/RestoreHome.h"
#include "arkin/store/StoreClean.h"
#include "tests/arkin/VaultFixture.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using namespace zn::arkin;
using namespace zn::arkin::test;
namespace fs = std::filesystem;

/// A vault whose version 1 of "new" loses its content while it is backed up: its adder changes it and checks it in.
TEST(Backup, IsOfOneMomentWhileOthersWork)
{
    const zn::test::TemporaryFolder folder;
    fs::create_directory(folder / "home");
    TestVault test(folder / "home");
    test.addReleased("old", "old content");
    const Place open = test.add("new", "first thought").place;
    int cleansRefused = 0;
    const auto work = [&](std::int64_t done, std::int64_t) {
        if (done != 1)
            return;
        writeFile(test.local("new"), "second thought");
        test.checkInAll({open});
        test.addReleased("later", "later content");
        cleansRefused += cleanStore(test.store).done ? 0 : 1;
    };
    const auto report = backUp(test.store, folder / "home/registry.sqlite", folder / "backup", {}, work);
    EXPECT_EQ(report.problems, std::vector<std::string>());
    EXPECT_EQ(cleansRefused, 1);
    EXPECT_TRUE(cleanStore(test.store).done);
    EXPECT_EQ(checkBackup(folder / "backup").problems, std::vector<std::string>());

    restoreHome(folder / "backup", folder / "restored", {});
    EXPECT_EQ(sentenceOf([&] { restoreHome(folder / "backup", folder / "restored", {}); }).substr(0, 8), "The home");
    Store restored(zn::sqliteConnection(folder / "restored/vault.sqlite"), folder / "restored/archive",
        test.store.files(), test.clock);
    EXPECT_EQ(checkStore(restored).problems, std::vector<std::string>());
    Vault vault(restored, *restored.findVault(u"Test"));
    EXPECT_EQ(vault.find(test.path("later")), std::nullopt);
    const auto content = vault.version(vault.find(test.path("new"))->fileId, 1).content;
    EXPECT_EQ(readFile(restored.archive().pathOf(content.hash)), "first thought");
}

TEST(Backup, WaitsForNobodyAndKeepsWhatAKilledOneHasBrought)
{
    const zn::test::TemporaryFolder folder;
    fs::create_directory(folder / "home");
    TestVault test(folder / "home");
    test.addReleased("a", "content");
    const auto again = [&](int keep = 30) {
        return backUp(test.store, folder / "home/registry.sqlite", folder / "backup", {.keep = keep, .verify = false});
    };
    const auto first = again();
    EXPECT_GT(again().copy, first.copy); // the clock stands still
    {
        const BackupFolder other(folder / "backup", BackupFolder::Use::Read);
        EXPECT_EQ(sentenceOf([&] { again(); }).substr(0, 15), "Another program");
    }
    writeFile(folder / "backup/copies/making/vault.sqlite", "half a copy");
    writeFile(folder / ("backup/archive/ab/" + std::string(64, 'a')), "what only the killed backup wanted");
    const auto last = again(1);
    EXPECT_EQ(last.removedCopies, 2);
    EXPECT_EQ(last.removedContents, 1);
    EXPECT_EQ(last.newContents, 0);
}

/// Somebody may have laid it to a folder that is dear to this user.
TEST(Clean, FollowsNoLink)
{
    const zn::test::TemporaryFolder folder;
    fs::create_directory(folder / "home");
    TestVault test(folder / "home");
    test.addReleased("a", "content");
    const fs::path dear = folder / ("dear/2001-01-01/" + std::string(64, 'a'));
    writeFile(dear, "dear");
    fs::create_directory_symlink(folder / "dear", folder / "home/archive/removed");
    EXPECT_TRUE(cleanStore(test.store).done);
    fs::create_directory_symlink(dear.parent_path(), folder / "home/archive/aa");
    EXPECT_EQ(test.store.archive().countLeftovers([](const std::string&) { return false; }), 1);
    EXPECT_TRUE(fs::exists(dear));
}

} // namespace
