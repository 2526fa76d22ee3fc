#include "tests/support/windows/Show.h"

namespace zn::test {

const std::vector<WindowCase>& allWindows()
{
    static const std::vector<WindowCase> cases = [] {
        std::vector<WindowCase> all;
        for (auto* part : {conversionWindows, optionWindows, printWindows, otherWindows}) {
            const std::vector<WindowCase> some = part();
            all.insert(all.end(), some.begin(), some.end());
        }
        return all;
    }();
    return cases;
}

std::string testName(const ::testing::TestParamInfo<WindowCase>& window)
{
    std::string name = window.param.name;
    std::erase_if(name, [](char letter) { return !std::isalnum(static_cast<unsigned char>(letter)); });
    return name;
}

} // namespace zn::test
