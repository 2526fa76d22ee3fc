#pragma once

#include "arkin/tasks/RunStore.h"

#include <soci/soci.h>

namespace zn::arkin {

/// All columns of a run; a condition follows.
inline constexpr const char* selectRuns
    = "SELECT id, guid, task_name, add_in, user_name, state, claim, owner_host, owner_process, owner_mark, "
      "heartbeat_at, progress_total, progress_position, progress_text, result_code, result_text, launched_at, "
      "started_at, ended_at, outputs_expected, outputs_missing, file_limit, launch_note, only_changed, "
      "keeps_identical FROM task_runs "
      "WHERE ";

} // namespace zn::arkin

namespace soci {

/// Lets a statement read a row of `selectRuns` straight into a `RunInfo`.
template <> struct type_conversion<zn::arkin::RunInfo> {
    using base_type = values;
    static void from_base(const values& row, indicator, zn::arkin::RunInfo& run);
};

} // namespace soci
