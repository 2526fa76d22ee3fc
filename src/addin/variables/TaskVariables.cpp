#include "addin/variables/TaskVariables.h"

#include "addin/variables/FormatOptions.h"

#include <algorithm>
#include <array>
#include <type_traits>

namespace zn {

namespace {

using enum VariableOwner;

constexpr ValueType Integer = ValueType::Int32;
constexpr ValueType Boolean = ValueType::Boolean;
constexpr ValueType Float = ValueType::Float32;
constexpr ValueType String = ValueType::String;
constexpr std::monostate none{};
constexpr TextView noText = u"";

// clang-format off
constexpr TaskVariable ownVariables[] = {
    // name, type, owner, assumed if absent, stored for a new task
    {kindVariable, Integer, ScriptPage, 3, none},
    {scriptVariable, String, ScriptPage, none, none}, // a missing one ends the run
    {u"__zn_version", Integer, ScriptPage, 0, 0},
    {menuDisplayVariable, Boolean, MenuCommandPage, none, none}, // depends on the kind
    {selectionVariable, String, RunFlows, none, none},
    {u"__output_list", String, RunFlows, none, none},
    {u"FileFormat", String, ConversionPage, none, none}, // a missing one ends the run
    {u"OutputPath", String, OutputPage, none, TextView(u"<Path>\\<Filename>_<Extension>_<Configuration>")},
    {u"OutputPath2", String, OutputPage, noText, noText},
    {u"PromptOutput", Boolean, OutputPage, false, false},
    {u"ReplaceOutput", Boolean, OutputPage, false, true},
    {u"RefToSource", Boolean, OutputPage, false, false},
    {u"ErrorLogPath", String, OutputAndPrintPages, none, none}, // no log without it
    {u"UsedVariables", String, OutputPage, noText, noText},
    {u"SourceRefs", Integer, ConversionPage, none, 6},
    {u"FileCardData", String, FileCardPage, noText, noText},
    {u"FileConfs", Integer, ConversionPage, none, 5},
    {u"OutputConfs", Integer, ConversionPage, none, 3},
    {u"NamedConf", String, ConversionPage, noText, none},
    {u"FileSheets", Integer, ConversionPage, none, 5},
    {u"OutputSheets", Integer, ConversionPage, none, 3},
    {u"NamedSheet", String, ConversionPage, noText, none},
    {u"Asm3DPDFThemePath", String, ConversionPage, none, TextView(u"theme.xml")},
    {u"Part3DPDFThemePath", String, ConversionPage, none, TextView(u"theme.xml")},
    {u"AsmThemeAndViewsChecks", Integer, ConversionPage, none, 13},
    {u"PartThemeAndViewsChecks", Integer, ConversionPage, none, 13},
    {u"AsmPrimaryViews", Integer, ConversionPage, none, 0},
    {u"PartPrimaryViews", Integer, ConversionPage, none, 0},
    {u"__printer_prseltype", Integer, PrintPages, 0, 0},
    {u"__printer_prname", String, PrintPages, noText, noText},
    {u"__printer_prnamelist", String, PrintPages, noText, noText},
    {u"__printer_papsize_DEF", String, PrintPages, noText, none}, // a size that the page hides
    {u"__printer_papsize_A", String, PrintPages, noText, noText},
    {u"__printer_papsize_B", String, PrintPages, noText, noText},
    {u"__printer_papsize_C", String, PrintPages, noText, noText},
    {u"__printer_papsize_D", String, PrintPages, noText, noText},
    {u"__printer_papsize_E", String, PrintPages, noText, noText},
    {u"__printer_papsize_A0", String, PrintPages, noText, noText},
    {u"__printer_papsize_A1", String, PrintPages, noText, noText},
    {u"__printer_papsize_A2", String, PrintPages, noText, noText},
    {u"__printer_papsize_A3", String, PrintPages, noText, noText},
    {u"__printer_papsize_A4", String, PrintPages, noText, noText},
    {u"__printer_usedrwnfo", Boolean, PrintPages, true, true},
    {u"__printer_defpapsize", Integer, PrintPages, 10, 10},
    {u"__printer_usersizechange", Boolean, PrintPages, true, true},
    {u"__printer_deforientation", Integer, PrintPages, none, 1}, // the page assumes 1, the launch 0
    {u"__printer_userorientchange", Boolean, PrintPages, true, true},
    {u"__printer_margintype", Integer, PrintPages, 1, 1},
    {u"__printer_margintop", Float, PrintPages, 0.0F, 0.0F}, // millimetres; the launch writes integers
    {u"__printer_marginbottom", Float, PrintPages, 0.0F, 0.0F},
    {u"__printer_marginleft", Float, PrintPages, 0.0F, 0.0F},
    {u"__printer_marginright", Float, PrintPages, 0.0F, 0.0F},
    {u"__printer_headertype", Integer, PrintPages, 1, 1},
    {u"__printer_headerleft", String, PrintPages, noText, noText},
    {u"__printer_headercenter", String, PrintPages, noText, noText},
    {u"__printer_headerright", String, PrintPages, noText, noText},
    {u"__printer_footertype", Integer, PrintPages, 1, 1},
    {u"__printer_footerleft", String, PrintPages, noText, noText},
    {u"__printer_footercenter", String, PrintPages, noText, noText},
    {u"__printer_footerright", String, PrintPages, noText, noText},
    {u"__printer_showprintdlg", Boolean, PrintPages, true, true},
    {u"__printer_autoselectrefstype", Integer, PrintPages, 1, 1},
    {u"__printer_refversiontype", Integer, PrintPages, none, 2}, // the launch's tests assume 2, its buttons 0
    {u"__printer_copycount", Integer, PrintPages, 1, none},      // written at launch only
};
// clang-format on

constexpr std::size_t formatOptionCount()
{
    std::size_t count = 0;
    for (const std::span<const FormatOption> options : formatOptionTables)
        count += options.size();
    return count;
}

constexpr TaskVariable variableOf(const FormatOption& option)
{
    const VariableDefault initial
        = option.type == Boolean ? VariableDefault(option.initial != 0) : VariableDefault(option.initial);
    return {option.name, option.type, FormatOptions, none, initial};
}

constexpr auto table = [] {
    std::array<TaskVariable, std::size(ownVariables) + formatOptionCount()> all{};
    auto* next = std::copy(std::begin(ownVariables), std::end(ownVariables), all.begin());
    for (const std::span<const FormatOption> options : formatOptionTables)
        next = std::transform(options.begin(), options.end(), next, variableOf);
    return all;
}();

bool isStored(VariableOwner owner, TaskKind kind)
{
    switch (owner) {
    case ScriptPage:
        return kind == TaskKind::General;
    case MenuCommandPage:
        return true;
    case RunFlows:
        return false;
    case ConversionPage:
    case FormatOptions:
    case OutputPage:
    case FileCardPage:
        return kind == TaskKind::Conversion;
    case PrintPages:
        return kind == TaskKind::Printing;
    case OutputAndPrintPages:
        return kind == TaskKind::Conversion || kind == TaskKind::Printing;
    }
    return false;
}

template <class Task> std::optional<Value> valueIn(Task& task, TextView name)
{
    Value value;
    const Status status = task.GetValue(name, value);
    checkStatus(status);
    return status == S_FALSE ? std::nullopt : std::optional(std::move(value));
}

template <class Task> TaskKind kindIn(const ObjectRef& object)
{
    const auto task = query<Task>(object);
    if (!task)
        throw StatusError(E_POINTER);
    const std::optional<Value> value = valueIn(*task, kindVariable);
    return value ? static_cast<TaskKind>(value->toInt32()) : TaskKind::General;
}

/// Calls `use` with the one of the two interfaces that the object has, the definition first.
template <class Use> auto onEither(const ObjectRef& object, const Use& use)
{
    if (const auto properties = query<IArkTaskProperties>(object))
        return use(*properties);
    if (const auto instance = query<IArkTaskInstance>(object))
        return use(*instance);
    throw StatusError(E_POINTER, "The object is neither a task's definition nor a run of a task.");
}

/// Reads a variable and changes it by `change`; a failed change is raised with a sentence that names the variable.
template <class Change>
auto readAs(const ObjectRef& object, TextView name, const char* wanted, const Change& change)
    -> std::optional<std::invoke_result_t<Change, const Value&>>
{
    const std::optional<Value> value = readVariable(object, name);
    if (!value)
        return std::nullopt;
    try {
        return change(*value);
    } catch (const StatusError& error) {
        throw StatusError(error.status(),
            "The task variable \"" + toUtf8(name) + "\" must hold " + wanted
                + ", but holds something else. Correct its value in the task.");
    }
}

} // namespace

std::span<const TaskVariable> taskVariables() { return table; }

bool hasCrLf(const TaskVariable& variable)
{
    const bool hasOwnFormat
        = variable.owner == ScriptPage || variable.owner == FileCardPage || variable.owner == RunFlows;
    return variable.type == String && !hasOwnFormat;
}

const TaskVariable* findTaskVariable(TextView name)
{
    for (const TaskVariable& variable : table) {
        if (variable.name == name)
            return &variable;
    }
    return nullptr;
}

Value valueOf(const VariableDefault& value)
{
    struct Visitor {
        Value operator()(std::monostate) const { return {}; }
        Value operator()(TextView text) const { return Text(text); }
        Value operator()(bool flag) const { return flag; }
        Value operator()(std::int32_t number) const { return number; }
        Value operator()(float number) const { return number; }
    };
    return std::visit(Visitor{}, value);
}

Value initialValue(TextView name)
{
    const TaskVariable* variable = findTaskVariable(name);
    return variable ? valueOf(variable->initial) : Value();
}

std::vector<std::pair<Text, Value>> initialVariables(TaskKind kind, TextView taskName)
{
    std::vector<std::pair<Text, Value>> variables;
    for (const TaskVariable& variable : table) {
        if (isStored(variable.owner, kind) && variable.initial.index() != 0)
            variables.emplace_back(variable.name, valueOf(variable.initial));
    }
    // Kinds that stand in the menu by themselves; a script task has to be put there.
    variables.emplace_back(menuDisplayVariable, kind == TaskKind::Conversion || kind == TaskKind::Printing);
    if (isStored(OutputAndPrintPages, kind))
        variables.emplace_back(u"ErrorLogPath", Text(u"\\Logs\\").append(taskName));
    return variables;
}

TaskKind readKind(const ObjectRef& object, bool onInstance)
{
    return onInstance ? kindIn<IArkTaskInstance>(object) : kindIn<IArkTaskProperties>(object);
}

std::optional<Value> readVariable(const ObjectRef& object, TextView name)
{
    return onEither(object, [&](auto& task) { return valueIn(task, name); });
}

std::optional<std::int32_t> readInteger(const ObjectRef& object, TextView name)
{
    return readAs(object, name, "a whole number", [](const Value& value) { return value.toInt32(); });
}

std::optional<bool> readBoolean(const ObjectRef& object, TextView name)
{
    return readAs(object, name, "yes or no (-1 or 0)", [](const Value& value) { return value.toBool(); });
}

std::optional<float> readFloat(const ObjectRef& object, TextView name)
{
    return readAs(
        object, name, "a number", [](const Value& value) { return *value.changedTo(ValueType::Float32).get<float>(); });
}

std::optional<Text> readText(const ObjectRef& object, TextView name)
{
    return readAs(object, name, "a text", [](const Value& value) { return value.toText(); });
}

void writeVariable(const ObjectRef& object, TextView name, const Value& value)
{
    onEither(object, [&](auto& task) { checkStatus(task.SetValue(name, value)); });
}

} // namespace zn
