#include "macro/MacroResources.h"

#include "base/Status.h"

namespace zn {

// Embedded from resources/macros/, single-byte texts with carriage return and line feed.
extern const std::string_view convertFilesMacro;
extern const std::string_view executeScriptMacro;

Text defaultMacro(TaskKind kind)
{
    if (kind == TaskKind::Printing)
        throw StatusError(
            E_NOTIMPL, "There is no default macro for printing yet. Please give the task its own script.");
    return fromCodePage(kind == TaskKind::Conversion ? convertFilesMacro : executeScriptMacro);
}

} // namespace zn
