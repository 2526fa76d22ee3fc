#include "arkin/tasks/RunRow.h"

namespace soci {

void type_conversion<zn::arkin::RunInfo>::from_base(const values& row, indicator, zn::arkin::RunInfo& run)
{
    const auto text = [&](const char* column) { return zn::toText(row.get<std::string>(column)); };
    run.id = row.get<int>("id");
    run.guid = text("guid");
    run.taskName = text("task_name");
    run.addIn = text("add_in");
    run.userName = text("user_name");
    run.state = static_cast<zn::TaskRunState>(row.get<int>("state"));
    run.claim = row.get<int>("claim");
    run.owner.host = text("owner_host");
    run.owner.process = row.get<int>("owner_process");
    run.owner.start = row.get<long long>("owner_mark");
    run.heartbeatAt = row.get<long long>("heartbeat_at");
    run.progressTotal = row.get<int>("progress_total");
    run.progressPosition = row.get<int>("progress_position");
    run.progressText = text("progress_text");
    run.resultCode = row.get<int>("result_code");
    run.resultText = text("result_text");
    run.launchedAt = row.get<long long>("launched_at");
    run.launchNote = text("launch_note");
    run.startedAt = row.get<long long>("started_at");
    run.endedAt = row.get<long long>("ended_at");
    run.outputsExpected = row.get<int>("outputs_expected");
    run.outputsMissing = row.get<int>("outputs_missing");
    run.fileLimit = row.get<int>("file_limit");
    run.keepsIdentical = row.get<int>("keeps_identical") != 0;
    run.onlyChanged = row.get<int>("only_changed") != 0;
}

} // namespace soci
