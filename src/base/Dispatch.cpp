#include "base/Dispatch.h"

namespace zn {

std::uint32_t DispatchObject::advise(const Text&, std::shared_ptr<EventSink>)
{
    throw StatusError(E_NOINTERFACE, "The object fires no events.");
}

void DispatchObject::unadvise(std::uint32_t) { }

Value DispatchObject::call(const Text& name, std::vector<Value> arguments)
{
    MemberCall member{name, MemberUse::Call, std::move(arguments), {}};
    return invoke(member);
}

void DispatchObject::put(const Text& name, Value value)
{
    MemberCall member{name, MemberUse::Put, {}, {}};
    member.arguments.push_back(std::move(value));
    invoke(member);
}

} // namespace zn
