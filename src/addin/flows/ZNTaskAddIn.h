#pragma once

#include "addin/files/FileLogic.h"
#include "addin/flows/TaskPages.h"
#include "addin/macro/MacroBuilder.h"
#include "addin/session/ZNManager.h"
#include "addin/variables/LaunchFreedom.h"
#include "addin/variables/TaskVariables.h"
#include "contracts/host/ArkAddIn.h"
#include "contracts/host/ArkMacroCheck.h"
#include "contracts/host/ArkTask.h"
#include "contracts/host/ArkVault.h"
#include "platform/Platform.h"

namespace zn {

/// What the flows of a task share. All of it lives as long as the add-in object, and nothing in it but the cached
/// kind may be relied on from one command to the next; the kind is read again at the start of each flow.
/// Torn down in the order pages, macro builder, session, file logic.
/// What a launch left to a user who isn't there.
struct OpenLaunch {
    LaunchFreedom freedom;
    std::int32_t kinds = 0; ///< of the selected files
};

struct TaskContext {
    TaskContext(const Platform& machine, PagesSource windows);

    const Platform& platform;
    TaskKind kind = TaskKind::Unknown;
    FileLogic fileLogic;
    ZNManager session;
    MacroBuilder macroBuilder;
    TaskPages pages;
    std::optional<OpenLaunch> openLaunch;
};

/// The one object that the vault host creates from this module: says who it is and which commands it wants, and
/// routes every command to its flow. Used by one thread at a time. No exception leaves it.
class CZNTaskAddIn : public IArkAddIn5,
                     public IArkTaskVariables,
                     public IArkTaskLaunch,
                     public IArkTaskTrial,
                     public IArkMacroCheck,
                     public std::enable_shared_from_this<CZNTaskAddIn> {
public:
    /// `platform` outlives the object. Without `windows` the commands that need a page answer `E_NOTIMPL`.
    explicit CZNTaskAddIn(const Platform& platform, PagesSource windows = {});

    /// `E_POINTER` if an argument is missing.
    Status GetAddInInfo(ArkAddInInfo* info, IArkCmdMgr* commandManager) override;
    /// `E_POINTER` if an argument is missing; the failure of asking the vault for its interface; success for a
    /// command that isn't the add-in's. A failure with a sentence of its own leaves it in `text`; what message boxes
    /// would have said where nobody sees them is left in `unspoken`. The object itself
    /// is the callback of its pages, so it must be owned by a shared pointer for the commands that hand pages over.
    Status OnCmd(ArkCmd* cmd, ArkSelection* selection) override;

    Status GetVariables(std::vector<ArkTaskVariable>& variables) override;
    Status SettleVariables(const ObjectRef& vault, const ObjectRef& task, Text& sentence) override;
    Status SettleSelection(
        const ObjectRef& vault, const ObjectRef& run, const ArkSelection& selection, Text& sentence) override;
    Status ForeseeRun(
        const ObjectRef& vault, const ObjectRef& run, const ArkSelection& selection, ArkForesight& foresight) override;
    Status PrepareTrial(
        const ObjectRef& vault, const ObjectRef& task, const Text& path, const Text& folder, Text& sentence) override;
    Status CheckMacro(const ObjectRef& vault, const ObjectRef& task, const std::vector<Text>& runNames,
        std::vector<ArkMacroWarning>& warnings) override;

private:
    Status Answer(ArkCmd& cmd, ArkSelection& selection);

    Platform m_platform;
    TaskContext m_context;
};

} // namespace zn
