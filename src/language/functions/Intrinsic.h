#pragma once

#include "base/Value.h"

#include <optional>
#include <span>

namespace zn::language {

class RunContext;

/// The arguments of a call. Those that are variables are lent and not copied, so that a scan over a long text takes
/// as long as the text is.
class Given {
public:
    struct Entry {
        const Value* value = nullptr;
        Value* own = nullptr; ///< the same, if it is nobody else's
    };

    explicit Given(std::span<const Entry> entries)
        : m_entries(entries)
    {
    }

    std::size_t size() const { return m_entries.size(); }
    const Value& operator[](std::size_t index) const { return *m_entries[index].value; }
    /// Moved out if nobody else has it.
    Value take(std::size_t index) const
    {
        const Entry& entry = m_entries[index];
        if (!entry.own)
            return *entry.value;
        return std::move(*entry.own);
    }

private:
    std::span<const Entry> m_entries;
};

/// A function of the language itself.
struct Intrinsic {
    TextView name;
    int least; ///< number of arguments
    int most;  ///< -1: any
    ValueType result;
    /// Arguments that the call leaves out are `missingArgument()`, and those behind the last given one are absent.
    Value (*run)(RunContext& context, Given arguments);
    /// Names for `name:=value`, parted by blanks; empty if the function takes none.
    TextView parameters = {};
};

/// Null if there is no such function. A name may end in "$".
const Intrinsic* findIntrinsic(TextView name);

/// The value of a constant of the language ("vbCrLf").
std::optional<Value> languageConstant(TextView name);

std::span<const Intrinsic> textFunctions();
std::span<const Intrinsic> byteFunctions();
std::span<const Intrinsic> searchFunctions();
std::span<const Intrinsic> arrayFunctions();
std::span<const Intrinsic> conversionFunctions();
std::span<const Intrinsic> inspectionFunctions();
std::span<const Intrinsic> mathFunctions();
std::span<const Intrinsic> financialFunctions();
std::span<const Intrinsic> dateFunctions();
std::span<const Intrinsic> formatFunctions();
std::span<const Intrinsic> fileFunctions();
std::span<const Intrinsic> interactionFunctions();

} // namespace zn::language
