#include "platform/WorkFolder.h"
#include "tests/support/Files.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace fs = std::filesystem;

TEST(WorkFolder, IsClosedToOthersAndTakesOnlyLeftoversAway)
{
    const zn::test::TemporaryFolder parent;
    const fs::path dear = parent / "dear", left = parent / "work-aaaaaa", link = parent / "work-bbbbbb",
                   foreign = parent / "work-cccccc", other = parent / "work2-dddddd";
    for (const fs::path& folder : {dear, left, foreign, other})
        zn::test::writeFile(folder / "file", "kept");
    fs::create_directory_symlink(dear, link);
    fs::create_directory_symlink(dear, left / "inside");
    const bool superuser = ::geteuid() == 0 && ::chown(foreign.c_str(), 12345, 12345) == 0;

    fs::path path;
    {
        const zn::WorkFolder living(parent / "", "work");
        const zn::WorkFolder next(parent / "", "work");
        path = living.path();
        EXPECT_TRUE(fs::is_directory(path));
        EXPECT_NE(path, next.path());
        EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
    }
    EXPECT_FALSE(fs::exists(path));
    EXPECT_FALSE(fs::exists(left));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_TRUE(fs::exists(other / "file"));
    EXPECT_EQ(fs::exists(foreign / "file"), superuser);
    EXPECT_TRUE(fs::exists(dear / "file"));
}
