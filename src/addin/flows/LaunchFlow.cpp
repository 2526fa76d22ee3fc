#include "addin/flows/LaunchFlow.h"

#include "addin/installation/FormatLabels.h"
#include "addin/variables/LaunchFreedom.h"

namespace zn {

namespace {

struct Launch {
    TaskContext& context;
    const std::shared_ptr<IArkVault>& vault;
    const std::shared_ptr<IArkTaskInstance>& instance;
    ArkCmd& cmd;
    ArkSelection& selection;

    /// Whether there is a window in which dialogs could be made, be they seen or not.
    bool canAsk() const { return cmd.parentWindow != 0; }
    PageSetting setting() const { return {vault, cmd.taskObject, context.kind, cmd.parentWindow}; }
};

void cancelLaunch(ArkCmd& cmd, const Text& why)
{
    cmd.cancel = -1;
    cmd.text = why;
}

void askSelection(Launch& launch, const Text& taskName)
{
    if (!launch.selection.empty())
        return;
    if (!launch.canAsk() || !launch.cmd.attended)
        return cancelLaunch(launch.cmd, u"Nothing is selected. Name the files or folders that the task is to work on.");
    const bool picked = launch.context.pages.factory().askSelection(launch.setting(), taskName, launch.selection);
    launch.cmd.cancel = picked ? 0 : -1;
}

/// Writes `__selection_list` and answers which kinds of files the selection holds.
std::int32_t writeSelection(Launch& launch)
{
    TaskContext& context = launch.context;
    context.fileLogic.Initialize(launch.vault, context.kind, false);
    SelectionRecords records;
    context.fileLogic.ExpandSelection(*launch.vault, launch.instance, launch.selection, records, false);
    std::int32_t kinds = 0;
    for (const auto& record : records)
        kinds |= selectedKind(*record);
    context.fileLogic.WriteList(launch.instance, TaskKind::Unknown, &records);
    return kinds;
}

/// Writes the selection, and cancels the launch of a conversion that leaves something to a user who isn't there.
void requireNoQuestion(Launch& launch)
{
    const std::int32_t kinds = writeSelection(launch);
    const auto findFormat = [&](TextView label) { return findFormatInAnyLanguage(launch.context.platform, label); };
    const Text open = openQuestions(readLaunchFreedom(launch.cmd.taskObject, findFormat), kinds);
    if (!open.empty())
        cancelLaunch(launch.cmd,
            u"The task leaves settings to the user, who cannot be asked here: " + open + u". Settle them in the task.");
}

/// Hands the page to the host if it leaves the user anything to decide.
void prepareConversionPage(Launch& launch, const ObjectRef& self)
{
    auto& page = launch.context.pages.conversionSettings;
    if (page)
        launch.context.pages.earlierLaunches.push_back(std::move(page));
    page = launch.context.pages.factory().makeConversionPage(launch.setting(), true);
    const std::int32_t kinds = writeSelection(launch);
    page->loadForLaunch(launch.cmd.taskObject, kinds);
    launch.context.openLaunch.reset();
    if (page->isPageNeeded()) {
        if (!launch.cmd.attended)
            launch.context.openLaunch = {readLaunchFreedom(launch.cmd.taskObject), kinds};
        launch.cmd.parentWindow = page->window();
        launch.cmd.text = textOf(launch.context.pages.factory(), titles::conversionSettings);
        launch.cmd.taskObject = self;
    }
}

void askPrint(Launch& launch)
{
    const bool show = readBoolean(launch.cmd.taskObject, u"__printer_showprintdlg").value_or(true);
    if (show && !launch.canAsk())
        return cancelLaunch(launch.cmd,
            u"The task shows the print dialog at its launch, and there is no window to show it in. Set "
            u"__printer_showprintdlg to false to print without it.");
    const bool isSeen = show && launch.cmd.attended;
    PageFactory& factory = launch.context.pages.factory();
    if (!factory.showPrintDialog(launch.vault, &launch.cmd, launch.selection, isSeen))
        return cancelLaunch(launch.cmd, factory.takeUnspoken());
    if (show && !isSeen)
        launch.cmd.unspoken += u"Nobody was asked, so the run prints what the print dialog ticks first.";
}

} // namespace

void launchTask(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, ArkSelection& selection,
    const ObjectRef& self)
{
    const auto instance = query<IArkTaskInstance>(cmd.taskObject);
    if (!instance)
        throw StatusError(cmd.taskObject ? E_NOINTERFACE : E_POINTER);
    context.kind = readKind(cmd.taskObject, true);
    Text taskName;
    checkStatus(instance->GetTaskName(taskName));

    Launch launch{context, vault, instance, cmd, selection};
    askSelection(launch, taskName);
    if (context.kind == TaskKind::Conversion && !launch.canAsk()) {
        if (cmd.cancel == 0)
            requireNoQuestion(launch);
        return;
    }
    if (context.kind == TaskKind::Conversion) {
        // Also after a cancelled selection: the page is there for whoever asks the add-in object next.
        prepareConversionPage(launch, self);
    } else if (context.kind == TaskKind::Printing && cmd.cancel == 0) {
        askPrint(launch);
    }
    if (cmd.cancel == 0)
        writeSelection(launch);
}

void settleSelection(TaskContext& context, const std::shared_ptr<IArkVault>& vault,
    const std::shared_ptr<IArkTaskInstance>& instance, const ArkSelection& selection)
{
    if (!vault || !instance)
        throw StatusError(E_POINTER);
    context.kind = readKind(instance, true);
    ArkCmd none;
    ArkSelection files = selection;
    Launch launch{context, vault, instance, none, files};
    writeSelection(launch);
}

Status launchButton(TaskContext& context, ArkCmd& cmd)
{
    if (cmd.text != u"OK")
        return S_OK;
    if (!query<IArkTaskInstance>(cmd.taskObject))
        throw StatusError(E_POINTER);
    if (context.kind != TaskKind::Conversion)
        return S_OK;
    if (!context.pages.conversionSettings)
        throw StatusError(E_UNEXPECTED);
    if (!context.pages.conversionSettings->save(cmd.taskObject))
        return S_FALSE;
    if (context.openLaunch)
        cmd.unspoken += u"Nobody was asked, so the run takes what the launch dialog shows first: "
            + answersOf(cmd.taskObject, context.openLaunch->freedom, context.openLaunch->kinds) + u".";
    return S_OK;
}

} // namespace zn
