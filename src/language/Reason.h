#pragma once

#include "language/Machine.h"

namespace zn::language {

/// The reason codes by which the application's macro call tells why a macro failed.
enum class Reason : std::int32_t {
    None = 0,
    InvalidArgument = 1,
    MacrosDisabled = 2,
    OutOfMemory = 5,
    InvalidProcedureName = 6,
    InvalidPropertyType = 7,
    ProcedureExpected = 8,
    InvalidParameterCount = 9,
    InvalidVariableType = 10,
    Interrupted = 11,
    UnhandledException = 12,
    Overflow = 13,
    TypeMismatch = 14,
    ParameterMissing = 15,
    CallFailed = 20,
    InvalidIndex = 22,
    PermissionDenied = 23,
    TooManyFiles = 25,
    DiskError = 26,
    SaveFailed = 27,
    OpenFailed = 28,
};

Reason reasonOf(const RuntimeFault& fault);
/// A source that doesn't compile was never called: "Call failed.", unless a code says it more exactly.
Reason reasonOf(const SyntaxError& error);

} // namespace zn::language
