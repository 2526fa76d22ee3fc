#pragma once

#include "arkin/tasks/RunStore.h"

namespace zn::arkin {

// What a person asks of a run, from any process. Each is one transaction, returns the run as it stands afterwards, and
// raises `StatusError` E_INVALIDARG with a sentence when the run's state doesn't allow it. A request that stands
// already is a success.

/// A waiting run, and one whose worker died, are cancelled at once; a working one is stopped within its file.
RunInfo requestCancel(RunStore& store, std::int32_t runId, std::int64_t now);
/// A waiting run is passed over by the workers; a working one waits before its next file.
RunInfo requestSuspend(RunStore& store, std::int32_t runId, std::int64_t now);
/// Undoes a suspension. A run whose worker died goes back to the queue.
RunInfo requestResume(RunStore& store, std::int32_t runId, std::int64_t now);

} // namespace zn::arkin
