#pragma once

#include "base/Dispatch.h"
#include "language/values/Conversions.h"

#include <initializer_list>

namespace zn::language {

/// The arguments of a member call in the order of the member's parameters, named ones put to their places.
class ArgumentList {
public:
    /// Raises 450 for too many arguments and 448 for a name that isn't among the parameters.
    ArgumentList(const MemberCall& call, std::initializer_list<TextView> parameters);

    bool has(std::size_t index) const { return m_values[index] && !isMissingArgument(*m_values[index]); }
    /// Raises 449 if it isn't there.
    const Value& required(std::size_t index) const;

    Text text(std::size_t index) const { return textOf(required(index)); }
    Text text(std::size_t index, TextView otherwise) const { return has(index) ? text(index) : Text(otherwise); }
    bool flag(std::size_t index, bool otherwise) const { return has(index) ? truthOf(required(index)) : otherwise; }
    std::int32_t number(std::size_t index, std::int32_t otherwise) const
    {
        return has(index) ? longOf(required(index)) : otherwise;
    }

private:
    std::vector<const Value*> m_values;
};

} // namespace zn::language
