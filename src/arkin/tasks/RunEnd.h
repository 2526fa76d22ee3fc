#pragma once

#include "arkin/tasks/RunStore.h"

namespace zn::arkin {

// What becomes of runs that no worker holds. All of it inside a transaction, in which the check-outs of the run are
// given back, too: a run's files never stay with a run that nobody works on.

/// The claim counts on, so that a worker taken for dead which comes back can neither report nor write to the vault.
/// `state` is Queued, or Suspended for a run that waits for a person's word.
void giveBackToWaiting(RunStore& store, const RunInfo& run, zn::TaskRunState state);
/// Likewise; the run ends in the state, with the sentence as its text.
void endUnheld(
    RunStore& store, const RunInfo& run, zn::TaskRunState state, const std::string& sentence, std::int64_t now);
/// Gives the check-outs back of all runs that wait, have ended or are gone, and of the run `alsoOf`.
void giveBackOfRuns(Database& database, std::int32_t alsoOf = 0);

/// The runs that are taken by a process of this host which is gone.
std::vector<RunInfo> workersGone(RunStore& store);

} // namespace zn::arkin
