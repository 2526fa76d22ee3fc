#include "commandline/Description.h"

#include <algorithm>
#include <CLI/CLI.hpp>

namespace zn::commandline {

namespace {

/// The parser shows what a value is followed by what is asked of it: "TEXT:{convert,print}", "INT:INT in [1 - 9]".
void readValue(const std::string& shown, OptionDescription& option)
{
    const auto colon = shown.find(':');
    option.value = shown.substr(0, colon);
    if (colon == std::string::npos)
        return;
    const auto check = shown.substr(colon + 1);
    if (check.starts_with('{') && check.ends_with('}')) {
        option.words = CLI::detail::split(check.substr(1, check.size() - 2), ',');
    } else if (const auto bracket = check.find('['); bracket != std::string::npos && check.ends_with(']')) {
        auto limits = CLI::detail::split(check.substr(bracket + 1, check.size() - bracket - 2), ' ');
        std::replace(limits.begin(), limits.end(), std::string("-"), std::string("to"));
        option.limits = CLI::detail::join(limits, " ");
    }
}

OptionDescription describe(const CLI::Option& declared)
{
    OptionDescription option;
    for (const auto& name : declared.get_snames())
        option.names.push_back("-" + name);
    for (const auto& name : declared.get_lnames())
        option.names.push_back("--" + name);
    if (declared.get_items_expected_max() != 0)
        readValue(declared.get_type_name(), option);
    if (option.names.empty())
        option.value = declared.get_name();
    option.standard = declared.get_default_str();
    option.help = declared.get_description();
    option.required = declared.get_required();
    option.repeated = declared.get_items_expected_max() > 1;
    return option;
}

} // namespace

CommandDescription describe(const CLI::App& app)
{
    CommandDescription command{app.get_name(), app.get_description(), app.get_footer(), {}, {}};
    for (const auto* const option : app.get_options())
        command.options.push_back(describe(*option));
    for (const auto* const subcommand : app.get_subcommands([](const CLI::App*) { return true; }))
        command.commands.push_back(describe(*subcommand));
    return command;
}

} // namespace zn::commandline
