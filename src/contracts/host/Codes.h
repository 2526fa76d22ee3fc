#pragma once

#include "base/Status.h"

#include <cstdint>

/// Numbers that the vault host and the add-in share.
namespace zn {

// Statuses of the vault host.
/// No right to do this with the file or folder.
inline constexpr Status E_ARK_PERMISSION_DENIED = statusCode(0x80040203);
/// A file of that name stands in the folder.
inline constexpr Status E_ARK_NAME_ALREADY_EXISTS = statusCode(0x8004020F);
/// There is no window to ask a person in.
inline constexpr Status E_ARK_NO_DESKTOP = statusCode(0x8004030D);

/// The host's task commands.
enum TaskCommand : std::int32_t {
    TaskCmdSetup = 40,
    TaskCmdSetupButton = 41,
    TaskCmdDetails = 42,
    TaskCmdRun = 43,
    TaskCmdLaunch = 44,
    TaskCmdLaunchButton = 45,
};

/// A task's kind, stored in its variable `__type`. A missing variable means general.
enum class TaskKind : std::int32_t {
    Unknown = 0,
    Conversion = 1,
    Printing = 2,
    General = 3,
};

/// A run's states as the host keeps them.
enum class TaskRunState : std::int32_t {
    Queued = 1,          ///< waits for a worker
    Running = 3,         ///< written by the host at the start, by the add-in after a resume
    Suspended = 5,       ///< written by the add-in after a suspend request
    CancelRequested = 6, ///< written by the host
    Finished = 7,        ///< no errors; written by the add-in
    Cancelled = 8,       ///< a further end state of the host; the add-in only reads it
    FinishedWithErrors = 9,
    SuspendRequested = 10,
    ResumeRequested = 11,
};

/// Kinds of utility objects that a vault makes.
enum ArkUtility : std::int32_t {
    ArkUtil_BatchCardUpdate = 2,
    ArkUtil_BatchUnlock = 6,
    ArkUtil_BatchReference = 8,
    ArkUtil_VariableMgr = 9,
    ArkUtil_BatchFetch = 12,
    ArkUtil_BatchQuery = 13,
    ArkUtil_BatchList = 14,
    ArkUtil_BatchAdd = 16,
};

} // namespace zn
