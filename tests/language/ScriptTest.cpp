// Every .bas file below scripts/ is one test. Its comments say what must come:
//   ' expect: a line of Debug.Print output       (blanks at the end don't count)
//   ' error: line:column message                 a compile error, of all that are found
//   ' fault: line:column number message          an error that the macro didn't handle

#include "language/Machine.h"
#include "tests/language/DiskFiles.h"
#include "tests/language/TestHost.h"
#include "tests/support/Files.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace zn::test {
namespace {

namespace fs = std::filesystem;
using namespace language;

const fs::path scripts = fs::path(ZN_SOURCE_DIR) / "tests/language/scripts";

std::string trimmedEnd(std::string line)
{
    line.erase(line.find_last_not_of(" \r") + 1);
    return line;
}

std::string join(const std::vector<std::string>& lines)
{
    std::string out;
    for (const std::string& line : lines)
        out += line + "\n";
    return out;
}

std::string expected(const std::string& source)
{
    std::vector<std::string> lines;
    std::istringstream stream(source);
    for (std::string line; std::getline(stream, line);) {
        for (const char* mark : {"' expect:", "' error:", "' fault:"}) {
            const std::size_t at = line.find(mark);
            if (at == std::string::npos)
                continue;
            const std::string kind = std::string(mark) == "' expect:" ? "" : std::string(mark).substr(2) + " ";
            const std::string text = line.substr(at + std::string(mark).size());
            lines.push_back(trimmedEnd(kind + (text.empty() ? text : text.substr(1))));
        }
    }
    return join(lines);
}

std::string placed(int line, int column) { return std::to_string(line) + ":" + std::to_string(column) + " "; }

CompileOptions options(const TestLibrary& library)
{
    return {&library, {{u"VBA7", Value(true)}, {u"Win64", Value(true)}}};
}

std::string outcome(const std::string& source)
{
    const TestLibrary library;
    const Text text = toText(source);
    std::vector<std::string> lines;
    for (const Diagnostic& error : check(text, options(library)))
        lines.push_back("error: " + placed(error.line, error.column) + toUtf8(error.message));
    if (!lines.empty())
        return join(lines);
    TemporaryFolder folder;
    TestHost host;
    DiskFiles files(folder.path());
    Machine machine(compile(text, options(library)), host, files);
    std::string fault;
    try {
        machine.run(u"main");
    } catch (const RuntimeFault& f) {
        fault = "fault: " + placed(f.line, f.column) + std::to_string(f.number) + " " + toUtf8(f.description);
    }
    for (const Text& line : host.lines)
        lines.push_back(trimmedEnd(toUtf8(line)));
    if (!fault.empty())
        lines.push_back(fault);
    return join(lines);
}

std::vector<std::string> scriptNames()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(scripts))
        if (entry.path().extension() == ".bas")
            names.push_back(fs::relative(entry.path(), scripts).string());
    std::ranges::sort(names);
    return names;
}

class Script : public testing::TestWithParam<std::string> { };

TEST_P(Script, DoesWhatItsCommentsSay)
{
    const std::string source = readFile(scripts / GetParam());
    const std::string wanted = expected(source);
    ASSERT_FALSE(wanted.empty()) << "The script expects nothing.";
    EXPECT_EQ(outcome(source), wanted);
}

std::string testName(const testing::TestParamInfo<std::string>& info)
{
    std::string name = info.param.substr(0, info.param.size() - 4);
    std::ranges::replace_if(
        name, [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Language, Script, testing::ValuesIn(scriptNames()), testName);

} // namespace
} // namespace zn::test
