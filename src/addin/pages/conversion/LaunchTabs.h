#pragma once

#include "addin/variables/LaunchFreedom.h"

/// Which tabs of the conversion settings page a launch shows, given what the administrator left to the user. Some rows
/// look odd; tasks in use rely on them.
namespace zn {

/// The two tabs of a row of tabs.
struct TabsShown {
    bool first = false;  ///< configurations; assembly
    bool second = false; ///< sheets; part
    bool operator==(const TabsShown&) const = default;
};

/// The output tabs for the format chosen: a grouping alone counts where the format has one.
TabsShown outputTabsForFormat(const OutputFreedom& freedom, std::int32_t format);

/// The same for a format that the administrator fixed. Freedom on one side alone shows its tab only if it is whole.
TabsShown outputTabsForFixedFormat(const OutputFreedom& freedom, std::int32_t format);

/// The 3D PDF tabs for a selection, of the freedom that `themesLeftOpen` leaves.
TabsShown themeTabs(const ThemeFreedom& freedom, std::int32_t selectedKinds);

} // namespace zn
