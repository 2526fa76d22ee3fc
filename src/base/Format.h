#pragma once

#include "base/Text.h"

#include <fmt/printf.h>

namespace zn {

/// printf-style format with `Text` arguments allowed for `%s`. The format string is UTF-8.
template <class... Arguments> Text formatText(const char* format, const Arguments&... arguments)
{
    return toText(fmt::sprintf(fmt::string_view(format), detail::formatArgument(arguments)...));
}

} // namespace zn
