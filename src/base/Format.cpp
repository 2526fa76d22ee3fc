#include "base/Format.h"

#include <fmt/args.h>
#include <fmt/printf.h>

namespace zn {

Text formatTextOf(const char* format, std::initializer_list<FormatArgument> arguments)
{
    fmt::dynamic_format_arg_store<fmt::printf_context> store;
    for (const auto& argument : arguments)
        std::visit([&](const auto& value) { store.push_back(value); }, argument.value);
    return toText(fmt::vsprintf(fmt::string_view(format), fmt::basic_format_args<fmt::printf_context>(store)));
}

} // namespace zn
