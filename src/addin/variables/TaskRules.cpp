#include "addin/variables/TaskRules.h"

#include "addin/variables/OutputFormats.h"
#include "addin/variables/SheetMetalBits.h"
#include "addin/variables/TaskVariables.h"
#include "addin/variables/UsedVariables.h"

namespace zn {

namespace {

void requireFormat(const ObjectRef& task)
{
    const Text format = readText(task, u"FileFormat").value_or(Text());
    if (format.empty() || findOutputFormat(format))
        return;
    std::string list;
    for (const OutputFormat& each : outputFormats())
        list += (list.empty() ? "" : ", ") + ("\"" + toUtf8(each.label) + "\"");
    throw StatusError(
        E_INVALIDARG, "The variable 'FileFormat' doesn't take \"" + toUtf8(format) + "\": one of " + list + ".");
}

void deriveUsedVariables(const std::shared_ptr<IArkVault>& vault, const ObjectRef& task)
{
    const auto path = [&](TextView name) { return readText(task, name).value_or(Text()); };
    std::vector<Text> used;
    CollectUsedVariables(path(u"OutputPath"), path(u"OutputPath2"), ReadVaultVariables(vault), used);
    writeVariable(task, u"UsedVariables", JoinVariableNames(used));
}

/// What isn't there counts as on the page of a new task.
std::int32_t settingOf(const ObjectRef& task, TextView name)
{
    if (const auto stored = readInteger(task, name))
        return *stored;
    const TaskVariable* row = findTaskVariable(name);
    return row ? valueOf(row->initial).toInt32() : 0;
}

} // namespace

void settleVariables(const std::shared_ptr<IArkVault>& vault, const ObjectRef& task)
{
    if (readInteger(task, kindVariable) != static_cast<std::int32_t>(TaskKind::Conversion))
        return;
    requireFormat(task);
    deriveUsedVariables(vault, task);
    writeVariable(task, u"SheetMetalOptions", sheetMetalBits([&](TextView name) { return settingOf(task, name); }));
}

} // namespace zn
