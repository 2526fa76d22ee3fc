#include "addin/variables/UsedVariables.h"

#include "addin/variables/CardVariables.h"

#include <algorithm>

namespace zn {

std::vector<Text> ReadVaultVariables(const std::shared_ptr<IArkVault>& vault)
{
    std::vector<Text> names;
    for (CardVariable& variable : readCardVariables(vault))
        names.push_back(std::move(variable.name));
    return names;
}

Text variablePattern(TextView name) { return Text(u"%").append(name) + u'%'; }

void CollectUsedVariables(TextView pathOne, TextView pathTwo, const std::vector<Text>& names, std::vector<Text>& used)
{
    for (const Text& name : names) {
        const Text pattern = variablePattern(name);
        const bool occurs = pathOne.find(pattern) != TextView::npos || pathTwo.find(pattern) != TextView::npos;
        if (occurs && std::find(used.begin(), used.end(), name) == used.end())
            used.push_back(name);
    }
}

Text JoinVariableNames(const std::vector<Text>& used)
{
    Text joined;
    for (const Text& name : used)
        joined += name + u',';
    if (!joined.empty())
        joined.pop_back();
    return joined;
}

} // namespace zn
