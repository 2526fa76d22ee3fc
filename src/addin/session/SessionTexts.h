#pragma once

#include "base/Text.h"

namespace zn {

/// What a session tells a person about its failures: the number in the module's string table and its default text.
struct SessionText {
    int number;
    const char* text;
};

namespace SessionTexts {
inline constexpr SessionText notInstalled = {8, "Zentrel %d is not installed."};
inline constexpr SessionText eventsNotAttached = {9, "Failed to attach event handlers to Zentrel."};
inline constexpr SessionText notStarted = {10, "Failed to start Zentrel %d."};
inline constexpr SessionText notClosed = {11, "Failed to close Zentrel application."};
inline constexpr SessionText macroFailed = {12, "Failed to run Zentrel macro."};
inline constexpr SessionText windowNotHidden = {93, "Failed to set Zentrel main window as invisible."};
inline constexpr SessionText noRevision = {94, "Failed to get Zentrel revision number."};
inline constexpr SessionText reason = {95, "Reason:"};
inline constexpr SessionText allConfigurations = {169, "All configurations"};
inline constexpr SessionText allSheets = {170, "All sheets"};
}

/// The text of a macro call's reason code; null for 0 and for codes that have none.
const SessionText* macroReason(std::int32_t code);

} // namespace zn
