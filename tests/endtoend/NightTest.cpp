#include "tests/arkin/desktop/DailyFixture.h"
#include "tests/endtoend/Plant.h"

#include <fmt/format.h>
#include <fstream>
#include <nlohmann/json.hpp>
#include <QLabel>
#include <QTreeView>

namespace zn::test {

using zn::arkin::test::columnOf;

/// A folder of 60 files, every third of which is broken, and the second night after some of them were mended.
class Night : public Plant {
protected:
    Night()
    {
        std::filesystem::create_directory(folder / "night");
        for (int i = 0; i < files; ++i) {
            if (isBad(i))
                std::ofstream(fileOf(i)) << "This is no part, number " << i << ".";
            else
                std::filesystem::copy_file(ZN_SOURCE_DIR "/samples/Bracket.zenprt", fileOf(i));
        }
        run("arkin add " + (folder / "night").string());
        run("arkin variable add Description Configuration 'Source version'");
        run("arkin task create 'To STL' --kind convert --from " ZN_SOURCE_DIR "/resources/tasks/to-stl.json");
    }

    static constexpr int files = 60;
    static bool isBad(int i) { return i % 3 == 0; }
    std::filesystem::path fileOf(int i) const { return folder / "night" / fmt::format("part{:02}.zenprt", i); }
    /// The results of a run by the report, as "made" and the like with how often.
    std::map<std::string, int> reported(int id)
    {
        std::map<std::string, int> counts;
        const auto report = nlohmann::json::parse(run("arkin report --json"));
        for (const auto& one : report.at("runs")) {
            if (one.at("run") != id)
                continue;
            for (const auto& result : one.at("results")) {
                ++counts[result.at("outcome").get<std::string>()];
                if (result.at("outcome") == "failed") {
                    EXPECT_THAT(result.at("sentence").get<std::string>(),
                        ::testing::HasSubstr("is no document of this program"));
                }
            }
        }
        return counts;
    }
};

TEST_F(Night, IsToldRightByReportExitCodeAndMonitorAndTheNextOneDoesWhatChanged)
{
    const std::string night = (folder / "vault/night").string();
    run("arkin task launch 'To STL' " + night + " --defaults");
    run("arkin worker --once; test $? = 3");
    EXPECT_EQ(reported(1), (std::map<std::string, int>{{"made", 120}, {"failed", 20}}));
    EXPECT_THAT(run("arkin report"), ::testing::HasSubstr("1 run, 120 made, 20 failed."));
    EXPECT_THAT(run("arkin report"), ::testing::HasSubstr("Run 1 of 'To STL': finished, 20 of 140 failed."));
    monitor(1, [&](QWidget& window) {
        EXPECT_EQ(columnOf(*find<QTreeView>(window, "runList"), 2), QStringList({"finished, 20 of 140 failed"}));
        EXPECT_TRUE(find<QLabel>(window, "heading")->text().startsWith("finished, 20 of 140 failed"));
        const auto outcomes = columnOf(*find<QTreeView>(window, "results"));
        const auto sentences = columnOf(*find<QTreeView>(window, "results"), 5);
        EXPECT_EQ(outcomes.count("made"), 120);
        EXPECT_EQ(outcomes.count("failed"), 20);
        EXPECT_EQ(sentences.count(""), 120) << "each failure has its sentence";
    });

    // By the next night three are mended, and two good ones have a new version.
    for (const int i : {0, 3, 6}) {
        std::filesystem::copy_file(
            ZN_SOURCE_DIR "/samples/Bracket.zenprt", fileOf(i), std::filesystem::copy_options::overwrite_existing);
        run("arkin add --new-version " + fileOf(i).string() + " --to night");
    }
    for (const int i : {1, 2})
        run("arkin card " + night + "/" + fileOf(i).filename().string() + " --set Description=longer");
    run("arkin task launch 'To STL' " + night + " --defaults --only-changed");
    run("arkin worker --once; test $? = 3");
    EXPECT_EQ(
        reported(2), (std::map<std::string, int>{{"made", 9}, {"replaced", 6}, {"failed", 17}, {"unchanged", 38}}));
}

} // namespace zn::test
