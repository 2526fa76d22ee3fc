// What libFuzzer starts from and what it has found so far, fed to the targets in every test run.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#define ZN_FUZZ_TARGET(name, seeds) extern "C" int fuzz_##name(const std::uint8_t* data, std::size_t size);
#include "FuzzTargets.inc"
#undef ZN_FUZZ_TARGET

namespace zn::fuzz {
namespace {

struct Target {
    const char* name;
    const char* moreSeeds; ///< folders with commas between, "-" for none
    int (*run)(const std::uint8_t* data, std::size_t size);
};

constexpr Target targets[] = {
#define ZN_FUZZ_TARGET(name, seeds) {#name, seeds, fuzz_##name},
#include "FuzzTargets.inc"
#undef ZN_FUZZ_TARGET
};

void PrintTo(const Target& target, std::ostream* out) { *out << target.name; }

std::vector<std::filesystem::path> filesBelow(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    if (!std::filesystem::exists(folder))
        return files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            files.push_back(entry.path());
    }
    return files;
}

class Replay : public ::testing::TestWithParam<Target> {
protected:
    /// The number of files below `folder` that went through the target.
    std::size_t feedAll(const std::filesystem::path& folder)
    {
        const auto files = filesBelow(folder);
        for (const auto& file : files) {
            std::ifstream stream(file, std::ios::binary);
            const std::string input{std::istreambuf_iterator<char>(stream), {}};
            SCOPED_TRACE(file);
            EXPECT_NO_THROW(GetParam().run(reinterpret_cast<const std::uint8_t*>(input.data()), input.size()));
        }
        return files.size();
    }
};

TEST_P(Replay, SeedsAndFindingsKeepWhatIsPromised)
{
    const std::filesystem::path root = ZN_SOURCE_DIR;
    const std::filesystem::path own = root / "tests/fuzz";
    EXPECT_GT(feedAll(own / "seeds" / GetParam().name), 0U) << "a target starts from seeds of its own";
    feedAll(own / "findings" / GetParam().name);
    std::istringstream folders(GetParam().moreSeeds);
    for (std::string folder; std::getline(folders, folder, ',') && folder != "-";)
        EXPECT_GT(feedAll(root / folder), 0U) << folder;
}

INSTANTIATE_TEST_SUITE_P(, Replay, ::testing::ValuesIn(targets),
    [](const ::testing::TestParamInfo<Target>& target) { return std::string(target.param.name); });

TEST(FuzzFolders, BelongToATarget)
{
    for (const char* kind : {"seeds", "findings"}) {
        const auto folder = std::filesystem::path(ZN_SOURCE_DIR) / "tests/fuzz" / kind;
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            const auto name = entry.path().filename();
            EXPECT_TRUE(std::any_of(std::begin(targets), std::end(targets), [&](const Target& t) {
                return name == t.name;
            })) << entry.path();
        }
    }
}

} // namespace
} // namespace zn::fuzz
