// Sources that somebody has damaged: whatever is wrong with them, checking tells places inside the source,
// and running ends, with a fault at the worst.

#include "language/Machine.h"
#include "tests/language/DiskFiles.h"
#include "tests/language/TestHost.h"
#include "tests/support/Files.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <random>

namespace zn::test {
namespace {

using namespace language;

Text damaged(Text source, std::mt19937& random)
{
    static const TextView pieces[] = {u"(", u")", u" ", u"\n", u"End If\n", u"Next\n", u"\"", u".", u",", u" = ",
        u"Sub ", u"#If x Then\n", u" Then ", u"-", u"1e308", u" _\n", u"ReDim ", u"Err.Raise ",
        u"On Error Resume Next\n", u"Nothing", u"32767", u"Null", u" Like \"[\"", u"(1)", u":", u"Exit For", u" As ",
        u"&HFFFFFFFF", u"Resume Next\n", u"GoTo Fail\n"};
    const auto below = [&](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
    for (std::size_t changes = 1 + below(4); changes > 0; --changes) {
        const std::size_t at = below(source.size());
        const std::size_t length = std::min<std::size_t>(below(30), source.size() - at);
        switch (below(4)) {
        case 0:
            source.erase(at, length);
            break;
        case 1:
            source.insert(at, pieces[below(std::size(pieces))]);
            break;
        case 2:
            source.insert(below(source.size()), source.substr(at, length));
            break;
        default:
            std::swap(source[at], source[below(source.size())]);
            break;
        }
    }
    return source;
}

void expectAnEnd(const Text& source, FileAccess& files)
{
    const TestLibrary library;
    const CompileOptions options{&library, {{u"VBA7", Value(true)}}};
    const auto lines = static_cast<int>(split(source, u'\n').size());
    const auto errors = check(source, options);
    for (const Diagnostic& error : errors) {
        EXPECT_TRUE(error.line >= 1 && error.line <= lines && error.column >= 1) << toUtf8(source);
        EXPECT_FALSE(error.message.empty());
    }
    if (!errors.empty())
        return;
    TestHost host;
    host.stopAfter = 100;
    Machine machine(compile(source, options), host, files);
    try {
        machine.run(u"main");
    } catch (const RuntimeFault& fault) {
        EXPECT_FALSE(fault.description.empty()) << toUtf8(source);
    }
}

TEST(DamagedSources, AreToldOfOrRunToAnEnd)
{
    // More rounds by hand: ZN_MUTATIONS=1000
    const char* wanted = std::getenv("ZN_MUTATIONS");
    const int rounds = wanted ? std::stoi(wanted) : 20;
    const TemporaryFolder folder;
    DiskFiles files(folder / "files");
    std::mt19937 random(20180305);
    const auto scripts = std::filesystem::path(ZN_SOURCE_DIR) / "tests/language/scripts";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(scripts)) {
        if (entry.path().extension() != ".bas")
            continue;
        const Text source = toText(readFile(entry.path()));
        for (int i = 0; i < rounds; ++i)
            expectAnEnd(damaged(source, random), files);
    }
}

} // namespace
} // namespace zn::test
