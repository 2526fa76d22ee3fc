#include "addin/pages/conversion/LaunchTabs.h"

namespace zn {

namespace {

constexpr std::int32_t pdfFormat = 5;
constexpr std::int32_t viewpaneFormat = 10;

} // namespace

TabsShown outputTabsForFormat(const OutputFreedom& freedom, std::int32_t format)
{
    return {.first = freedom.confs || (freedom.confFiles && format == viewpaneFormat),
        .second = freedom.sheets || (freedom.sheetFiles && (format == pdfFormat || format == viewpaneFormat))};
}

TabsShown outputTabsForFixedFormat(const OutputFreedom& freedom, std::int32_t format)
{
    const bool someConfs = freedom.confs || freedom.confFiles;
    const bool someSheets = freedom.sheets || freedom.sheetFiles;
    if (someConfs && someSheets)
        return outputTabsForFormat(freedom, format);
    return {.first = freedom.confs && freedom.confFiles, .second = freedom.sheets && freedom.sheetFiles};
}

TabsShown themeTabs(const ThemeFreedom& freedom, std::int32_t selectedKinds)
{
    return {.first = freedom.assembly && (selectedKinds & assembliesSelected),
        .second = freedom.part && (selectedKinds & partsSelected)};
}

} // namespace zn
