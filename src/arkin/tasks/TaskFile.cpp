#include "arkin/tasks/TaskFile.h"

#include "base/Durations.h"
#include "base/JsonShape.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <numeric>

namespace zn::arkin {

using nlohmann::json;
using zn::Text;
using zn::TextView;
using zn::toUtf8;
using zn::Value;
using zn::ValueType;

namespace {

/// Levels of brackets in a task file; three have a meaning.
constexpr int deepest = 16;
constexpr int mostValues = 100'000;
/// Letters of the file that a sentence shows at one place.
constexpr std::size_t longestShown = 60;

[[noreturn]] void refuse(const std::string& sentence) { throw zn::StatusError(zn::E_INVALIDARG, sentence); }

/// A piece of the file on one line of a sentence, cut where it is long, with "?" for control characters.
std::string shown(const std::string& piece)
{
    auto text = zn::toText(piece);
    std::replace_if(
        text.begin(), text.end(), [](char16_t unit) { return unit < u' '; }, u'?');
    return text.size() <= longestShown ? toUtf8(text) : toUtf8(TextView(text).substr(0, longestShown)) + "…";
}

std::string shown(const json& value) { return shown(value.dump()); }

/// How many letters have to be put in, left out or changed to make the one name of the other.
std::size_t distance(TextView a, TextView b)
{
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const auto above = row[j];
            row[j] = std::min({above + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

const zn::ArkTaskVariable& rowOf(TextView name, const KnownVariables& known)
{
    if (known.empty())
        refuse("The task's add-in doesn't tell which variables its tasks have; its pages alone can set them.");
    if (const auto row = std::ranges::find(known, name, &zn::ArkTaskVariable::name); row != known.end())
        return *row;
    const auto folded = zn::foldCase(name);
    const auto nearest = std::ranges::min_element(
        known, {}, [&](const auto& each) { return distance(zn::foldCase(each.name), folded); });
    const bool near = distance(zn::foldCase(nearest->name), folded) <= 2;
    refuse("No task has a variable named '" + shown(toUtf8(name)) + "'"
        + (near ? "; did you mean '" + toUtf8(nearest->name) + "'?" : "."));
}

const char* wantedBy(ValueType type)
{
    switch (type) {
    case ValueType::Int32:
        return "a whole number";
    case ValueType::Boolean:
        return "true or false";
    case ValueType::Float32:
        return "a number";
    default:
        return "a text, or an array of lines";
    }
}

[[noreturn]] void refuseValue(const zn::ArkTaskVariable& row, const std::string& given)
{
    refuse("The variable '" + toUtf8(row.name) + "' takes " + wantedBy(row.type) + ", not " + given + ".");
}

Text textFor(const zn::ArkTaskVariable& row, TextView text) { return row.crLf ? zn::withCrLf(text) : Text(text); }

/// A list's lines end in a line feed each; CR LF stands between the lines of a text.
Text linesFor(const zn::ArkTaskVariable& row, const json& array)
{
    Text lines;
    for (const auto& line : array) {
        if (row.crLf && &line != &array.front())
            lines += u"\r\n";
        lines += textFor(row, zn::toText(line.get<std::string>()));
        if (!row.crLf)
            lines += u"\n";
    }
    return lines;
}

Value fromJson(const zn::ArkTaskVariable& row, const json& value)
{
    switch (row.type) {
    case ValueType::Boolean:
        if (value.is_boolean())
            return value.get<bool>();
        break;
    case ValueType::Int32:
        if (value.is_number_integer() && value >= std::numeric_limits<std::int32_t>::min()
            && value <= std::numeric_limits<std::int32_t>::max())
            return value.get<std::int32_t>();
        break;
    case ValueType::Float32:
        if (value.is_number() && std::isfinite(value.get<float>()))
            return value.get<float>();
        break;
    default:
        if (value.is_string())
            return textFor(row, zn::toText(value.get<std::string>()));
        if (value.is_array() && std::all_of(value.begin(), value.end(), [](const json& e) { return e.is_string(); }))
            return linesFor(row, value);
    }
    refuseValue(row, shown(value));
}

json parsed(std::string_view text)
{
    const auto shape = zn::jsonShapeOf(text, deepest, mostValues);
    if (shape == zn::JsonShape::TooDeep)
        refuse("The text has more brackets inside one another than any task file.");
    if (shape == zn::JsonShape::TooMany)
        refuse("The text has more values than any task file.");
    try {
        return json::parse(text);
    } catch (const json::out_of_range&) {
        refuse("The text holds a number that is too big.");
    } catch (const json::parse_error& error) {
        const auto before = text.substr(0, error.byte > 0 ? error.byte - 1 : 0);
        const auto line = std::count(before.begin(), before.end(), '\n') + 1;
        const auto lineStart = before.rfind('\n') == before.npos ? 0 : before.rfind('\n') + 1;
        refuse("The text isn't well-formed JSON at line " + std::to_string(line) + ", column "
            + std::to_string(before.size() - lineStart + 1) + ".");
    }
}

const json& expectObject(const json& value, const std::string& what)
{
    if (!value.is_object())
        refuse(what + " has to be an object in braces, not " + shown(value) + ".");
    return value;
}

Text textMember(const json& value, const std::string& name)
{
    if (!value.is_string())
        refuse("'" + name + "' takes a text, not " + shown(value) + ".");
    return zn::toText(value.get<std::string>());
}

void readMenu(const json& menu, TaskFile& file)
{
    for (const auto& [name, value] : expectObject(menu, "'menu'").items()) {
        if (name == "display" && value.is_boolean())
            file.menuDisplay = value.get<bool>();
        else if (name == "display")
            refuse("'menu.display' takes true or false, not " + shown(value) + ".");
        else if (name == "text")
            file.menuText = textMember(value, "menu.text");
        else if (name == "description")
            file.menuDescription = textMember(value, "menu.description");
        else
            refuse("'menu' has no member '" + shown(name) + "'; it takes 'display', 'text' and 'description'.");
    }
}

} // namespace

TaskFile parseTaskFile(std::string_view text, const KnownVariables& known)
{
    TaskFile file;
    const auto document = parsed(text);
    for (const auto& [name, value] : expectObject(document, "A task file").items()) {
        if (name == "variables") {
            for (const auto& [variable, content] : expectObject(value, "'variables'").items())
                file.variables[zn::toText(variable)] = fromJson(rowOf(zn::toText(variable), known), content);
        } else if (name == "script") {
            file.script = toUtf8(textMember(value, "script"));
        } else if (name == "fileLimit") {
            file.fileLimit = parseFileLimit(textMember(value, "fileLimit"));
        } else if (name == "identical") {
            file.keepsIdentical = parseKeepsIdentical(textMember(value, "identical"));
        } else if (name == "menu") {
            readMenu(value, file);
        } else {
            refuse("A task file has no member '" + shown(name)
                + "'; it takes 'variables', 'script', "
                  "'fileLimit', 'identical' and 'menu'.");
        }
    }
    return file;
}

std::int32_t parseFileLimit(TextView text)
{
    if (const auto seconds = zn::durationOf(text))
        return *seconds;
    refuse("The longest time for one file is a time such as 90s, 10m or 2h, 30 days at most, or 0 for none, not '"
        + shown(toUtf8(text)) + "'.");
}

bool parseKeepsIdentical(TextView text)
{
    if (text == u"no-version" || text == u"new-version")
        return text == u"no-version";
    refuse("An output that is as the vault has it makes a 'new-version' or 'no-version', not '" + shown(toUtf8(text))
        + "'.");
}

Value parseVariable(TextView name, TextView text, const KnownVariables& known)
{
    static constexpr std::pair<const char16_t*, bool> booleans[] = {
        {u"true", true},
        {u"yes", true},
        {u"1", true},
        {u"-1", true},
        {u"false", false},
        {u"no", false},
        {u"0", false},
    };
    const auto& row = rowOf(name, known);
    const auto utf8 = toUtf8(text);
    if (row.type == ValueType::String)
        return textFor(row, text);
    if (row.type == ValueType::Boolean) {
        for (const auto& [word, value] : booleans)
            if (zn::equalNoCase(text, word))
                return value;
        refuseValue(row, "'" + shown(utf8) + "'");
    }
    const auto number = json::parse(utf8, nullptr, false);
    if (!number.is_number())
        refuseValue(row, "'" + shown(utf8) + "'");
    return fromJson(row, number);
}

} // namespace zn::arkin
