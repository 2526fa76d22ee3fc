#pragma once

#include "contracts/host/Codes.h"

#include <string>

namespace zn::arkin {

using zn::E_ARK_NAME_ALREADY_EXISTS;
using zn::E_ARK_PERMISSION_DENIED;

// Statuses of this vault host beyond those that add-ins tell apart. `statusText` has their names and sentences.
inline constexpr zn::Status E_ARK_DATABASE = zn::statusCode(0x80040206);
inline constexpr zn::Status E_ARK_NOT_IN_VAULT = zn::statusCode(0x80040301);
inline constexpr zn::Status E_ARK_NO_SUCH_VERSION = zn::statusCode(0x80040302);
inline constexpr zn::Status E_ARK_NO_SUCH_VARIABLE = zn::statusCode(0x80040303);
inline constexpr zn::Status E_ARK_CHECKED_OUT = zn::statusCode(0x80040304);
inline constexpr zn::Status E_ARK_CHECKED_OUT_ELSEWHERE = zn::statusCode(0x80040305);
inline constexpr zn::Status E_ARK_NOT_CHECKED_OUT = zn::statusCode(0x80040306);
inline constexpr zn::Status E_ARK_LOCAL_FILE_MISSING = zn::statusCode(0x80040307);
inline constexpr zn::Status E_ARK_LOCAL_FILE_CHANGED = zn::statusCode(0x80040308);
inline constexpr zn::Status E_ARK_BAD_NAME = zn::statusCode(0x80040309);
inline constexpr zn::Status E_ARK_ARCHIVE = zn::statusCode(0x8004030A);
inline constexpr zn::Status E_ARK_DISK_FULL = zn::statusCode(0x8004030B);
inline constexpr zn::Status E_ARK_LOCAL_FILE_FAILED = zn::statusCode(0x8004030C);
/// A file whose move or new name would break references that stand in documents.
inline constexpr zn::Status E_ARK_REFERENCED = zn::statusCode(0x8004030D);
/// What every write of a worker answers when another worker has taken its run over in the meantime.
inline constexpr zn::Status E_ARK_RUN_TAKEN_OVER = zn::statusCode(0x80040320);
/// Two runs that are at work each wait for what the other keeps.
inline constexpr zn::Status E_ARK_RUNS_CROSS = zn::statusCode(0x80040321);

struct StatusText {
    const char* name;
    const char* sentence;
};
/// The name and a sentence for a status of this host; null for a status that it doesn't know.
const StatusText* statusText(zn::Status status);

/// A failure with a sentence for a person.
struct Failure {
    zn::Status status;
    std::string sentence;
};
/// What the exception now being handled means for a person: a `StatusError` keeps its own sentence, an empty one is
/// taken from the table; database errors and exhausted memory get theirs. To be called inside a `catch` block only.
Failure currentFailure();

} // namespace zn::arkin
