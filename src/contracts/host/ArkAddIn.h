#pragma once

#include "base/Object.h"
#include "contracts/host/ArkTask.h"
#include "contracts/host/Codes.h"
#include "contracts/host/Records.h"

namespace zn {

/// Where an add-in says which commands it wants.
class IArkCmdMgr {
public:
    virtual ~IArkCmdMgr() = default;
    virtual Status AddHook(std::int32_t command, std::int32_t flags) = 0;
};

/// What a host finds in an add-in's object; a module without it is refused.
class IArkAddIn5 : public Object {
public:
    virtual Status GetAddInInfo(ArkAddInInfo* info, IArkCmdMgr* commandManager) = 0;
    /// Runs one command to its end on the calling thread. `selection` is what the user selected.
    virtual Status OnCmd(ArkCmd* cmd, ArkSelection* selection) = 0;
};

/// What an add-in's object may be, too: the rules of its tasks' variables, for a host that lets people write them
/// without the property pages.
class IArkTaskVariables {
public:
    virtual ~IArkTaskVariables() = default;
    /// The variables that a task of any kind may have.
    virtual Status GetVariables(std::vector<ArkTaskVariable>& variables) = 0;
    /// After variables of a definition were written: refuses a value that no page would store, and writes the variables
    /// that follow from others. A failure may leave a sentence.
    virtual Status SettleVariables(const ObjectRef& vault, const ObjectRef& task, Text& sentence) = 0;
};

/// What can be told of a run before anybody has worked on it.
struct ArkForesight {
    std::vector<Text> obstacles;         ///< why it can't give what it should, a sentence each with what to do
    std::vector<ArkOutputNames> outputs; ///< what it is going to write, as far as that can be told
};

/// What an add-in's object may be, too: what a host wants of a launch beside the commands, with nobody to ask.
class IArkTaskLaunch {
public:
    virtual ~IArkTaskLaunch() = default;
    /// Writes to the run what a launch settles of its files, and nothing else: its settings stand already. A failure
    /// may leave a sentence.
    virtual Status SettleSelection(
        const ObjectRef& vault, const ObjectRef& run, const ArkSelection& selection, Text& sentence)
        = 0;
    /// Looks at a run whose settings stand, without starting anything. Writes nothing.
    virtual Status ForeseeRun(
        const ObjectRef& vault, const ObjectRef& run, const ArkSelection& selection, ArkForesight& foresight)
        = 0;
};

/// What an add-in's object may be, too: how its tasks are tried on a copy of a vault, so that people see what one does
/// before it does it.
class IArkTaskTrial {
public:
    virtual ~IArkTaskTrial() = default;
    /// Before the launch of a trial. The vault, the task (an `IArkTaskProperties`) and this machine's registry are
    /// copies that nobody else has, and may be changed for it. Sees to it that the task's run on the file at `path`
    /// writes what it would write outside of the vault below `folder` instead, which is there, and that its macros
    /// reach nothing else. A task for which that can't be is refused; a failure may leave a sentence.
    virtual Status PrepareTrial(
        const ObjectRef& vault, const ObjectRef& task, const Text& path, const Text& folder, Text& sentence)
        = 0;
};

} // namespace zn
