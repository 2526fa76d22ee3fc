#include "addin/variables/SheetMetalBits.h"

namespace zn {

namespace {

struct Bit {
    int place;
    TextView variable;
    bool withGeometry; ///< counts only while the geometry is exported
    bool wanted;       ///< whether the bit stands for the setting or for its opposite
};

constexpr Bit bits[] = {
    {0, u"SheetMetalGeometry", false, true},
    {1, u"SheetMetalHiddenEdges", true, true},
    {2, u"SheetMetalBendLines", false, true},
    {3, u"SheetMetalSketches", false, true},
    {4, u"SheetMetalMergeCoplanar", false, false},
    {5, u"SheetMetalLibraryFeatures", true, true},
    {6, u"SheetMetalFormingTools", true, true},
    {11, u"SheetMetalBoundingBox", false, true},
};

} // namespace

std::int32_t sheetMetalBits(const std::function<std::int32_t(TextView)>& setting)
{
    const bool geometry = setting(u"SheetMetalGeometry") != 0;
    std::int32_t options = 0;
    for (const Bit& bit : bits) {
        const bool counts = geometry || !bit.withGeometry;
        if (counts && (setting(bit.variable) != 0) == bit.wanted)
            options |= 1 << bit.place;
    }
    return options;
}

} // namespace zn
