#include "arkin/tasks/RunStore.h"
#include "tests/arkin/desktop/DesktopFixture.h"

#include <regex>
#include <set>

namespace zn::arkin::test {

namespace {

const Language german{"DE", ZN_SOURCE_DIR "/resources/LanFiles"};

/// The texts that the code of a folder asks for behind what looks like this.
std::set<std::string> askedIn(const char* folder, const char* call)
{
    const std::regex asked(std::string(call) + R"re(\s*"((?:[^"\\]|\\.)+)")re");
    std::set<std::string> texts;
    const std::string sources = ZN_SOURCE_DIR "/src/arkin/" + std::string(folder);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(sources)) {
        const std::string code = entry.is_regular_file() ? readFile(entry.path()) : "";
        for (std::sregex_iterator match(code.begin(), code.end(), asked), end; match != end; ++match)
            texts.insert((*match)[1]);
    }
    return texts;
}

std::string inGerman(const char* context, const std::string& english)
{
    return Translation(german).translate(context, english.c_str(), nullptr, -1).toStdString();
}

} // namespace

class TranslationTest : public DesktopFixture { };

TEST_F(TranslationTest, EveryTextOfTheWindowsHasAGermanOne)
{
    for (const WindowText& text : windowTexts())
        EXPECT_NE(inGerman(text.context, text.english), "") << text.context << ": " << text.english;
    const struct {
        const char* folder;
        const char* call; ///< with what stands before the text
        const char* context;
        std::set<std::string> some;
    } places[] = {
        {"desktop", R"(\bown\()", "Desktop", {"&Refresh", "All files"}},
        {"desktop", R"(\blabel(?:led|For)\(\w+, )", "Desktop", {"&Folders of the vault:", "S&how:"}},
        {"desktop/explorer", R"(\{"\w+",)", "Desktop", {"Check &In …"}},
        {"reftree", R"("RefTree", )", "RefTree", {"State", "Latest"}},
    };
    for (const auto& place : places) {
        const auto asked = askedIn(place.folder, place.call);
        for (const std::string& english : place.some)
            EXPECT_TRUE(asked.contains(english)) << english;
        for (const std::string& english : asked)
            EXPECT_NE(inGerman(place.context, english), "") << english;
    }
    for (const auto state : {TaskRunState::Queued, TaskRunState::Running, TaskRunState::Suspended,
             TaskRunState::CancelRequested, TaskRunState::Finished, TaskRunState::Cancelled,
             TaskRunState::FinishedWithErrors, TaskRunState::SuspendRequested, TaskRunState::ResumeRequested}) {
        RunInfo run;
        run.state = state;
        const std::string english = zn::toUtf8(stateText(run, 0));
        EXPECT_NE(inGerman("RunState", english), "") << english;
    }
    for (const char* state : {"waiting", "at work", "stops", "stops after its run", "gone"})
        EXPECT_NE(inGerman("WorkerState", state), "") << state;
    EXPECT_EQ(Translation({}).translate("Desktop", "&Refresh", nullptr, -1), QString());
}

} // namespace zn::arkin::test
