#include "addin/macro/MacroResources.h"

#include <string_view>

namespace zn {

// Embedded from resources/macros/, single-byte texts with carriage return and line feed.
extern const std::string_view convertFilesMacro;
extern const std::string_view printFilesMacro;
extern const std::string_view executeScriptMacro;

Text defaultMacro(TaskKind kind)
{
    switch (kind) {
    case TaskKind::Conversion:
        return fromCodePage(convertFilesMacro);
    case TaskKind::Printing:
        return fromCodePage(printFilesMacro);
    default:
        return fromCodePage(executeScriptMacro);
    }
}

} // namespace zn
