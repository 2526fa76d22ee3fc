#include "commandline/Arguments.h"

#include <CLI/CLI.hpp>

namespace zn::commandline {

Option& Option::required()
{
    m_option->required();
    return *this;
}

Option& Option::range(std::int32_t least, std::int32_t most)
{
    m_option->check(CLI::Range(least, most));
    return *this;
}

Option& Option::oneOf(const std::vector<std::string>& words)
{
    m_option->check(CLI::IsMember(words));
    return *this;
}

Option& Option::shownAs(const std::string& word)
{
    m_option->type_name(word);
    return *this;
}

Option& Option::showsDefault()
{
    m_option->capture_default_str();
    return *this;
}

Option& Option::oneAtATime()
{
    m_option->allow_extra_args(false);
    return *this;
}

Option Arguments::option(const std::string& names, std::string& value, const std::string& help)
{
    return Option(m_app->add_option(names, value, help));
}

Option Arguments::option(const std::string& names, std::optional<std::string>& value, const std::string& help)
{
    return Option(m_app->add_option(names, value, help));
}

Option Arguments::option(const std::string& names, std::int32_t& value, const std::string& help)
{
    return Option(m_app->add_option(names, value, help));
}

Option Arguments::option(const std::string& names, std::filesystem::path& value, const std::string& help)
{
    return Option(m_app->add_option(names, value, help));
}

Option Arguments::option(const std::string& names, std::vector<std::string>& values, const std::string& help)
{
    return Option(m_app->add_option(names, values, help));
}

Option Arguments::option(const std::string& names, std::vector<std::filesystem::path>& values, const std::string& help)
{
    return Option(m_app->add_option(names, values, help));
}

Option Arguments::flag(const std::string& names, bool& value, const std::string& help)
{
    return Option(m_app->add_flag(names, value, help));
}

} // namespace zn::commandline
