#include "commandline/Program.h"

#include "base/Version.h"
#include "commandline/Completion.h"
#include "commandline/Failure.h"
#include "commandline/Manual.h"

#include <algorithm>
#include <CLI/CLI.hpp>
#include <iostream>
#include <map>
#include <vector>

namespace zn::commandline {

namespace {

struct Declared {
    CLI::App* app;
    std::function<int()> run;
};

/// What the help is made of, in the forms that other programs take.
struct HelpForm {
    const char* name;
    std::string (*make)(const CommandDescription&);
};
constexpr HelpForm helpForms[] = {
    {"man", manualPage},
    {"bash", bashCompletion},
    {"zsh", zshCompletion},
    {"fish", fishCompletion},
};

/// Ends the reading of a command line: the help was wanted in this form.
struct HelpAs {
    std::string form;
};

/// The subcommand that the command line got to, with the words that lead to it: "arkin task create".
std::string chosenWords(const CLI::App& app)
{
    const auto chosen = app.get_subcommands();
    return app.get_name() + (chosen.empty() ? "" : " " + chosenWords(*chosen.front()));
}

} // namespace

struct Program::Parts {
    Parts(const std::string& name, const std::string& help, const std::string& footerText)
        : app(help, name)
        , footer(footerText)
    {
    }

    int refuse(const std::string& sentence) const
    {
        const std::string help = "Try '" + chosenWords(app) + " --help'.";
        tellFailure(app.get_name(),
            sentence
                + (!json                          ? "\n"
                        : sentence.ends_with('.') ? " "
                                                  : ". ")
                + help,
            wrongUse, json);
        return wrongUse;
    }

    CLI::App app;
    std::string footer;
    bool json = false; ///< also of a command line that can't be read any further
    std::map<std::string, CLI::App*> groups{{"", &app}};
    std::vector<Declared> declared;
};

Program::Program(const std::string& name, const std::string& help, const std::string& footer)
    : m_parts(std::make_unique<Parts>(name, help, footer))
{
    // Subcommands fall through to their parents for the common options.
    m_parts->app.require_subcommand(1)->fallthrough()->footer(footer);
    m_parts->app.set_version_flag("--version", name + " " + softwareVersion(), "Print the version and exit");
    std::vector<std::string> forms;
    for (const auto& form : helpForms)
        forms.emplace_back(form.name);
    m_parts->app
        .add_option_function<std::string>(
            "--help-as", [](const std::string& form) { throw HelpAs{form}; },
            "Print all help as a manual page or as a shell's completion and exit")
        ->check(CLI::IsMember(forms))
        ->type_name("FORM");
}

Program::~Program() = default;

Arguments Program::common() { return Arguments(m_parts->app); }

void Program::addGroup(const std::string& name, const std::string& help)
{
    auto* const group = m_parts->app.add_subcommand(name, help);
    group->require_subcommand(1)->fallthrough()->footer(m_parts->footer);
    m_parts->groups[name] = group;
}

void Program::add(Subcommand subcommand)
{
    auto* const app = m_parts->groups.at(subcommand.group)->add_subcommand(subcommand.name, subcommand.help);
    app->fallthrough()->footer(m_parts->footer);
    Arguments arguments(*app);
    if (subcommand.declare)
        subcommand.declare(arguments);
    m_parts->declared.push_back({app, std::move(subcommand.run)});
}

int Program::run(int count, char** arguments)
{
    m_parts->json = std::find(arguments, arguments + count, std::string_view("--json")) != arguments + count;
    const int code = parseAndRun(count, arguments);
    // What was printed may still be on its way: a full device or a closed one shows by now only.
    if (std::cout.flush())
        return code;
    const int told = code == done ? failed : code;
    tellFailure(
        m_parts->app.get_name(), "The output could not be written whole; is its device full?", told, m_parts->json);
    return told;
}

int Program::parseAndRun(int count, char** arguments)
{
    auto& app = m_parts->app;
    try {
        app.parse(count, arguments);
        for (const auto& each : m_parts->declared)
            if (each.app->parsed())
                return each.run();
        return wrongUse;
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success))
            return app.exit(error);
        const auto unknown = app.remaining(true);
        return m_parts->refuse(
            unknown.empty() ? error.what() : "Nobody knows what to do with '" + unknown.front() + "'.");
    } catch (const HelpAs& wanted) {
        const auto description = describe(app);
        for (const auto& form : helpForms)
            if (wanted.form == form.name)
                std::cout << form.make(description);
        return done;
    } catch (const WrongUse& error) {
        return m_parts->refuse(error.what());
    }
}

} // namespace zn::commandline
