#pragma once

#include "base/Value.h"

#include <optional>
#include <span>

namespace zn::language {

class RunContext;

/// A function of the language itself.
struct Intrinsic {
    TextView name;
    int least; ///< number of arguments
    int most;  ///< -1: any
    ValueType result;
    /// Arguments that the call leaves out are `missingArgument()`, and those behind the last given one are absent.
    Value (*run)(RunContext& context, std::span<Value> arguments);
    /// Names for `name:=value`, parted by blanks; empty if the function takes none.
    TextView parameters = {};
};

/// Null if there is no such function. A name may end in "$".
const Intrinsic* findIntrinsic(TextView name);

/// The value of a constant of the language ("vbCrLf").
std::optional<Value> languageConstant(TextView name);

std::span<const Intrinsic> textFunctions();
std::span<const Intrinsic> searchFunctions();
std::span<const Intrinsic> arrayFunctions();
std::span<const Intrinsic> conversionFunctions();
std::span<const Intrinsic> inspectionFunctions();
std::span<const Intrinsic> mathFunctions();
std::span<const Intrinsic> dateFunctions();
std::span<const Intrinsic> formatFunctions();
std::span<const Intrinsic> fileFunctions();
std::span<const Intrinsic> interactionFunctions();

} // namespace zn::language
