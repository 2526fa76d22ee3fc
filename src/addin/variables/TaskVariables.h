#pragma once

#include "contracts/host/ArkTask.h"

#include <optional>
#include <span>
#include <utility>
#include <variant>
#include <vector>

/// The task variables: all that a task is lies in named, typed values that the vault host keeps, on the task's
/// definition (`IArkTaskProperties`) or on one run of it (`IArkTaskInstance`). The add-in stores nothing of its own.
namespace zn {

/// A value written down in the table; `monostate` means that there is none.
using VariableDefault = std::variant<std::monostate, bool, std::int32_t, float, TextView>;

/// Which pages write a variable, and so for which tasks it exists.
enum class VariableOwner : std::uint8_t {
    ScriptPage,
    MenuCommandPage,
    RunFlows,       ///< the add-in's own lists, no page
    ConversionPage, ///< format, version rule, sheets and configurations, 3D PDF
    FormatOptions,  ///< the option dialogs of the conversion formats
    OutputPage,     ///< output file details
    FileCardPage,
    PrintPages,          ///< printer, paper size, margins, files
    OutputAndPrintPages, ///< both of them
};

/// One row of the table of variables.
struct TaskVariable {
    TextView name;
    ValueType type; ///< Int32, Boolean, Float32 or String
    VariableOwner owner;
    /// What a reader assumes at run time when the variable doesn't exist. None where each reader decides, or where
    /// a missing variable ends the run.
    VariableDefault absent;
    /// What the pages store for a task whose administrator changed nothing. None where nothing is stored then, or
    /// where the text depends on the task.
    VariableDefault initial;
};

/// All variables, the options of the conversion formats at the end.
std::span<const TaskVariable> taskVariables();
/// Whether the lines of a text are parted by CR LF. All texts that reach a macro's literals have it; a macro itself and
/// the lists that have a format of their own have single line feeds.
bool hasCrLf(const TaskVariable& variable);
/// The row of a variable; names are compared exactly. Null if there is none.
const TaskVariable* findTaskVariable(TextView name);
/// A default as a value; empty for none.
Value valueOf(const VariableDefault& value);
/// What the pages store in a variable for a new task; empty for none.
Value initialValue(TextView name);

/// The variables that a task of this kind holds after an administrator has accepted its pages without a change, with
/// the log folder "\Logs\" and the task's name. The script, the kind and the output format are not among them: they
/// are what a new task is asked for.
std::vector<std::pair<Text, Value>> initialVariables(TaskKind kind, TextView taskName);

/// Reads `__type` from the instance (`onInstance`) or the definition; a missing variable is general. Raises `E_POINTER`
/// if the object isn't there or has no such interface, the host's failure, and a value that is no integer.
TaskKind readKind(const ObjectRef& object, bool onInstance);

/// Reads a variable from the definition or, if `object` is none, from the instance. None if there is no such variable.
/// Raises the host's failure, and `E_POINTER` if `object` is neither.
std::optional<Value> readVariable(const ObjectRef& object, TextView name);

// The typed reads: a value of the wanted type as it is, any other changed to it; a failed change is raised.
std::optional<std::int32_t> readInteger(const ObjectRef& object, TextView name);
std::optional<bool> readBoolean(const ObjectRef& object, TextView name);
std::optional<float> readFloat(const ObjectRef& object, TextView name);
std::optional<Text> readText(const ObjectRef& object, TextView name);

/// Creates or replaces a variable. `value` is of the variable's type: an empty text is stored as such, so that writing
/// never deletes a variable. Raises the host's failure, and `E_POINTER` if `object` is neither of the two.
void writeVariable(const ObjectRef& object, TextView name, const Value& value);

} // namespace zn
