#pragma once

#include "addin/variables/OutputFormats.h"
#include "contracts/host/ArkTask.h"

#include <functional>

/// What the administrator of a conversion task leaves to the user at its launch. The pages show it and the launch
/// decides by it whether anybody must be asked; nothing here needs a window.
namespace zn {

// Bits of the kinds of files that a task is launched on.
inline constexpr std::int32_t assembliesSelected = 4;
inline constexpr std::int32_t partsSelected = 8;
inline constexpr std::int32_t othersSelected = 16;

// Bits by which a setting is left to the user; they stand in the variable of the setting itself.
inline constexpr std::int32_t userMayChange = 1;         ///< of sheets, configurations and their grouping into files
inline constexpr std::int32_t userMayChangeVersions = 4; ///< of the version rule
inline constexpr std::int32_t userMayChangeTheme = 1;    ///< of a theme
inline constexpr std::int32_t userMayChangeViews = 8;    ///< of the views beside it

/// What the user may change of configurations and of sheets.
struct OutputFreedom {
    bool confs = false;      ///< which configurations are output
    bool confFiles = false;  ///< their grouping into files
    bool sheets = false;     ///< which sheets are output
    bool sheetFiles = false; ///< their grouping into files
};

/// What the user may change of themes and views.
struct ThemeFreedom {
    bool assembly = false;
    bool part = false;
};

struct LaunchFreedom {
    std::int32_t formatCode = 0; ///< the format that the administrator fixed; 0 for none
    bool format = false;
    bool path = false;
    bool versions = false;
    OutputFreedom output;
    ThemeFreedom themes;
};

/// The format of a stored label; null if there is none.
using FindFormat = std::function<const OutputFormat*(TextView label)>;

/// Reads the freedoms from a definition or a run. A variable that is absent leaves its setting to the user. Raises the
/// host's failure.
LaunchFreedom readLaunchFreedom(const ObjectRef& task, const FindFormat& findFormat = findOutputFormat);

/// The themes that a launch on files of these kinds leaves to the user: one that only one kind may change counts if
/// that kind is selected, two always count.
ThemeFreedom themesLeftOpen(const ThemeFreedom& themes, std::int32_t selectedKinds);

/// What a launch on files of these kinds must ask the user, as words of a sentence ("the output format (FileFormat),
/// the output path (PromptOutput)"); empty when it must ask nothing.
Text openQuestions(const LaunchFreedom& freedom, std::int32_t selectedKinds);

/// What a task or a run says to the same questions, as words of a sentence ("output format: STL (*.stl), …"). Raises
/// the host's failure.
Text answersOf(const ObjectRef& task, const LaunchFreedom& freedom, std::int32_t selectedKinds);

} // namespace zn
