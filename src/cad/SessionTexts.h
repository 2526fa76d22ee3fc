#pragma once

#include "base/Text.h"

#include <cstdint>

/// What the CAD session tells a user. The numbers are the texts' own in the string file.
namespace zn::sessiontext {

inline constexpr const char* notInstalled = "Zentrel %d is not installed.";                         // 8
inline constexpr const char16_t* attachFailed = u"Failed to attach event handlers to Zentrel.";     // 9
inline constexpr const char* startFailed = "Failed to start Zentrel %d.";                           // 10
inline constexpr const char16_t* closeFailed = u"Failed to close Zentrel application.";             // 11
inline constexpr const char16_t* macroFailed = u"Failed to run Zentrel macro.";                     // 12
inline constexpr const char16_t* hidingFailed = u"Failed to set Zentrel main window as invisible."; // 93
inline constexpr const char16_t* revisionFailed = u"Failed to get Zentrel revision number.";        // 94
inline constexpr const char16_t* reasonLabel = u"Reason:";                                          // 95
inline constexpr const char16_t* allConfigurations = u"All configurations";                         // 169
inline constexpr const char16_t* allSheets = u"All sheets";                                         // 170

struct MacroReason {
    std::int32_t code;
    const char16_t* text;
};
/// Why a macro call failed, by the application's reason code (string numbers 96 to 113).
inline constexpr MacroReason macroReasons[] = {
    {1, u"Invalid argument provided in macro."},
    {2, u"Macros are disabled."},
    {5, u"Out of memory."},
    {6, u"Invalid procedure name."},
    {7, u"Invalid property type."},
    {8, u"Sub or Function expected."},
    {9, u"Invalid parameter count."},
    {10, u"Invalid variable type."},
    {12, u"Unhandled exception."},
    {13, u"Value overflow."},
    {14, u"Type mismatch."},
    {15, u"Required parameter missing."},
    {20, u"Call failed."},
    {22, u"Invalid index provided."},
    {23, u"Permission denied."},
    {25, u"Too many open files."},
    {27, u"File save failed."},
    {28, u"File open failed."},
};

} // namespace zn::sessiontext
