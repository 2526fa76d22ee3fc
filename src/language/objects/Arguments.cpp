#include "language/objects/Arguments.h"

#include <algorithm>

namespace zn::language {

ArgumentList::ArgumentList(const MemberCall& call, std::initializer_list<TextView> parameters)
    : m_values(parameters.size(), nullptr)
{
    const std::size_t positional = call.arguments.size() - call.argumentNames.size();
    for (std::size_t i = 0; i < call.arguments.size(); ++i) {
        std::size_t place = i;
        if (i >= positional) {
            const Text& name = call.argumentNames[i - positional];
            const auto* hit = std::ranges::find_if(parameters, [&](TextView p) { return equalNoCase(p, name); });
            if (hit == parameters.end())
                raise(error::namedArgumentMissing);
            place = static_cast<std::size_t>(hit - parameters.begin());
        }
        if (place >= m_values.size())
            raise(error::argumentCount);
        m_values[place] = &call.arguments[i];
    }
}

const Value& ArgumentList::required(std::size_t index) const
{
    if (!has(index))
        raise(error::argumentRequired);
    return *m_values[index];
}

} // namespace zn::language
