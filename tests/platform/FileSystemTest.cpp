#include "base/Status.h"
#include "platform/AtomicFile.h"
#include "platform/linux/LinuxFileSystem.h"
#include "platform/linux/SqliteRegistry.h"
#include "tests/support/Files.h"
#include "tests/support/TemporaryFolder.h"

#include <csignal>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/resource.h>

namespace zn {
namespace {

using ::testing::UnorderedElementsAre;

class FileSystemTest : public ::testing::Test {
protected:
    std::string content(const std::string& name) { return test::readFile(folder / name); }
    /// The backslash path of a name in the test's folder.
    Text at(const char16_t* name) { return files.fromMachine(folder.path()) + u"\\" + name; }

    test::TemporaryFolder folder;
    SqliteRegistry registry{folder / "registry.sqlite"};
    LinuxFileSystem files{registry};
};

TEST_F(FileSystemTest, FindsNamesInWhateverSpelling)
{
    std::filesystem::create_directories(folder / "Parts/Große");
    std::ofstream(folder / "Parts/Große/Bolt.step") << "x";
    std::filesystem::create_directory(folder / "both");
    std::filesystem::create_directory(folder / "BOTH");
    const std::string root = folder.path().string();
    const std::pair<const char16_t*, const char*> cases[] = {
        {u"Parts\\Große\\Bolt.step", "/Parts/Große/Bolt.step"},
        {u"PARTS\\große\\BOLT.STEP", "/Parts/Große/Bolt.step"},
        {u"parts/x/..\\\\.\\GROßE", "/Parts/Große"},
        {u"parts\\New\\Deep.STL", "/Parts/New/Deep.STL"},
        {u"both", "/both"},
        {u"BOTH", "/BOTH"},
        {u"Both", "/BOTH"},
    };
    for (const auto& [given, found] : cases)
        EXPECT_EQ(files.toMachine(at(given)).string(), root + found) << toUtf8(given);
    EXPECT_EQ(files.toMachine(u"z:\\"), "/");
    EXPECT_EQ(files.toMachine(u"\\usr"), "/usr");
    EXPECT_EQ(files.toMachine(u"some.txt"), std::filesystem::current_path() / "some.txt");
}

TEST_F(FileSystemTest, MapsDrivesByTheRegistryAndSaysWhenOneIsMissing)
{
    std::filesystem::create_directory(folder / "Vault");
    registry.write(RegistryRoot::User, u"Software\\Arkin\\Drives", u"C",
        RegistryValue::text(toText((folder / "Vault").string())), {});
    EXPECT_EQ(files.toMachine(u"c:\\A.txt"), folder / "Vault/A.txt");
    EXPECT_FALSE(files.attributes(u"Q:\\a"));
    EXPECT_EQ(files.readBytes(u"Q:\\a").reason,
        u"The drive Q: isn't mapped. Name its folder in the registry key Software\\Arkin\\Drives.");
    for (const char16_t* path : {u"Q:\\a", u"\\\\server\\share\\a", u""})
        EXPECT_THROW(files.toMachine(path), StatusError) << toUtf8(path);
    EXPECT_EQ(files.fromMachine("/a/../b c/ü"), u"Z:\\b c\\ü");
    EXPECT_EQ(files.fromMachine("/"), u"Z:\\");
    for (const char* path : {"/a\\b", "/\xFF"})
        EXPECT_THROW(files.fromMachine(path), StatusError);
}

TEST_F(FileSystemTest, WritesCopiesRenamesAndRemoves)
{
    EXPECT_TRUE(files.writeBytes(at(u"a.txt"), "one"));
    EXPECT_TRUE(files.appendBytes(at(u"A.TXT"), "two"));
    EXPECT_EQ(content("a.txt"), "onetwo");
    EXPECT_TRUE(files.writeBytes(at(u"long.txt"), "something longer"));
    EXPECT_TRUE(files.copyFile(at(u"a.txt"), at(u"long.txt")));
    EXPECT_EQ(files.readBytes(at(u"Long.txt")), "onetwo");
    EXPECT_EQ(files.renameFile(at(u"a.txt"), at(u"LONG.TXT")).reason, u"File exists");
    EXPECT_TRUE(files.renameFile(at(u"a.txt"), at(u"A.Txt")));
    EXPECT_EQ(content("A.Txt"), "onetwo");
    EXPECT_TRUE(files.createFolder(at(u"sub")));
    EXPECT_FALSE(files.createFolder(at(u"SUB")));
    EXPECT_TRUE(files.createFolders(at(u"Sub\\x\\y")));
    EXPECT_FALSE(files.createFolders(at(u"sub\\X\\Y")));
    EXPECT_EQ(files.writeBytes(at(u"none\\a.txt"), "").reason, u"No such file or directory");
    std::ofstream(folder / "not\\ours") << "";
    std::filesystem::remove(folder / "registry.sqlite-wal");
    std::filesystem::remove(folder / "registry.sqlite-shm");
    EXPECT_THAT(files.list(files.fromMachine(folder.path())),
        UnorderedElementsAre(u"A.Txt", u"long.txt", u"sub", u"registry.sqlite"));
    EXPECT_TRUE(files.removeFile(at(u"a.txt")));
    EXPECT_TRUE(files.removeFile(at(u"a.txt")));
    EXPECT_FALSE(files.fileExists(at(u"a.txt")));
}

TEST_F(FileSystemTest, LeavesReadOnlyFilesAlone)
{
    files.writeBytes(at(u"kept.txt"), "kept");
    files.writeBytes(at(u"other.txt"), "other");
    EXPECT_TRUE(files.setReadOnly(at(u"kept.txt"), true));
    EXPECT_TRUE(files.attributes(at(u"kept.txt"))->readOnly);
    EXPECT_FALSE(files.removeFile(at(u"kept.txt")));
    EXPECT_FALSE(files.writeBytes(at(u"kept.txt"), "new"));
    EXPECT_FALSE(files.appendBytes(at(u"kept.txt"), "new"));
    EXPECT_EQ(files.copyFile(at(u"other.txt"), at(u"kept.txt")).reason, u"Permission denied");
    EXPECT_EQ(content("kept.txt"), "kept");
    EXPECT_TRUE(files.setReadOnly(at(u"kept.txt"), false));
    EXPECT_TRUE(files.removeFile(at(u"kept.txt")));
}

TEST_F(FileSystemTest, FindsFreeTemporaryNames)
{
    const Text place = files.fromMachine(folder.path());
    const Text first = files.temporaryFile(place, u"TFR");
    const Text second = files.temporaryFile(place, u"TFR");
    EXPECT_NE(first, second);
    EXPECT_TRUE(first.starts_with(place + u"\\TFR") && first.ends_with(u".tmp")) << toUtf8(first);
    EXPECT_EQ(files.attributes(first)->size, 0U);
    EXPECT_THROW(files.temporaryFile(at(u"none"), u"TFR"), StatusError);
}

TEST_F(FileSystemTest, ReplacesAFileWholeOrNotAtAll)
{
    const auto write = [&](const std::string& bytes) {
        AtomicFile file(folder / "a");
        file.write(bytes);
        file.commit(AtomicFile::Sync::Yes);
    };
    write("old");
    write("new content");
    EXPECT_EQ(content("a"), "new content");
    {
        AtomicFile given(folder / "a");
        given.write("given up");
    }
    EXPECT_EQ(content("a"), "new content");

    // A limit on file sizes is met in the middle of the write, as a full disk is.
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THROW(write(std::string(10000, 'x')), std::system_error);
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(content("a"), "new content");
    for (const auto& entry : std::filesystem::directory_iterator(folder.path()))
        EXPECT_NE(entry.path().extension(), ".tmp") << entry.path();
}

} // namespace
} // namespace zn
