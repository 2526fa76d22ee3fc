#pragma once

#include <cstdint>

/// Which tabs of the conversion settings page a launch shows, given what the administrator left to the user. Some rows
/// look odd; tasks in use rely on them.
namespace zn {

/// Bits of the kinds of files that a task is launched on; 16 stands for anything else.
inline constexpr std::int32_t assembliesSelected = 4;
inline constexpr std::int32_t partsSelected = 8;

/// The two tabs of a row of tabs.
struct TabsShown {
    bool first = false;  ///< configurations; assembly
    bool second = false; ///< sheets; part
    bool operator==(const TabsShown&) const = default;
};

/// What the user may change of configurations and of sheets.
struct OutputFreedom {
    bool confs = false;      ///< which configurations are output
    bool confFiles = false;  ///< their grouping into files
    bool sheets = false;     ///< which sheets are output
    bool sheetFiles = false; ///< their grouping into files
};

/// The output tabs for the format chosen: a grouping alone counts where the format has one.
TabsShown outputTabsForFormat(const OutputFreedom& freedom, std::int32_t format);

/// The same for a format that the administrator fixed. Freedom on one side alone shows its tab only if it is whole.
TabsShown outputTabsForFixedFormat(const OutputFreedom& freedom, std::int32_t format);

/// What the user may change of themes and views.
struct ThemeFreedom {
    bool assembly = false;
    bool part = false;
};

/// The 3D PDF tabs for a selection. Freedom for a kind that isn't selected is taken back when the other kind has none.
TabsShown themeTabs(ThemeFreedom& freedom, std::int32_t selectedKinds);

} // namespace zn
