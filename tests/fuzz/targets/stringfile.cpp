// A string file: everything before the line that is complained of is good, and that line is in the file.
#include "strings/StringFile.h"
#include "tests/fuzz/Promise.h"

#include <algorithm>

using namespace zn;
using fuzz::promise;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    const auto file = readStringFile(content);
    if (file.problem.empty())
        return 0;
    promise(file.problem.starts_with(u"line ") && file.problem.ends_with(u"."), "a complaint is a sentence");
    const auto line = leadingInteger(TextView(file.problem).substr(5));
    promise(line >= 1 && line <= std::count(content.begin(), content.end(), '\n') + 1, "the line is in the file");
    if (line == 1)
        return 0;
    std::size_t before = 0;
    for (int i = 1; i < line; ++i)
        before = content.find('\n', before) + 1;
    promise(readStringFile(content.substr(0, before)).problem.empty(), "the lines before are good");
    return 0;
}
