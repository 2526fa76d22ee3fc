#pragma once

#include "base/Status.h"
#include "base/Text.h"

namespace zn::language {

/// A run-time error of the language on its way to a handler of the macro. `Err` shows its parts.
struct ScriptError {
    std::int32_t number = 0;
    Text description;
    Text source;
};

/// The numbers that the interpreter itself raises.
namespace error {
inline constexpr std::int32_t returnWithoutGoSub = 3;
inline constexpr std::int32_t invalidCall = 5;
inline constexpr std::int32_t overflow = 6;
inline constexpr std::int32_t outOfMemory = 7;
inline constexpr std::int32_t subscript = 9;
inline constexpr std::int32_t arrayLocked = 10;
inline constexpr std::int32_t divisionByZero = 11;
inline constexpr std::int32_t typeMismatch = 13;
inline constexpr std::int32_t outOfTextSpace = 14;
inline constexpr std::int32_t interrupted = 18;
inline constexpr std::int32_t resumeWithoutError = 20;
inline constexpr std::int32_t outOfStack = 28;
inline constexpr std::int32_t procedureMissing = 35;
inline constexpr std::int32_t badFileNumber = 52;
inline constexpr std::int32_t fileNotFound = 53;
inline constexpr std::int32_t badFileMode = 54;
inline constexpr std::int32_t fileAlreadyOpen = 55;
inline constexpr std::int32_t deviceError = 57;
inline constexpr std::int32_t fileExists = 58;
inline constexpr std::int32_t diskFull = 61;
inline constexpr std::int32_t pastEnd = 62;
inline constexpr std::int32_t tooManyFiles = 67;
inline constexpr std::int32_t permissionDenied = 70;
inline constexpr std::int32_t pathAccess = 75;
inline constexpr std::int32_t pathNotFound = 76;
inline constexpr std::int32_t objectNotSet = 91;
inline constexpr std::int32_t loopNotInitialized = 92;
inline constexpr std::int32_t invalidPattern = 93;
inline constexpr std::int32_t invalidNull = 94;
inline constexpr std::int32_t objectRequired = 424;
inline constexpr std::int32_t cannotCreateObject = 429;
inline constexpr std::int32_t memberMissing = 438;
inline constexpr std::int32_t automation = 440;
inline constexpr std::int32_t actionUnsupported = 445;
inline constexpr std::int32_t namedArgumentMissing = 448;
inline constexpr std::int32_t argumentRequired = 449;
inline constexpr std::int32_t argumentCount = 450;
inline constexpr std::int32_t functionMissing = 453;
inline constexpr std::int32_t keyInUse = 457;
} // namespace error

/// The language's text for an error number.
TextView errorText(std::int32_t number);

[[noreturn]] void raise(std::int32_t number);
[[noreturn]] void raise(std::int32_t number, Text description);

/// What a failed call into the host or an object means to the macro.
ScriptError errorOfStatus(const StatusError& failure);

} // namespace zn::language
