#pragma once

#include "addin/flows/ZNTaskAddIn.h"

#include <optional>

namespace zn {

/// The outcome of looking at one file's 3D PDF theme.
struct ThemeVerdict {
    bool variableMissing = false;   ///< a variable that the check cannot go without
    std::optional<Text> deniedPath; ///< a theme that the user has no right to read
};

/// For the format 3D PDF, whether the theme of the file's kind may be read. Other formats pass.
/// A host failure is raised.
ThemeVerdict checkTheme(const ObjectRef& instance, FileLogic& fileLogic, const OutputRecord& record);

/// Ends a run whose theme may not be read: state, log line, session stopped, log committed.
void reportDeniedTheme(TaskContext& context, IArkTaskInstance& instance, const Text& themePath, const Text& logPath);

} // namespace zn
