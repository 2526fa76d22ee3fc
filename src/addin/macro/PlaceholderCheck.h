#pragma once

#include "contracts/host/ArkMacroCheck.h"

namespace zn {

/// What the placeholders of a template may name, each as it is written.
struct PlaceholderNames {
    std::vector<Text> run;  ///< of the host's second lookup, without regard to case
    std::vector<Text> task; ///< variables that the task has beside those of the table
    std::vector<Text> card; ///< card variables of the vault
    std::vector<Text> used; ///< card variables whose values a run puts in
};

/// The warnings of `IArkMacroCheck` for a template.
std::vector<ArkMacroWarning> checkPlaceholders(TextView source, const PlaceholderNames& names);

/// The same for a task's script, with what the task and the vault know. Failures of the host are raised.
std::vector<ArkMacroWarning> checkScript(
    const ObjectRef& vault, const ObjectRef& task, const std::vector<Text>& runNames);

} // namespace zn
