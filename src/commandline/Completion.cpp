#include "commandline/Completion.h"

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

namespace zn::commandline {

namespace {

// The scripts; words between "@" are replaced.

constexpr const char* bashScript = R"(# bash completion of @PROGRAM@
@FUNCTION@() {
  local cur=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command='' words='' i
  # The command that stands before the cursor; options and their values are passed over.
  for ((i = 1; i < COMP_CWORD; i++)); do
    case ${COMP_WORDS[i]} in
    @WITH_VALUE@) ((i++)); continue ;;
    esac
    case "${command:+$command }${COMP_WORDS[i]}" in
    @COMMANDS@) command="${command:+$command }${COMP_WORDS[i]}" ;;
    esac
  done
  case "$command $previous" in
@VALUES@  @BEHIND_VALUE@) return ;;
  *)
    case "$command:$cur" in
@OFFERED@    esac ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$cur")
}
complete -o default -F @FUNCTION@ @PROGRAM@
)";

constexpr const char* zshGroupFunction = R"(@FUNCTION@() {
  local curcontext=$curcontext state line
  local -a commands
  _arguments -C@OPTIONS@ \
    '1: :->command' '*:: :->rest'
  case $state in
  command)
    commands=(
@COMMANDS@    )
    _describe command commands ;;
  rest)
    case $line[1] in
@CASES@    esac ;;
  esac
}
)";

constexpr const char* zshFunction = R"(@FUNCTION@() {
  _arguments -S@OPTIONS@
}
)";

constexpr const char* fishFunction = R"(# fish completion of @PROGRAM@
function __@PROGRAM@_at --description 'Whether the command line has got to a command, or stands exactly behind it'
  set -l words
  set -l skip no
  for word in (commandline -opc)[2..]
    if test $skip = yes
      set skip no
    else if contains -- $word @WITH_VALUE@
      set skip yes
    else if not string match -q -- '-*' $word
      set -a words $word
    end
  end
  if test "$argv[1]" = exactly
    test "$words" = "$argv[2..]"
  else
    string match -q -- "$argv *" "$words "
  end
end
)";

using Visitor = std::function<void(const std::string& words, const CommandDescription&)>;

/// The program and all its groups and subcommands, with the words that lead there: "", "task", "task create".
void walk(const CommandDescription& command, const std::string& words, const Visitor& visit)
{
    visit(words, command);
    for (const auto& each : command.commands)
        walk(each, words.empty() ? each.name : words + " " + each.name, visit);
}

void replaceAll(std::string& text, const std::string& what, const std::string& with)
{
    for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
}

using Replacements = std::vector<std::pair<const char*, std::string>>;

std::string filled(std::string script, const Replacements& replacements)
{
    for (const auto& [word, text] : replacements)
        replaceAll(script, "@" + std::string(word) + "@", text);
    return script;
}

std::string joined(const std::vector<std::string>& words, const std::string& separator)
{
    std::string text;
    for (const auto& word : words)
        text += (text.empty() ? "" : separator) + word;
    return text;
}

bool takesValue(const OptionDescription& option) { return !option.names.empty() && !option.value.empty(); }

/// All options that are followed by a value, so that it isn't taken for a command: "-m|--comment|--home".
std::string optionsWithValue(const CommandDescription& program, const std::string& separator)
{
    std::set<std::string> names;
    walk(program, "", [&](const std::string&, const CommandDescription& command) {
        for (const auto& option : command.options)
            if (takesValue(option))
                names.insert(option.names.begin(), option.names.end());
    });
    return joined({names.begin(), names.end()}, separator);
}

std::vector<std::string> optionNames(const CommandDescription& command)
{
    std::vector<std::string> names;
    for (const auto& option : command.options)
        names.insert(names.end(), option.names.begin(), option.names.end());
    return names;
}

std::string functionName(const std::string& program, const std::string& words)
{
    auto name = "_" + program + (words.empty() ? "" : "_" + words);
    replaceAll(name, " ", "_");
    return name;
}

/// In single quotes for zsh and bash.
std::string quoted(std::string text)
{
    replaceAll(text, "'", "'\\''");
    return "'" + text + "'";
}

std::string fishQuoted(std::string text)
{
    replaceAll(text, "\\", "\\\\");
    replaceAll(text, "'", "\\'");
    return "'" + text + "'";
}

/// The inside of an entry of zsh, where colons and brackets part its members.
std::string zshText(std::string text)
{
    for (const char* const special : {"\\", ":", "[", "]"})
        replaceAll(text, special, "\\" + std::string(special));
    return text;
}

std::string zshValue(const OptionDescription& option)
{
    return option.words.empty() ? "_files" : "(" + joined(option.words, " ") + ")";
}

