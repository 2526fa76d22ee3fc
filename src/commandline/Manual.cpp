#include "commandline/Manual.h"

#include "base/Version.h"

#include <algorithm>
#include <sstream>

namespace zn::commandline {

namespace {

/// Text as it stands: without a meaning for the formatter, and with hyphens that can be copied to a command line.
std::string plain(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        const bool lineBegins = result.empty() || result.back() == '\n';
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else if (lineBegins && (c == '.' || c == '\''))
            result += std::string("\\&") + c;
        else
            result += c;
    }
    return result;
}

std::string bold(const std::string& text) { return "\\fB" + plain(text) + "\\fR"; }
std::string italic(const std::string& text) { return "\\fI" + plain(text) + "\\fR"; }

/// Each line of the text as a paragraph.
std::string paragraphs(const std::string& text)
{
    std::istringstream lines(text);
    std::string result;
    for (std::string line; std::getline(lines, line);)
        if (!line.empty())
            result += ".PP\n" + plain(line) + "\n";
    return result;
}

std::string upper(std::string text)
{
    std::transform(
        text.begin(), text.end(), text.begin(), [](char c) { return c >= 'a' && c <= 'z' ? char(c - 32) : c; });
    return text;
}

std::string sentence(const std::string& text) { return text + (text.empty() || text.ends_with('.') ? "" : "."); }

bool isArgument(const OptionDescription& option) { return option.names.empty(); }

/// "-m, --comment TEXT", or the argument's name.
std::string heading(const OptionDescription& option)
{
    std::string text;
    for (const auto& name : option.names)
        text += (text.empty() ? "" : ", ") + bold(name);
    if (!option.value.empty())
        text += (text.empty() ? "" : " ") + italic(option.value);
    return text + (option.repeated ? "..." : "");
}

std::string explanation(const OptionDescription& option)
{
    std::string text = sentence(option.help);
    std::string words;
    for (const auto& word : option.words)
        words += (words.empty() ? "" : ", ") + word;
    if (!words.empty())
        text += " One of " + words + ".";
    if (!option.limits.empty())
        text += " From " + option.limits + ".";
    if (!option.standard.empty())
        text += " Without it: " + option.standard + ".";
    return plain(text);
}

std::string optionList(const CommandDescription& command)
{
    std::string text;
    for (const bool arguments : {true, false})
        for (const auto& option : command.options)
            if (isArgument(option) == arguments && option.names != std::vector<std::string>{"-h", "--help"})
                text += ".TP\n" + heading(option) + "\n" + explanation(option) + "\n";
    return text;
}

std::string usage(const std::string& words, const CommandDescription& command)
{
    std::string text = bold(words);
    if (std::any_of(command.options.begin(), command.options.end(), [](const auto& option) {
            return !isArgument(option) && !option.required && option.names.back() != "--help";
        }))
        text += " [" + italic("OPTIONS") + "]";
    for (const auto& option : command.options)
        if (!isArgument(option) && option.required)
            text += " " + bold(option.names.back()) + " " + italic(option.value);
    for (const auto& option : command.options)
        if (isArgument(option)) {
            const auto name = italic(option.value) + (option.repeated ? "..." : "");
            text += option.required ? " " + name : " [" + name + "]";
        }
    return text;
}

std::string commandSections(const std::string& words, const CommandDescription& command)
{
    if (command.commands.empty())
        return ".SS " + usage(words, command) + "\n" + plain(sentence(command.help)) + "\n" + optionList(command);
    std::string text;
    for (const auto& each : command.commands)
        text += commandSections(words + " " + each.name, each);
    return text;
}

} // namespace

std::string manualPage(const CommandDescription& program)
{
    auto summary = program.help;
    if (summary.ends_with('.'))
        summary.pop_back();
    std::string text = ".TH " + upper(program.name) + " 1 \"\" \"" + program.name + " " + softwareVersion()
        + "\" \"User Commands\"\n.nh\n";
    text += ".SH NAME\n" + program.name + " \\- " + plain(summary) + "\n";
    text += ".SH SYNOPSIS\n" + bold(program.name) + " [" + italic("OPTIONS") + "] " + italic("COMMAND") + " ...\n";
    text += ".SH DESCRIPTION\n" + plain(sentence(program.help)) + "\n" + bold("--help")
        + " behind a command tells what it takes.\n" + paragraphs(program.footer);
    text += ".SH OPTIONS\n" + optionList(program);
    text += ".SH COMMANDS\n";
    for (const auto& command : program.commands)
        text += commandSections(program.name + " " + command.name, command);
    return text;
}

} // namespace zn::commandline
