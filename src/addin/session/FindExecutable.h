#pragma once

#include "base/Status.h"
#include "platform/Platform.h"
#include "platform/Processes.h"

#include <optional>

namespace zn {

/// Registry key of the user with the settings that support staff steer this add-in by.
inline constexpr TextView addInKey = u"Software\\Zentrel\\Applications\\Arkin Enterprise\\ZNTaskAddIn";
/// Below it: the path at which the text of the last macro is kept.
inline constexpr TextView scriptCopyValue = u"ScriptCopyPath";

/// The program identifier of whatever release is the machine's default.
inline constexpr TextView plainProgId = u"Zentrel.Application";
/// That of the release of a year such as 2018.
Text releaseProgId(std::int32_t year);

/// The class id that a program identifier stands for, in its text form. Raises `REGDB_E_CLASSNOTREG`.
Text resolveProgId(const Platform& platform, TextView name);

struct ExecutableChoice {
    /// Path and start switch, without quotes. Empty if there is no executable; the rest then has no meaning but for
    /// the year.
    Text commandLine;
    /// The wanted year, or the one that the class's own program identifier tells.
    std::int32_t year = 0;
    bool regressionMode = false;
    /// Of the executable's file; none if it can't be read.
    std::optional<FileVersion> version;
};

/// Which executable of the CAD application to run, and how. `year` is a release such as 2018, or 0 for what `classId`
/// is registered for. Regression mode (" /R" instead of " /B") is chosen if it is forced, by the caller or by the
/// user's setting, and for releases before 21.3 that aren't part of a full installation.
ExecutableChoice findExecutable(const Platform& platform, TextView classId, std::int32_t year, bool forceRegression);

} // namespace zn
