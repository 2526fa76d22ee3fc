#pragma once

#include "base/Text.h"

#include <memory>
#include <vector>

/// The card variables that a task's output paths name: what `UsedVariables` holds.
namespace zn {

class IArkVault;

/// The names of all card variables, in the vault's order; raises what `readCardVariables` raises.
std::vector<Text> ReadVaultVariables(const std::shared_ptr<IArkVault>& vault);

/// "%name%", as a card variable stands in a path.
Text variablePattern(TextView name);

/// Adds each of `names` that stands in one of the paths as "%name%" to `used`, unless it is there already. What is in
/// `used` stays.
void CollectUsedVariables(TextView pathOne, TextView pathTwo, const std::vector<Text>& names, std::vector<Text>& used);

/// The names separated by commas.
Text JoinVariableNames(const std::vector<Text>& used);

} // namespace zn
