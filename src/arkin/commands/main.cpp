#include "arkin/commands/Commands.h"

#include "arkin/store/Codes.h"

#include <iostream>
#include <map>

namespace {

constexpr int wrongUse = 2;
constexpr const char* footer = "\nEverywhere: --home DIR (or ARKIN_HOME), --vault NAME when the home has several, "
                               "--json.\nExit code: 0 done, 1 the work failed, 2 wrong use.";

struct Declared {
    CLI::App* app;
    std::unique_ptr<arkin::Command> command;
};

void declareCommon(CLI::App& app, arkin::CommonOptions& options)
{
    app.require_subcommand(1);
    app.fallthrough();
    app.footer(footer);
    app.add_option("--home", options.home, "Folder of database, archive, registry and runtime files");
    app.add_option("--vault", options.vault, "Vault to work with");
    app.add_flag("--json", options.json, "Print JSON");
}

/// Subcommands fall through to their parents for the common options.
std::vector<Declared> declareCommands(CLI::App& app)
{
    std::map<std::string, CLI::App*> groups{{"", &app}};
    for (const auto& group : arkin::groupRows()) {
        auto* const made = app.add_subcommand(group.name, group.help);
        made->require_subcommand(1)->fallthrough()->footer(footer);
        groups[group.name] = made;
    }
    std::vector<Declared> declared;
    for (const auto& row : arkin::commandRows()) {
        auto* const sub = groups.at(row.group)->add_subcommand(row.name, row.help);
        sub->fallthrough()->footer(footer);
        declared.push_back({sub, row.make()});
        declared.back().command->declare(*sub);
    }
    return declared;
}

int runCommand(arkin::Command& command, arkin::CommonOptions options)
{
    try {
        arkin::Session session(std::move(options));
        return command.run(session);
    } catch (...) {
        std::cerr << "arkin: " << arkin::currentFailure().sentence << "\n";
        return arkin::commandFailed;
    }
}

} // namespace

int main(int argc, char** argv)
{
    CLI::App app("A vault of CAD files, and the tasks that work on them.", "arkin");
    arkin::CommonOptions options;
    declareCommon(app, options);
    auto declared = declareCommands(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success))
            return app.exit(error);
        const auto unknown = app.remaining(true);
        std::cerr << "arkin: "
                  << (unknown.empty() ? error.what() : "Nobody knows what to do with '" + unknown[0] + "'.")
                  << "\nTry --help.\n";
        return wrongUse;
    }
    for (auto& each : declared)
        if (each.app->parsed())
            return runCommand(*each.command, options);
    return wrongUse;
}
