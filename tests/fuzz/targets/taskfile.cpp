// A task file: what it says of variables, written down again, reads the same; a refusal is a sentence.
#include "arkin/tasks/TaskFile.h"
#include "addin/variables/TaskVariables.h"
#include "tests/fuzz/Promise.h"

#include <cmath>
#include <nlohmann/json.hpp>

using namespace zn;
using fuzz::promise;
using nlohmann::json;

namespace {

/// A sentence about a file is to fit on a screen, whatever the file holds.
constexpr std::size_t longestSentence = 1000;

const zn::arkin::KnownVariables& known()
{
    static const zn::arkin::KnownVariables all = [] {
        zn::arkin::KnownVariables rows;
        for (const TaskVariable& row : taskVariables())
            rows.push_back({Text(row.name), row.type, hasCrLf(row)});
        return rows;
    }();
    return all;
}

json jsonOf(const Value& value)
{
    if (const auto* flag = value.get<BooleanValue>())
        return flag->bits != 0;
    if (const auto* number = value.get<std::int32_t>())
        return *number;
    if (const auto* number = value.get<float>())
        return *number;
    return toUtf8(*value.get<Text>());
}

std::string written(const zn::arkin::TaskFile& file)
{
    json variables = json::object();
    for (const auto& [name, value] : file.variables)
        variables[toUtf8(name)] = jsonOf(value);
    json menu = json::object();
    if (file.menuDisplay)
        menu["display"] = *file.menuDisplay;
    if (file.menuText)
        menu["text"] = toUtf8(*file.menuText);
    return json{{"variables", variables}, {"script", file.script.string()}, {"menu", menu}}.dump();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        const auto file = zn::arkin::parseTaskFile({reinterpret_cast<const char*>(data), size}, known());
        for (const auto& [name, value] : file.variables) {
            const TaskVariable* row = findTaskVariable(name);
            promise(row && value.type() == row->type, "a variable has the type of its row");
            promise(!value.get<float>() || std::isfinite(*value.get<float>()), "a number is one");
        }
        const auto again = zn::arkin::parseTaskFile(written(file), known());
        promise(again.variables == file.variables && again.script == file.script
                && again.menuDisplay == file.menuDisplay && again.menuText == file.menuText,
            "what a task file says comes back as it was");
    } catch (const StatusError& error) {
        promise(error.status() == E_INVALIDARG, "a faulty file is a wrong argument");
        promise(std::string_view(".?").find(std::string_view(error.what()).back()) != std::string_view::npos,
            "a refusal is a sentence");
        promise(std::string_view(error.what()).size() <= longestSentence, "a refusal can be read");
    }
    return 0;
}
