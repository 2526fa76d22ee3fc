#include "arkin/tasks/NewTask.h"

#include "addin/OutputFormats.h"
#include "addin/TaskVariables.h"

#include <algorithm>
#include <bitset>

namespace arkin {

using zn::TaskKind;
using zn::Text;
using zn::TextView;
using zn::toUtf8;
using zn::Value;

namespace {

struct KindRow {
    TaskKind kind;
    const char16_t* menuText;
    const char16_t* description;
};

constexpr KindRow kinds[] = {
    {TaskKind::Conversion, u"Convert Files", u"Converts ZENTREL files from one format to another"},
    {TaskKind::Printing, u"Print Files", u"Prints selected documents with ZENTREL"},
    {TaskKind::General, u"Execute Script", u"Executes script on selected documents"},
};

/// Bits that let the user change a setting at the launch. A task from a file is settled: nobody is asked.
struct FreedomRow {
    const char16_t* name;
    std::int32_t bits;
};

constexpr FreedomRow freedoms[] = {
    {u"SourceRefs", 4},
    {u"OutputConfs", 1},
    {u"FileConfs", 1},
    {u"OutputSheets", 1},
    {u"FileSheets", 1},
    {u"AsmThemeAndViewsChecks", 1 + 8},
    {u"PartThemeAndViewsChecks", 1 + 8},
};

Variables settledDefaults(TaskKind kind, TextView taskName)
{
    Variables variables;
    for (auto& [name, value] : zn::initialVariables(kind, taskName))
        variables[name] = std::move(value);
    for (const auto& [name, bits] : freedoms)
        if (const auto found = variables.find(name); found != variables.end())
            found->second = Value(found->second.toInt32() & ~bits);
    if (kind == TaskKind::Printing)
        variables[u"__printer_showprintdlg"] = Value(false);
    return variables;
}

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

std::vector<MenuEntry> menuOf(const TaskRequest& request, const Variables& variables)
{
    if (!isOn(variables, u"__menucmd_display"))
        return {};
    const auto row = std::find_if(
        std::begin(kinds), std::end(kinds), [&](const KindRow& each) { return each.kind == request.kind; });
    return {{static_cast<std::int32_t>(request.kind), request.file.menuText.value_or(row->menuText),
        request.file.menuDescription.value_or(row->description)}};
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
    if (kind != TaskKind::Conversion)
        return;
    const auto format = textOf(variables, u"FileFormat");
    const auto* known = zn::findOutputFormat(format);
    if (known && known->code != zn::promptFormatCode)
        return;
    std::string list;
    for (const auto& each : zn::outputFormats().subspan(1))
        list += (list.empty() ? "" : ", ") + ("\"" + toUtf8(each.label) + "\"");
    throw zn::StatusError(zn::E_INVALIDARG,
        (format.empty() ? std::string("A conversion needs the variable 'FileFormat'")
                        : "The variable 'FileFormat' doesn't take \"" + toUtf8(format) + "\"")
            + ": one of " + list + ".");
}

TaskDefinition makeTask(const TaskRequest& request)
{
    TaskDefinition task;
    task.name = request.name;
    auto& variables = task.variables;
    variables = settledDefaults(request.kind, request.name);
    variables[u"__script"] = request.script;
    if (request.file.menuDisplay)
        variables[u"__menucmd_display"] = Value(*request.file.menuDisplay);
    for (const auto* given : {&request.file.variables, &request.settings})
        for (const auto& [name, value] : *given)
            variables[name] = value;
    variables[u"__type"] = static_cast<std::int32_t>(request.kind);
    requireFormat(variables, request.kind);
    deriveVariables(variables, request.kind, request.vaultVariables);
    task.menu = menuOf(request, variables);
    return task;
}

} // namespace arkin
