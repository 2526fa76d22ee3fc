#include "addin/flows/LaunchFlow.h"

#include "addin/flows/LaunchQuestions.h"
#include "base/Paths.h"

namespace zn {

namespace {

/// Bits of the mask that tells a conversion page which of its parts apply.
constexpr std::int32_t assemblySelected = 4;
constexpr std::int32_t partSelected = 8;
constexpr std::int32_t otherSelected = 16;

struct Launch {
    TaskContext& context;
    const std::shared_ptr<IArkVault>& vault;
    const std::shared_ptr<IArkTaskInstance>& instance;
    ArkCmd& cmd;
    ArkSelection& selection;

    bool canAsk() const { return cmd.parentWindow != 0; }
    PageSetting setting() const { return {vault, cmd.taskObject, context.kind, cmd.parentWindow}; }
};

void cancelLaunch(ArkCmd& cmd, const Text& why)
{
    cmd.cancel = -1;
    cmd.text = why;
}

void settleSelection(Launch& launch, const Text& taskName)
{
    if (!launch.selection.empty())
        return;
    if (!launch.canAsk())
        return cancelLaunch(launch.cmd, u"Nothing is selected. Name the files or folders that the task is to work on.");
    const bool picked = launch.context.pages.factory().askSelection(launch.setting(), taskName, launch.selection);
    launch.cmd.cancel = picked ? 0 : -1;
}

std::int32_t kindBit(const OutputRecord& record)
{
    if (!record.isCadFile)
        return otherSelected;
    const Text extension = toLower(pathExtension(record.path));
    return extension == u"zenasm" ? assemblySelected : extension == u"zenprt" ? partSelected : otherSelected;
}

/// Writes `__selection_list` and answers which kinds of files the selection holds.
Status writeSelection(Launch& launch, std::int32_t& kinds)
{
    TaskContext& context = launch.context;
    if (const Status status = context.fileLogic.Initialize(launch.vault, context.kind, false); failed(status))
        return status;
    SelectionRecords records;
    context.fileLogic.ExpandSelection(*launch.vault, launch.instance, launch.selection, records, false);
    kinds = 0;
    for (const auto& record : records)
        kinds |= kindBit(*record);
    return context.fileLogic.WriteList(launch.instance, TaskKind::Unknown, &records);
}

/// Writes the selection, and cancels the launch of a conversion that leaves something to a user who isn't there.
Status requireNoQuestion(Launch& launch)
{
    std::int32_t kinds = 0;
    if (const Status status = writeSelection(launch, kinds); failed(status))
        return status;
    const Text open = openQuestions(launch.cmd.taskObject, kinds);
    if (!open.empty())
        cancelLaunch(launch.cmd,
            u"The task leaves settings to the user, who cannot be asked here: " + open + u". Settle them in the task.");
    return S_OK;
}

/// Hands the page to the host if it leaves the user anything to decide.
Status prepareConversionPage(Launch& launch, const ObjectRef& self)
{
    auto& page = launch.context.pages.conversionSettings;
    if (page)
        launch.context.pages.earlierLaunches.push_back(std::move(page));
    page = launch.context.pages.factory().makeConversionPage(launch.setting(), true);
    std::int32_t kinds = 0;
    if (const Status status = writeSelection(launch, kinds); failed(status))
        return status;
    page->loadForLaunch(launch.cmd.taskObject, kinds);
    if (page->isPageNeeded()) {
        launch.cmd.parentWindow = page->window();
        launch.cmd.text = textOf(launch.context.pages.factory(), titles::conversionSettings);
        launch.cmd.taskObject = self;
    }
    return S_OK;
}

void askPrint(Launch& launch)
{
    const bool show = readBoolean(launch.cmd.taskObject, u"__printer_showprintdlg").value_or(true);
    if (show && !launch.canAsk())
        return cancelLaunch(launch.cmd,
            u"The task shows the print dialog at its launch, and there is no window to show it in. Set "
            u"__printer_showprintdlg to false to print without it.");
    PageFactory& factory = launch.context.pages.factory();
    if (!factory.showPrintDialog(launch.vault, &launch.cmd, launch.selection, show))
        cancelLaunch(launch.cmd, factory.takeUnspoken());
}

} // namespace

Status launchTask(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, ArkSelection& selection,
    const ObjectRef& self)
{
    const auto instance = query<IArkTaskInstance>(cmd.taskObject);
    if (!instance)
        return cmd.taskObject ? E_NOINTERFACE : E_POINTER;
    if (const Status status = readKind(cmd.taskObject, true, context.kind); failed(status))
        return status;
    Text taskName;
    if (const Status status = instance->GetTaskName(taskName); failed(status))
        return status;

    Launch launch{context, vault, instance, cmd, selection};
    settleSelection(launch, taskName);
    if (context.kind == TaskKind::Conversion && !launch.canAsk())
        return cmd.cancel == 0 ? requireNoQuestion(launch) : S_OK;
    if (context.kind == TaskKind::Conversion) {
        // Also after a cancelled selection: the page is there for whoever asks the add-in object next.
        if (const Status status = prepareConversionPage(launch, self); failed(status))
            return status;
    } else if (context.kind == TaskKind::Printing && cmd.cancel == 0) {
        askPrint(launch);
    }
    if (cmd.cancel != 0)
        return S_OK;
    std::int32_t kinds = 0;
    return writeSelection(launch, kinds);
}

Status launchButton(TaskContext& context, ArkCmd& cmd)
{
    if (cmd.text != u"OK")
        return S_OK;
    if (!query<IArkTaskInstance>(cmd.taskObject))
        return E_POINTER;
    if (context.kind != TaskKind::Conversion)
        return S_OK;
    if (!context.pages.conversionSettings)
        return E_UNEXPECTED;
    return context.pages.conversionSettings->save(cmd.taskObject);
}

} // namespace zn
