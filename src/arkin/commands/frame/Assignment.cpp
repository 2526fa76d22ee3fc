#include "arkin/commands/frame/Assignment.h"

#include "base/Status.h"

namespace zn::arkin {

std::pair<zn::Text, zn::Text> splitAssignment(const std::string& text)
{
    const auto equals = text.find('=');
    if (equals == std::string::npos || equals == 0)
        throw zn::StatusError(zn::E_INVALIDARG, "'" + text + "' is no setting; write NAME=VALUE.");
    return {zn::toText(text.substr(0, equals)), zn::toText(text.substr(equals + 1))};
}

} // namespace zn::arkin
