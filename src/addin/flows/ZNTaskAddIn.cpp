#include "addin/flows/ZNTaskAddIn.h"

#include "addin/flows/DetailsFlow.h"
#include "addin/flows/Foresight.h"
#include "addin/flows/LaunchFlow.h"
#include "addin/flows/RunFlow.h"
#include "addin/flows/SetupFlow.h"
#include "addin/flows/TrialFlow.h"
#include "addin/macro/PlaceholderCheck.h"
#include "addin/variables/TaskRules.h"
#include "base/Format.h"

namespace zn {

namespace {

constexpr int productYear = 2018;
constexpr int servicePack = 0;
constexpr int buildNumber = 943;
constexpr std::int32_t addInVersion = 2018000943;
constexpr std::int32_t lowestHostMajorVersion = 18;

/// The order is the host's contract: the run command comes last.
constexpr std::int32_t hookedCommands[]
    = {TaskCmdSetup, TaskCmdSetupButton, TaskCmdDetails, TaskCmdLaunch, TaskCmdLaunchButton, TaskCmdRun};

/// The command's code; failures are raised.
Status dispatch(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, ArkSelection& selection,
    const ObjectRef& self)
{
    switch (cmd.command) {
    case TaskCmdRun:
        return runTask(context, vault, cmd, selection);
    case TaskCmdLaunch:
        launchTask(context, vault, cmd, selection, self);
        return S_OK;
    case TaskCmdLaunchButton:
        return launchButton(context, cmd);
    case TaskCmdSetup:
        setupTask(context, vault, cmd, self);
        return S_OK;
    case TaskCmdSetupButton:
        setupButton(context, cmd);
        return S_OK;
    case TaskCmdDetails:
        showDetails(context, vault, cmd, self);
        return S_OK;
    default:
        return S_OK;
    }
}

} // namespace

TaskContext::TaskContext(const Platform& machine, PagesSource windows)
    : platform(machine)
    , fileLogic(machine)
    , session(machine)
    , macroBuilder(machine)
    , pages(std::move(windows))
{
}

CZNTaskAddIn::CZNTaskAddIn(const Platform& platform, PagesSource windows)
    : m_platform(platform)
    , m_context(m_platform, std::move(windows))
{
}

Status CZNTaskAddIn::GetAddInInfo(ArkAddInInfo* info, IArkCmdMgr* commandManager)
{
    if (!info || !commandManager)
        return E_POINTER;
    try {
        info->name = u"ZENTREL Task Add-in";
        info->maker = u"The ZNTaskAddIn maintainers";
        info->description = u"Add-in used to run custom ZENTREL macros\r\n"
            + formatText("Version %d, SP%d, Build %d", productYear, servicePack, buildNumber);
        info->addInVersion = addInVersion;
        info->lowestHostMajorVersion = lowestHostMajorVersion;
        for (const std::int32_t command : hookedCommands)
            commandManager->AddHook(command, 0);
        return S_OK;
    } catch (...) {
        return currentExceptionStatus();
    }
}

Status CZNTaskAddIn::OnCmd(ArkCmd* cmd, ArkSelection* selection)
{
    if (!cmd || !selection)
        return E_POINTER;
    try {
        m_context.pages.setAttended(cmd->attended);
        const Status status = Answer(*cmd, *selection);
        cmd->unspoken += m_context.pages.takeUnspoken();
        return status;
    } catch (...) {
        return currentExceptionStatus();
    }
}

/// The edge of the flows: their failures become a status and a sentence.
Status CZNTaskAddIn::Answer(ArkCmd& cmd, ArkSelection& selection)
{
    try {
        const auto vault = query<IArkVault>(cmd.vault);
        if (!vault)
            return cmd.vault ? E_NOINTERFACE : E_POINTER;
        return dispatch(m_context, vault, cmd, selection, weak_from_this().lock());
    } catch (const StatusError& error) {
        if (*error.what())
            cmd.text = toText(error.what());
        return error.status();
    } catch (...) {
        return currentExceptionStatus();
    }
}

Status CZNTaskAddIn::GetVariables(std::vector<ArkTaskVariable>& variables)
{
    try {
        std::vector<ArkTaskVariable> all;
        for (const TaskVariable& row : taskVariables())
            all.push_back({Text(row.name), row.type, hasCrLf(row)});
        variables = std::move(all);
        return S_OK;
    } catch (...) {
        return currentExceptionStatus();
    }
}

Status CZNTaskAddIn::SettleSelection(
    const ObjectRef& vault, const ObjectRef& run, const ArkSelection& selection, Text& sentence)
{
    try {
        settleSelection(m_context, query<IArkVault>(vault), query<IArkTaskInstance>(run), selection);
        return S_OK;
    } catch (const StatusError& error) {
        sentence = toText(error.what());
        return error.status();
    } catch (...) {
        return currentExceptionStatus();
    }
}

Status CZNTaskAddIn::ForeseeRun(
    const ObjectRef& vault, const ObjectRef& run, const ArkSelection& selection, ArkForesight& foresight)
{
    try {
        foresight = foreseeRun(m_context, query<IArkVault>(vault), query<IArkTaskInstance>(run), selection);
        return S_OK;
    } catch (...) {
        return currentExceptionStatus();
    }
}

Status CZNTaskAddIn::PrepareTrial(
    const ObjectRef& vault, const ObjectRef& task, const Text& path, const Text& folder, Text& sentence)
{
    try {
        prepareTrial(m_platform.registry, query<IArkVault>(vault), query<IArkTaskProperties>(task), path, folder);
        return S_OK;
    } catch (const StatusError& error) {
        sentence = toText(error.what());
        return error.status();
    } catch (...) {
        return currentExceptionStatus();
    }
}

Status CZNTaskAddIn::CheckMacro(const ObjectRef& vault, const ObjectRef& task, const std::vector<Text>& runNames,
    std::vector<ArkMacroWarning>& warnings)
{
    try {
        warnings = checkScript(vault, task, runNames);
        return S_OK;
    } catch (...) {
        return currentExceptionStatus();
    }
}

Status CZNTaskAddIn::SettleVariables(const ObjectRef& vault, const ObjectRef& task, Text& sentence)
{
    try {
        settleVariables(query<IArkVault>(vault), task);
        return S_OK;
    } catch (const StatusError& error) {
        sentence = toText(error.what());
        return error.status();
    } catch (...) {
        return currentExceptionStatus();
    }
}

} // namespace zn
