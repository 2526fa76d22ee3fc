#pragma once

#include "arkin/tasks/RunStore.h"

#include <QString>

namespace zn::arkin {

/// A run's state in the language of the windows; with "3 of 40 failed" behind it where outputs are missing.
QString runStateText(const RunInfo& run, std::int64_t now);

/// What became of an output, in the language of the windows.
QString outcomeWord(zn::FileOutcome outcome);

/// "12 of 40"; empty for a run that doesn't count.
QString progressText(const RunInfo& run);

/// "2 s", "3 min 05 s", "1 h 02 min".
QString spanText(std::int64_t seconds);

/// How long the run has worked, and at its present pace how long it still will: "2 min 10 s, about 40 s left". Empty
/// for a run that hasn't begun.
QString workTimeText(const RunInfo& run, std::int64_t now);

/// Unix seconds in the form of the desktop; empty for 0.
QString momentText(std::int64_t at);

} // namespace zn::arkin
