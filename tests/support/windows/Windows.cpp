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

} // namespace zn::test
