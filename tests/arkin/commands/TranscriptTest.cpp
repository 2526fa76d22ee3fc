#include "tests/support/Files.h"
#include "tests/support/Shell.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>

// Every .txt file beside this one is a session at a terminal: "$ " begins a command, what follows is its output (both
// streams), and "? N" its exit code when that isn't 0. "#" begins a comment. What differs from run to run is written
// as T (the session's folder), BIN (the programs' folder), VERSION, TIME, GUID, USER and HOST.

namespace {

void replaceAll(std::string& text, const std::string& what, const std::string& with)
{
    for (std::size_t at = 0; !what.empty() && (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
}

std::string outputOf(const std::string& command)
{
    auto [code, text] = zn::test::shell(command);
    if (!text.empty() && text.back() != '\n')
        text += "\n";
    return code == 0 ? text : text + "? " + std::to_string(code) + "\n";
}

class TranscriptTest : public ::testing::TestWithParam<std::string> {
protected:
    /// In the session's folder, with a home of its own and the programs in the path.
    std::string run(const std::string& command)
    {
        const auto script = folder / "command";
        std::ofstream(script) << command << "\n";
        const auto home = (folder / "home").string();
        auto text = outputOf("cd '" + work.string() + "' && ARKIN_HOME='" + home
            + "' DISPLAY= WAYLAND_DISPLAY= QT_QPA_PLATFORM= PATH='" ZN_BIN_DIR ":/usr/bin:/bin' BIN='" ZN_BIN_DIR
              "' SOURCE='" ZN_SOURCE_DIR "' TZ=UTC sh '"
            + script.string() + "' 2>&1");
        replaceAll(text, work.string(), "T");
        auto backslashed = work.string();
        replaceAll(backslashed, "/", "\\");
        replaceAll(text, backslashed, "T");
        replaceAll(text, home, "HOME");
        replaceAll(text, ZN_BIN_DIR, "BIN");
        text = std::regex_replace(text, std::regex(" \\d+\\.\\d+\\.\\d+\n"), " VERSION\n");
        text = std::regex_replace(text, std::regex(R"(\d{4}-\d\d-\d\d[ T]\d\d:\d\d:\d\d(Z| UTC)?)"), "TIME");
        return std::regex_replace(
            text, std::regex(R"(\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[0-9A-F-]{17}\})"), "GUID");
    }

    zn::test::TemporaryFolder folder;
    std::filesystem::path work = folder / "T";
};

} // namespace

TEST_P(TranscriptTest, ShowsWhatAUserSees)
{
    std::filesystem::create_directory(work);
    std::istringstream lines(zn::test::readFile(ZN_SOURCE_DIR "/tests/arkin/commands/" + GetParam() + ".txt"));
    std::vector<std::pair<std::string, std::string>> steps;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("$ "))
            steps.emplace_back(line.substr(2), "");
        else if (!line.starts_with("#"))
            steps.at(steps.size() - 1).second += line + "\n";
    }
    for (const auto& [command, wanted] : steps)
        EXPECT_EQ(run(command), wanted) << "$ " << command;
}

namespace {

std::vector<std::string> transcripts()
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(ZN_SOURCE_DIR "/tests/arkin/commands"))
        if (entry.path().extension() == ".txt")
            names.push_back(entry.path().stem());
    return names;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Session, TranscriptTest, ::testing::ValuesIn(transcripts()), [](const auto& row) { return row.param; });
