#pragma once

#include "base/Object.h"
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

} // namespace zn
