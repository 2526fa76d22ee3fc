#pragma once

#include "platform/Platform.h"

#include "base/Text.h"

#include <optional>

namespace zn {

/// What the search for the CAD application's executable knows and finds out.
struct ExecutableSearch {
    std::int32_t requestedYear = 0;  ///< in and out: a year without an own installation becomes the class's
    bool forceRegression = false;    ///< in
    bool regressionMode = false;     ///< out: the start switch is " /R"
    std::uint16_t revisionMajor = 0; ///< out: the executable's file version, 0 if it can't be read
    std::uint16_t revisionMinor = 0; ///< out
};

/// The class id text of a program identifier; none if it isn't registered.
std::optional<Text> resolveProgId(const Platform& platform, const Text& progId);

/// The command line that starts the CAD application with its start switch; empty if nothing is installed.
/// There are no quotes around the path.
Text findExecutable(const Platform& platform, const Text& classId, ExecutableSearch& search);

} // namespace zn
