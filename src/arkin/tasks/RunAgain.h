#pragma once

#include "arkin/tasks/RunStore.h"
#include "arkin/tasks/TaskHost.h"

namespace zn::arkin {

struct AgainWish {
    /// Only the files of which an output failed, or that were skipped.
    bool onlyFailed = false;
    /// The task's settings and template as they are now, with what the launch was answered then; else all as it was.
    bool currentSettings = false;
    /// Queue it although it can't go well; see LaunchCheck.h.
    bool anyway = false;
};

/// The files and folders that the run was launched on, or those of its files that failed or were skipped. Of these a
/// version that the launch named stays, and all others are worked on in their latest version. What the vault doesn't
/// have any more is left out of the failed ones. Raises `StatusError` E_INVALIDARG with a sentence if there is nothing
/// to do again.
zn::ArkSelection selectionAgain(const TaskHost& host, const RunInfo& run, bool onlyFailed);

/// Puts a new run of the same task into the queue. Asks nobody. All failures are `StatusError`s with a sentence, among
/// them `CannotRun`; nothing is stored then.
RunInfo launchAgain(const TaskHost& host, std::int32_t runId, const AgainWish& wish);

} // namespace zn::arkin
