#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}

namespace zn::commandline {

/// Wrong use that is found only when a command looks at its arguments' values; the program then ends with 2. The
/// sentence stands without the program's name and without a full stop's line end.
class WrongUse : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One option or argument that was declared; refines what it takes.
class Option {
public:
    explicit Option(CLI::Option* option)
        : m_option(option)
    {
    }

    Option& required();
    /// Both ends belong to the range.
    Option& range(std::int32_t least, std::int32_t most);
    Option& oneOf(const std::vector<std::string>& words);
    /// What the help shows for the value, such as "DIR".
    Option& shownAs(const std::string& word);
    /// The help tells the value that the variable has now.
    Option& showsDefault();
    /// A list that takes one value each time the option is given, so that arguments may follow it.
    Option& oneAtATime();

private:
    CLI::Option* m_option;
};

/// What a command takes. Each call names a variable that is written when the command line is read, and that must live
/// as long as the program. Names are "NAME" for an argument by its place, "-m,--comment" for options; the help is a
/// phrase without a full stop. The parser itself stays behind this header, since reading it costs every file some
/// seconds.
class Arguments {
public:
    explicit Arguments(CLI::App& app)
        : m_app(&app)
    {
    }

    Option option(const std::string& names, std::string& value, const std::string& help);
    /// Empty unless it is given.
    Option option(const std::string& names, std::optional<std::string>& value, const std::string& help);
    Option option(const std::string& names, std::int32_t& value, const std::string& help);
    Option option(const std::string& names, std::filesystem::path& value, const std::string& help);
    Option option(const std::string& names, std::vector<std::string>& values, const std::string& help);
    Option option(const std::string& names, std::vector<std::filesystem::path>& values, const std::string& help);
    Option flag(const std::string& names, bool& value, const std::string& help);

private:
    CLI::App* m_app;
};

} // namespace zn::commandline
