#include "platform/ContentCache.h"
#include "tests/support/Files.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace zn {
namespace {

std::string key(char digit) { return std::string(64, digit); }

TEST(ContentCache, GivesBackWhatAnyOfItsProcessesKept)
{
    const test::TemporaryFolder parent;
    const fs::path folder = parent / "a/cache";
    ContentCache one(folder, 1000);
    ContentCache other(folder, 1000);
    const std::string bytes("a\0b", 3);
    EXPECT_EQ(one.find(key('1')), std::nullopt);
    one.keep(key('1'), bytes);
    one.keep(key('2'), "");
    EXPECT_EQ(other.find(key('1')), bytes);
    EXPECT_EQ(other.find(key('2')), "");
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all);
    test::writeFile(folder / "mine.txt", "not a block");
    EXPECT_EQ(other.amount().blocks, 2U);
    EXPECT_EQ(other.amount().bytes, 64U + 3 + 64);
    EXPECT_EQ(other.clear().blocks, 2U);
    EXPECT_EQ(one.find(key('1')), std::nullopt);
    EXPECT_TRUE(fs::exists(folder / "mine.txt"));
}

TEST(ContentCache, BelievesNothingThatIsDamagedOrAnothersOrALink)
{
    const test::TemporaryFolder parent;
    const fs::path folder = parent / "cache";
    ContentCache cache(folder, 1000);
    for (const char digit : {'1', '2', '3', '4'})
        cache.keep(key(digit), "bytes");
    const std::string whole = test::readFile(folder / key('1'));
    test::writeFile(folder / key('1'), std::string(whole).replace(whole.size() - 1, 1, "X"));
    test::writeFile(folder / key('2'), whole.substr(0, 10));
    fs::rename(folder / key('3'), parent / "moved");
    fs::create_symlink(parent / "moved", folder / key('3'));
    const bool given = ::chown((folder / key('4')).c_str(), 12345, 12345) == 0;
    EXPECT_EQ(cache.find(key('1')), std::nullopt);
    EXPECT_FALSE(fs::exists(folder / key('1'))) << "it would never fit again";
    EXPECT_EQ(cache.find(key('2')), std::nullopt);
    EXPECT_EQ(cache.find(key('3')), std::nullopt);
    EXPECT_EQ(cache.find(key('4')).has_value(), !given);

    fs::create_directory_symlink(folder, parent / "link");
    EXPECT_THROW(ContentCache(parent / "link", 1000), std::system_error);
    fs::create_directory(parent / "foreign");
    if (::chown((parent / "foreign").c_str(), 12345, 12345) == 0) {
        EXPECT_THROW(ContentCache(parent / "foreign", 1000), std::system_error);
    }
}

TEST(ContentCache, LetsGoWhatWasNotAskedForTheLongest)
{
    const test::TemporaryFolder parent;
    const fs::path folder = parent / "cache";
    ContentCache cache(folder, 1000);
    const auto now = fs::file_time_type::clock::now();
    for (const char digit : {'1', '2', '3'}) {
        cache.keep(key(digit), std::string(200, digit));
        fs::last_write_time(folder / key(digit), now - std::chrono::hours('9' - digit));
    }
    EXPECT_TRUE(cache.find(key('1'))) << "which makes it the youngest";
    cache.keep(key('4'), std::string(200, '4'));
    EXPECT_FALSE(cache.find(key('2')));
    EXPECT_TRUE(cache.find(key('1')) && cache.find(key('3')) && cache.find(key('4')));
    cache.keep(key('5'), std::string(1000, '5'));
    EXPECT_FALSE(cache.find(key('5'))) << "more than all the room";
    EXPECT_TRUE(cache.find(key('4')));
}

TEST(ContentCache, LetsOneProcessAtATimeMakeABlock)
{
    const test::TemporaryFolder parent;
    ContentCache one(parent / "cache", 1000);
    ContentCache other(parent / "cache", 1000);
    {
        const auto turn = one.takeTurn(key('1'));
        EXPECT_TRUE(turn);
        EXPECT_FALSE(other.takeTurn(key('1')));
        EXPECT_TRUE(other.takeTurn(key('2')));
        EXPECT_EQ(one.amount().blocks, 0U);
    }
    EXPECT_TRUE(other.takeTurn(key('1')));
}

} // namespace
} // namespace zn
