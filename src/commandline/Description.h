#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace zn::commandline {

/// One option or argument, as the help tells it.
struct OptionDescription {
    std::vector<std::string> names; ///< "-m", "--comment"; none for an argument by its place
    std::string value;              ///< "DIR", "TEXT"; the argument's name; empty for a flag
    std::vector<std::string> words; ///< the values that it takes, if they can be told
    std::string limits;             ///< "1 to 999", in words
    std::string standard;           ///< the value without it
    std::string help;
    bool required = false;
    bool repeated = false; ///< takes several values
};

/// A program, or one of its groups and subcommands.
struct CommandDescription {
    std::string name;
    std::string help;
    std::string footer;
    std::vector<OptionDescription> options; ///< arguments by their place among them
    std::vector<CommandDescription> commands;
};

/// What was declared to the parser: the same from which it makes its help.
CommandDescription describe(const CLI::App& app);

} // namespace zn::commandline
