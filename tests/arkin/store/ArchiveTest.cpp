#include "arkin/store/Archive.h"

#include "tests/arkin/VaultFixture.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/wait.h>

namespace zn::arkin {
namespace {

using namespace test;
using zn::test::TemporaryFolder;

constexpr const char* hashOfAbc = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";

Content put(ArchiveBatch& batch, const std::filesystem::path& path, const std::string& content)
{
    writeFile(path, content);
    LocalFile file(path);
    return batch.put(file);
}

std::string contentsOf(const Archive& archive)
{
    std::vector<std::string> hashes;
    archive.forEach([&](const std::string& hash) { hashes.push_back(hash.substr(0, 8)); });
    std::sort(hashes.begin(), hashes.end());
    std::string text;
    for (const std::string& hash : hashes)
        text += hash + " ";
    return text;
}

TEST(Archive, KeepsEachContentOnceAndOnlyWhenPublished)
{
    TemporaryFolder folder;
    Archive archive(folder / "archive");
    {
        ArchiveBatch batch(archive);
        put(batch, folder / "lost", "never published");
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder / "archive/incoming"));
    ArchiveBatch batch(archive);
    EXPECT_EQ(put(batch, folder / "a", "abc"), (Content{hashOfAbc, 3}));
    EXPECT_FALSE(archive.holds(hashOfAbc));
    put(batch, folder / "b", "abc");
    put(batch, folder / "empty", "");
    batch.publish();
    put(batch, folder / "c", "abc");
    batch.publish();
    EXPECT_EQ(contentsOf(archive), "ba7816bf e3b0c442 ");
    EXPECT_TRUE(std::filesystem::is_empty(folder / "archive/incoming"));
    EXPECT_TRUE(isReadOnly(archive.pathOf(hashOfAbc)));

    // So many that they are synced as one file system.
    constexpr int many = 100;
    for (int i = 0; i < many; ++i)
        put(batch, folder / "many", std::to_string(i));
    batch.publish();
    int held = 0;
    archive.forEach([&](const std::string&) { ++held; });
    EXPECT_EQ(held, 2 + many);
}

TEST(Archive, TellsDamageAndRepairsATruncatedContentWhenItComesAgain)
{
    TemporaryFolder folder;
    Archive archive(folder / "archive");
    const Content content{hashOfAbc, 3};
    const auto rewrite = [&](const std::string& bytes) {
        std::filesystem::remove(archive.pathOf(hashOfAbc));
        writeFile(archive.pathOf(hashOfAbc), bytes);
    };
    const auto copyOut = [&] {
        FileHandle target(folder / "out", O_RDWR | O_CREAT | O_TRUNC, E_ARK_LOCAL_FILE_FAILED);
        archive.copyOut(content, target);
    };
    EXPECT_EQ(
        archive.problemOf(content), "its content is missing in the archive: " + archive.pathOf(hashOfAbc).string());
    rewrite("abd");
    EXPECT_EQ(
        archive.problemOf(content), "its content is damaged in the archive: " + archive.pathOf(hashOfAbc).string());
    expectStatus(E_ARK_ARCHIVE, copyOut);
    rewrite("ab");
    ArchiveBatch batch(archive);
    put(batch, folder / "a", "abc");
    batch.publish();
    EXPECT_EQ(archive.problemOf(content), std::nullopt);
    copyOut();
    EXPECT_EQ(readFile(folder / "out"), "abc");
}

TEST(Archive, LeftoversGoOnlyWhenNobodyWorks)
{
    TemporaryFolder folder;
    constexpr std::int64_t now = 1520258829; // 5 March 2018
    Archive archive(folder / "archive");
    writeFile(folder / "archive/incoming/123-456-1", "half a content");
    int started[2], done[2];
    ASSERT_EQ(pipe(started) + pipe(done), 0);
    const pid_t child = fork();
    if (child == 0) {
        ArchiveBatch batch(archive);
        put(batch, folder / "a", "abc");
        batch.publish();
        char byte = 1;
        _exit(write(started[1], &byte, 1) == 1 && read(done[0], &byte, 1) == 1 ? 0 : 1);
    }
    char byte = 0;
    ASSERT_EQ(read(started[0], &byte, 1), 1);
    const auto nothingIsNeeded = [](const std::string&) { return false; };
    EXPECT_EQ(archive.countLeftovers(nothingIsNeeded), std::nullopt);
    EXPECT_FALSE(archive.setAside(nothingIsNeeded, INT64_MAX, now));
    archive.removeArrivals();
    EXPECT_TRUE(archive.holds(hashOfAbc));
    EXPECT_TRUE(std::filesystem::exists(folder / "archive/incoming/123-456-1"));
    ASSERT_EQ(write(done[1], &byte, 1), 1);
    waitpid(child, nullptr, 0);
    archive.removeArrivals();
    EXPECT_FALSE(std::filesystem::exists(folder / "archive/incoming/123-456-1"));
    EXPECT_EQ(archive.countLeftovers([](const std::string&) { return true; }), 0);
    EXPECT_EQ(archive.countLeftovers(nothingIsNeeded), 1);
    EXPECT_EQ(archive.setAside(nothingIsNeeded, 0, now)->tooNew, 1);
    EXPECT_TRUE(archive.holds(hashOfAbc));

    const auto aside = archive.setAside(nothingIsNeeded, INT64_MAX, now);
    EXPECT_EQ(std::pair(aside->moved, aside->bytes), std::pair(1, std::int64_t{3}));
    EXPECT_EQ(contentsOf(archive), "");
    const std::string kept = "archive/removed/2018-03-05/" + std::string(hashOfAbc);
    EXPECT_EQ(readFile(folder / kept), "abc");
    constexpr std::int64_t day = std::int64_t{24} * 60 * 60;
    EXPECT_EQ(archive.setAside(nothingIsNeeded, INT64_MAX, now + 30 * day)->deleted, 0);
    EXPECT_EQ(archive.setAside(nothingIsNeeded, INT64_MAX, now + 31 * day)->deleted, 1);
    EXPECT_FALSE(std::filesystem::exists(folder / kept));
}

} // namespace
} // namespace zn::arkin
