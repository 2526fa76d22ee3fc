#pragma once

#include "addin/installation/ProductTexts.h"

namespace zn {

/// What a session tells a person about its failures, and what it calls results that hold everything.
namespace SessionTexts {
inline constexpr NumberedText notInstalled = {8, u"Zentrel %d is not installed."};
inline constexpr NumberedText eventsNotAttached = {9, u"Failed to attach event handlers to Zentrel."};
inline constexpr NumberedText notStarted = {10, u"Failed to start Zentrel %d."};
inline constexpr NumberedText notClosed = {11, u"Failed to close Zentrel application."};
inline constexpr NumberedText macroFailed = {12, u"Failed to run Zentrel macro."};
inline constexpr NumberedText windowNotHidden = {93, u"Failed to set Zentrel main window as invisible."};
inline constexpr NumberedText noRevision = {94, u"Failed to get Zentrel revision number."};
inline constexpr NumberedText reason = {95, u"Reason:"};
inline constexpr NumberedText allConfigurations = {169, u"All configurations"};
inline constexpr NumberedText allSheets = {170, u"All sheets"};
}

/// The text of a macro call's reason code; null for 0 and for codes that have none.
const NumberedText* macroReason(std::int32_t code);

} // namespace zn
