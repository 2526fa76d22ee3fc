#pragma once

#include "arkin/tasks/TaskStore.h"
#include "contracts/host/Records.h"

#include <filesystem>
#include <string_view>

namespace zn::arkin {

/// What a person writes down about a task, as a JSON text:
///
///   { "variables": { "FileFormat": "STL (*.stl)", "StlQuality": 2, "ReplaceOutput": true,
///                    "FileCardData": ["Description;100;Title", "Note;8;made by a task"] },
///     "script": "MyMacro.bas",
///     "fileLimit": "10m",
///     "identical": "no-version",
///     "menu": { "display": true, "text": "Convert to STL", "description": "…" } }
///
/// All members may be missing. A text variable takes a string, or an array of strings: lines, each ended by a line
/// feed. `script` is a file of its own, in the single-byte code page, beside the JSON file unless it is absolute.
struct TaskFile {
    Variables variables;
    std::filesystem::path script;          ///< empty for none
    std::optional<std::int32_t> fileLimit; ///< longest time for one file in seconds, 0 for none
    std::optional<bool> keepsIdentical;    ///< an output that is as its latest version has it makes no new one
    std::optional<bool> menuDisplay;
    std::optional<zn::Text> menuText;
    std::optional<zn::Text> menuDescription;
};

/// The variables that a task may have, as its add-in tells them.
using KnownVariables = std::vector<zn::ArkTaskVariable>;

/// Raises `StatusError` E_INVALIDARG with a sentence that names the place: the line and column of a fault in the text,
/// a member that nobody knows, a variable with the type that it takes.
TaskFile parseTaskFile(std::string_view json, const KnownVariables& known);

/// A variable's value from a command line's text: a whole number, a number with a point, true/false/yes/no/-1/0/1, or
/// the text itself. Raises like `parseTaskFile`.
zn::Value parseVariable(zn::TextView name, zn::TextView text, const KnownVariables& known);

/// The longest time for one file in seconds from "90s", "10m", "2h", or "0" for none. Raises like `parseTaskFile`.
std::int32_t parseFileLimit(zn::TextView text);

/// Whether an output that is as its latest version has it makes no new one: "no-version", or "new-version". Raises like
/// `parseTaskFile`.
bool parseKeepsIdentical(zn::TextView text);

} // namespace zn::arkin
