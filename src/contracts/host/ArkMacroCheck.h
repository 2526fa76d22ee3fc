#pragma once

#include "base/Object.h"
#include "base/Status.h"
#include "base/Text.h"

#include <vector>

namespace zn {

/// Something in a macro template that a run will not take as its author meant it. Line and column count from 1, a
/// column counts 16-bit units.
struct ArkMacroWarning {
    std::int32_t line = 0;
    std::int32_t column = 0;
    Text sentence;
};

/// What an add-in's object may be, too: looks at the macro templates of its tasks before one is run.
class IArkMacroCheck {
public:
    virtual ~IArkMacroCheck() = default;
    /// Of the task's script: placeholders that name nothing that a run could put there, and brackets that are never
    /// closed, in their order. `runNames` are the names that the host's second lookup knows, with "#1" and so on for
    /// its numbers. `task` is an `IArkTaskProperties`. Writes nothing.
    virtual Status CheckMacro(const ObjectRef& vault, const ObjectRef& task, const std::vector<Text>& runNames,
        std::vector<ArkMacroWarning>& warnings)
        = 0;
};

} // namespace zn
