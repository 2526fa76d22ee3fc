#pragma once

#include "base/Text.h"

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <type_traits>
#include <variant>

namespace zn {

/// What `formatText` puts in: a whole number, a fraction or a text.
class FormatArgument {
public:
    template <std::integral Number>
    FormatArgument(Number number)
        : value(Stored<Number>(number))
    {
    }
    FormatArgument(double number)
        : value(number)
    {
    }
    FormatArgument(TextView text)
        : value(toUtf8(text))
    {
    }
    FormatArgument(const Text& text)
        : value(toUtf8(text))
    {
    }
    FormatArgument(const char16_t* text)
        : value(toUtf8(text))
    {
    }
    FormatArgument(std::string text)
        : value(std::move(text))
    {
    }
    FormatArgument(const char* text)
        : value(std::string(text))
    {
    }

    std::variant<int, unsigned, std::int64_t, std::uint64_t, double, std::string> value;

private:
    template <class Number>
    using Stored = std::conditional_t<(sizeof(Number) <= sizeof(int)),
        std::conditional_t<std::is_signed_v<Number>, int, unsigned>,
        std::conditional_t<std::is_signed_v<Number>, std::int64_t, std::uint64_t>>;
};

/// Format string (UTF-8) of the printf family, with its arguments. Raises `fmt::format_error` for a wrong one.
Text formatTextOf(const char* format, std::initializer_list<FormatArgument> arguments);

/// printf-style format with `Text` arguments allowed for `%s`. The format string is UTF-8.
template <class... Arguments> Text formatText(const char* format, const Arguments&... arguments)
{
    return formatTextOf(format, {FormatArgument(arguments)...});
}

} // namespace zn
