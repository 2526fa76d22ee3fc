#pragma once

#include "commandline/Arguments.h"

#include <functional>
#include <memory>
#include <string>

namespace zn::commandline {

/// Exit codes of every program.
inline constexpr int done = 0;
inline constexpr int failed = 1;
inline constexpr int wrongUse = 2;

/// One subcommand, as "arkin task create": what it is called, what it takes, what it does.
struct Subcommand {
    std::string group; ///< empty for those that stand by themselves
    std::string name;
    std::string help;
    std::function<void(Arguments&)> declare;
    /// Returns the exit code. Raises `WrongUse`; says any other failure itself.
    std::function<int()> run;
};

/// A program of subcommands. Help is "--help" everywhere, "--version" prints the software's version; wrong use is told
/// on the error stream with the help to try.
class Program {
public:
    /// The footer stands below the help of the program and of each subcommand.
    Program(const std::string& name, const std::string& help, const std::string& footer);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program();

    /// Options that may stand before or behind every subcommand.
    Arguments common();
    void addGroup(const std::string& name, const std::string& help);
    /// Its group was added before.
    void add(Subcommand subcommand);
    /// Reads the command line, runs the subcommand that it names, and returns the exit code.
    int run(int count, char** arguments);

private:
    int parseAndRun(int count, char** arguments);

    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace zn::commandline
