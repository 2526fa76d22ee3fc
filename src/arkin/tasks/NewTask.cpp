#include "arkin/tasks/NewTask.h"

#include "addin/variables/OutputFormats.h"

#include <bitset>

namespace arkin {

using zn::TaskKind;
using zn::Text;
using zn::toUtf8;
using zn::Value;

namespace {

bool isOn(const Variables& variables, const char16_t* name)
{
    const auto found = variables.find(name);
    return found != variables.end() && found->second.toInt32() != 0;
}

Text textOf(const Variables& variables, const char16_t* name)
{
    const auto found = variables.find(name);
    return found == variables.end() ? Text() : found->second.toText();
}

/// The options argument of the sheet metal export: one bit a setting, some of them only with the geometry.
std::int32_t sheetMetalOptions(const Variables& variables)
{
    const auto on = [&](const char16_t* name) { return isOn(variables, name); };
    const bool geometry = on(u"SheetMetalGeometry");
    std::bitset<12> bits;
    bits[0] = geometry;
    bits[1] = geometry && on(u"SheetMetalHiddenEdges");
    bits[2] = on(u"SheetMetalBendLines");
    bits[3] = on(u"SheetMetalSketches");
    bits[4] = !on(u"SheetMetalMergeCoplanar");
    bits[5] = geometry && on(u"SheetMetalLibraryFeatures");
    bits[6] = geometry && on(u"SheetMetalFormingTools");
    bits[11] = on(u"SheetMetalBoundingBox");
    return static_cast<std::int32_t>(bits.to_ulong());
}

Text usedVariables(const Variables& variables, const std::vector<Text>& vaultVariables)
{
    const auto first = textOf(variables, u"OutputPath");
    const auto second = textOf(variables, u"OutputPath2");
    Text names;
    for (const auto& name : vaultVariables) {
        const auto pattern = u"%" + name + u"%";
        if (first.find(pattern) != Text::npos || second.find(pattern) != Text::npos)
            names += (names.empty() ? u"" : u",") + name;
    }
    return names;
}

} // namespace

void deriveVariables(Variables& variables, TaskKind kind, const std::vector<Text>& vaultVariables)
{
    if (kind != TaskKind::Conversion)
        return;
    variables[u"UsedVariables"] = usedVariables(variables, vaultVariables);
    variables[u"SheetMetalOptions"] = sheetMetalOptions(variables);
}

void requireFormat(const Variables& variables, TaskKind kind)
{
    const auto format = textOf(variables, u"FileFormat");
    if (kind != TaskKind::Conversion || format.empty() || zn::findOutputFormat(format))
        return;
    std::string list;
    for (const auto& each : zn::outputFormats())
        list += (list.empty() ? "" : ", ") + ("\"" + toUtf8(each.label) + "\"");
    throw zn::StatusError(
        zn::E_INVALIDARG, "The variable 'FileFormat' doesn't take \"" + toUtf8(format) + "\": one of " + list + ".");
}

TaskDefinition startTask(const TaskRequest& request)
{
    TaskDefinition task;
    task.name = request.name;
    if (request.file.menuDisplay)
        task.variables[u"__menucmd_display"] = Value(*request.file.menuDisplay);
    task.variables[u"__script"] = Value(request.script);
    for (const auto* given : {&request.file.variables, &request.settings})
        for (const auto& [name, value] : *given)
            task.variables[name] = value;
    task.variables[u"__type"] = Value(static_cast<std::int32_t>(request.kind));
    requireFormat(task.variables, request.kind);
    return task;
}

void settleTask(TaskDefinition& task, const TaskRequest& request, const std::vector<Text>& vaultVariables)
{
    for (const auto& [name, value] : startTask(request).variables)
        task.variables[name] = value;
    for (auto& entry : task.menu) {
        entry.menuText = request.file.menuText.value_or(entry.menuText);
        entry.statusText = request.file.menuDescription.value_or(entry.statusText);
    }
    deriveVariables(task.variables, request.kind, vaultVariables);
}

} // namespace arkin