/// One entry for each name of an option, one for an argument by its place.
std::string zshOptions(const CommandDescription& command)
{
    std::string text;
    for (const auto& option : command.options) {
        for (const auto& name : option.names)
            text += " \\\n    "
                + quoted((option.repeated ? "*" : "") + name + "[" + zshText(option.help) + "]"
                    + (takesValue(option) ? ":" + zshText(option.value) + ":" + zshValue(option) : ""));
        if (option.names.empty())
            text += " \\\n    "
                + quoted((option.repeated ? "*:" : ":") + zshText(option.value) + ":" + zshValue(option));
    }
    return text;
}

/// The function of a program or group completes its options, then the names of what is below it.
std::string zshFunctionOf(const CommandDescription& command, const std::string& program, const std::string& path)
{
    const auto options = zshOptions(command);
    if (command.commands.empty())
        return filled(zshFunction, {{"FUNCTION", functionName(program, path)}, {"OPTIONS", options}});
    std::string names;
    std::string cases;
    for (const auto& each : command.commands) {
        const auto below = path.empty() ? each.name : path + " " + each.name;
        names += "      " + quoted(zshText(each.name) + ":" + zshText(each.help)) + "\n";
        cases += "    " + each.name + ") " + functionName(program, below) + " ;;\n";
    }
    return filled(zshGroupFunction,
        {{"FUNCTION", functionName(program, path)}, {"OPTIONS", options}, {"COMMANDS", names}, {"CASES", cases}});
}

/// One case of bash's script: what is offered behind a command. Options are only where one is begun, since a file may
/// be meant, or a command.
std::string bashOffer(const std::string& path, const CommandDescription& command, const CommandDescription& program)
{
    auto options = optionNames(command);
    for (const auto& name : optionNames(program))
        if (!path.empty() && std::ranges::find(options, name) == options.end())
            options.push_back(name);
    std::vector<std::string> names;
    for (const auto& each : command.commands)
        names.push_back(each.name);
    return "    " + quoted(path) + ":-*) words=" + quoted(joined(options, " ")) + " ;;\n"
        + (names.empty() ? "" : "    " + quoted(path) + ":*) words=" + quoted(joined(names, " ")) + " ;;\n");
}

} // namespace

std::string bashCompletion(const CommandDescription& program)
{
    std::vector<std::string> commands;
    std::string values;
    std::string offered;
    walk(program, "", [&](const std::string& path, const CommandDescription& command) {
        if (!path.empty())
            commands.push_back(quoted(path));
        for (const auto& option : command.options)
            for (const auto& name : option.names)
                if (!option.words.empty())
                    values
                        += "  " + quoted(path + " " + name) + ") words=" + quoted(joined(option.words, " ")) + " ;;\n";
        offered += bashOffer(path, command, program);
    });
    return filled(bashScript,
        {{"PROGRAM", program.name}, {"FUNCTION", functionName(program.name, "")},
            {"WITH_VALUE", optionsWithValue(program, " | ")},
            {"BEHIND_VALUE", "*' " + optionsWithValue(program, "' | *' ") + "'"}, {"COMMANDS", joined(commands, " | ")},
            {"VALUES", values}, {"OFFERED", offered}});
}

std::string zshCompletion(const CommandDescription& program)
{
    std::string text = "#compdef " + program.name + "\n";
    walk(program, "", [&](const std::string& path, const CommandDescription& command) {
        text += zshFunctionOf(command, program.name, path);
    });
    return text + functionName(program.name, "") + " \"$@\"\n";
}

std::string fishCompletion(const CommandDescription& program)
{
    const auto at = "__" + program.name + "_at";
    auto text = filled(fishFunction, {{"PROGRAM", program.name}, {"WITH_VALUE", optionsWithValue(program, " ")}});
    walk(program, "", [&](const std::string& path, const CommandDescription& command) {
        const auto line = "complete -c " + program.name;
        for (const auto& each : command.commands)
            text += line + " -f -n " + fishQuoted(at + " exactly " + path) + " -a " + fishQuoted(each.name) + " -d "
                + fishQuoted(each.help) + "\n";
        for (const auto& option : command.options) {
            if (option.names.empty())
                continue;
            text += line + (path.empty() ? "" : " -n " + fishQuoted(at + " " + path));
            for (const auto& name : option.names)
                text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
            if (!option.words.empty())
                text += " -x -a " + fishQuoted(joined(option.words, " "));
            else if (takesValue(option))
                text += " -r";
            text += " -d " + fishQuoted(option.help) + "\n";
        }
    });
    return text;
}

} // namespace zn::commandline
