#include "addin/files/OutputNames.h"

#include <gtest/gtest.h>

namespace zn {

TEST(OutputNames, ReachAsFarAsThePatternIsKnown)
{
    SelectionRecords inputs;
    inputs.push_back(std::make_unique<OutputRecord>());
    inputs[0]->path = u"C:\\V\\p\\a b.zenprt";
    const struct {
        const char16_t* pattern;
        const char16_t* beginning; ///< empty: nothing is announced
    } rows[] = {
        {u"<Path>\\<Filename>_<Extension>_<Configuration>", u"C:\\V\\p\\a b_zenprt_"},
        {u"<VaultPath>\\Out\\<Filename>", u"C:\\V\\Out\\a b"},
        {u"<VaultPath>\\<Revision>\\<Filename>", u"C:\\V\\"},
        {u"<VaultPath>/Out/./<Today>", u"C:\\V\\Out\\"},
        {u"D:\\%Project%\\<Filename>", u"D:\\"},
        {u"D:\\%Project%\\..\\..\\<Filename>", u""},
        {u"<Filename>", u""}, // where that leads only the CAD application knows
        {u"", u""},
    };
    for (const auto& row : rows) {
        const auto names = outputNames({{row.pattern}, u"STL (*.stl)", u"C:\\V"}, inputs);
        ASSERT_EQ(names.size(), *row.beginning ? 1u : 0u) << toUtf8(row.pattern);
        if (names.empty())
            continue;
        EXPECT_EQ(names[0].beginning, row.beginning);
        EXPECT_EQ(names[0].ending, u".stl");
    }
    EXPECT_EQ(outputNames({{u"D:\\x"}, u"Viewpane (*.vprt; *.vasm; *.vdrw)", u""}, inputs)[0].ending, u"");
}

} // namespace zn
