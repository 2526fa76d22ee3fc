#include "addin/variables/CardVariables.h"

#include "contracts/host/ArkVault.h"

namespace zn {

std::vector<CardVariable> readCardVariables(const std::shared_ptr<IArkVault>& vault)
{
    if (!vault)
        throw StatusError(E_POINTER);
    ObjectRef utility;
    checkStatus(vault->CreateUtility(ArkUtil_VariableMgr, utility));
    const auto manager = query<IArkVariableMgr>(utility);
    if (!manager)
        throw StatusError(E_NOINTERFACE, "The vault doesn't list its card variables.");
    std::shared_ptr<IArkPosition> position;
    checkStatus(manager->GetFirstVariablePosition(position));

    std::vector<CardVariable> variables;
    bool isNull = false;
    while (position && position->IsNull(isNull) == S_FALSE) {
        std::shared_ptr<IArkVariable> variable;
        if (failed(manager->GetNextVariable(*position, variable)) || !variable)
            break;
        CardVariable& row = variables.emplace_back();
        checkStatus(variable->GetName(row.name));
        checkStatus(variable->GetId(row.id));
    }
    return variables;
}

} // namespace zn
