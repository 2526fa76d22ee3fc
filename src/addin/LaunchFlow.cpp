#include "addin/LaunchFlow.h"

namespace zn {

namespace {

constexpr const char16_t* promptForFormat = u"<Prompt the user>";

bool leavesFormatOpen(IArkTaskInstance& instance)
{
    Value value;
    checkStatus(instance.GetValue(u"FileFormat", value));
    const Text* format = value.get<Text>();
    return format && *format == promptForFormat;
}

void cancelLaunch(ArkCmd& cmd, const char16_t* why)
{
    cmd.cancel = -1;
    cmd.text = why;
}

} // namespace

Status launchTask(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, ArkSelection& selection)
{
    const auto instance = query<IArkTaskInstance>(cmd.taskObject);
    if (!instance)
        return cmd.taskObject ? E_NOINTERFACE : E_POINTER;
    if (const Status status = readKind(cmd.taskObject, true, context.kind); failed(status))
        return status;
    Text taskName;
    if (const Status status = instance->GetTaskName(taskName); failed(status))
        return status;

    if (selection.empty())
        cancelLaunch(cmd, u"Nothing is selected. Name the files or folders that the task is to work on.");
    else if (context.kind == TaskKind::Conversion && leavesFormatOpen(*instance))
        cancelLaunch(cmd, u"The task leaves the output format to the user, who cannot be asked here. Set FileFormat.");
    if (cmd.cancel != 0)
        return S_OK;

    if (const Status status = context.fileLogic.Initialize(vault, context.kind, false); failed(status))
        return status;
    SelectionRecords records;
    context.fileLogic.ExpandSelection(*vault, instance, selection, records, false);
    return context.fileLogic.WriteList(instance, TaskKind::Unknown, &records);
}

Status launchButton(TaskContext&, ArkCmd& cmd)
{
    if (cmd.text != u"OK")
        return S_OK;
    return query<IArkTaskInstance>(cmd.taskObject) ? S_OK : E_POINTER;
}

} // namespace zn
