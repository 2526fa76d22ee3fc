#include "zentrel/kernel/KernelCache.h"
#include "platform/ContentCache.h"
#include "tests/zentrel/Documents.h"

using namespace zn::zentrel;
using namespace zn::zentrel::test;

namespace {

struct Cache : FolderTest {
    Cache()
    {
        use(1 << 20);
        zn::test::writeFile(folder / "a.step", "one");
    }
    ~Cache() override { setKernelCache({}, {}); }

    void use(std::uint64_t most)
    {
        setKernelCache(std::make_unique<zn::ContentCache>(folder / "cache", most),
            [this](const std::string& line) { told.push_back(line); });
    }
    /// What the maker gives for the file now, and whether it was asked.
    std::string made(const char* maker, MadeResult result)
    {
        bool asked = false;
        const std::string bytes = keptOfFile(folder / "a.step", maker, [&] {
            asked = true;
            return result;
        });
        return bytes + (asked ? " made" : " kept");
    }

    std::vector<std::string> told;
};

} // namespace

TEST_F(Cache, aResultIsKeptForTheSameBytesAndTheSameMaker)
{
    EXPECT_EQ(made("step 1", {"a"}), "a made");
    EXPECT_EQ(made("step 1", {"b"}), "a kept");
    EXPECT_EQ(made("step 2", {"c"}), "c made");
    zn::test::writeFile(folder / "a.step", "two");
    EXPECT_EQ(made("step 1", {"d"}), "d made");
    zn::test::writeFile(folder / "a.step", "one");
    EXPECT_EQ(made("step 1", {"e"}), "a kept");
}

TEST_F(Cache, aResultOfOtherFilesOrOfAFileThatChangedMeanwhileIsNotKept)
{
    EXPECT_EQ(made("step 1", {"a", false}), "a made");
    EXPECT_EQ(made("step 1", {"b", false}), "b made");
    const auto change = [&]() -> MadeResult {
        zn::test::writeFile(folder / "a.step", "two");
        return {"of two"};
    };
    EXPECT_EQ(keptOfFile(folder / "a.step", "step 1", change), "of two");
    zn::test::writeFile(folder / "a.step", "one");
    EXPECT_EQ(made("step 1", {"c"}), "c made");
    EXPECT_THROW(keptOfFile(folder / "a.step", "iges 1",
                     []() -> MadeResult { throw DocumentError(ErrorKind::Damaged, "It is cut."); }),
        DocumentError);
    EXPECT_EQ(made("iges 1", {"d"}), "d made");
}

TEST_F(Cache, aCacheThatTakesNothingIsToldOnceAndCostsNothingElse)
{
    fs::remove_all(folder / "cache");
    EXPECT_EQ(made("step 1", {"a"}), "a made");
    EXPECT_EQ(made("step 1", {"b"}), "b made");
    ASSERT_EQ(told.size(), 1U);
    EXPECT_THAT(told[0], ::testing::HasSubstr("Nothing more is kept in the cache '" + (folder / "cache").string()));
}
