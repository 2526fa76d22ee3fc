#pragma once

#include "base/Object.h"
#include "base/Value.h"

#include <string>
#include <vector>

namespace zn {

enum class MemberUse {
    Call,      ///< method call, or the read of a property; an object may not tell the two apart
    Put,       ///< property write by value; the new value is the last argument
    PutObject, ///< property write by reference (`Set`); likewise
};

/// One call of a member by name. Names are compared without regard to case.
struct MemberCall {
    Text name;
    MemberUse use = MemberUse::Call;
    /// In order. The callee writes by-reference results back into the element; the caller copies them out.
    std::vector<Value> arguments;
    /// Names of the last `argumentNames.size()` arguments (`Name:=value`), usually empty.
    std::vector<Text> argumentNames;
};

/// Receives the numbered events of one event interface of an object.
class EventSink : public Object {
public:
    /// Called synchronously on the thread that waits in a call into the object's process.
    /// The result goes back to the source; no exception may leave.
    virtual Status onEvent(std::int32_t number, const std::vector<Value>& arguments) = 0;
};

/// An object whose members are called by name: what the macro language calls inside the CAD process
/// and what a client holds outside it.
class DispatchObject : public Object {
public:
    /// Calls a member. Raises `DISP_E_MEMBERNOTFOUND`, `DISP_E_BADPARAMCOUNT`, `DISP_E_TYPEMISMATCH`,
    /// or the member's own failure, as a `StatusError`. The empty name is the default member.
    virtual Value invoke(MemberCall& call) = 0;

    /// The name of the object's class, such as "ModelDoc2"; what `TypeName` shows.
    virtual Text typeName() const = 0;

    /// Names of what the object offers beyond what every object of its class has; asking is no call of a member.
    virtual std::vector<Text> facilities() const { return {}; }

    /// Connects a sink to an event interface ("PartDocEvents" …) and returns its cookie.
    /// Raises `E_NOINTERFACE` if the object fires no such events.
    virtual std::uint32_t advise(const Text& eventInterface, std::shared_ptr<EventSink> sink);
    /// Ends a connection. An unknown cookie is a success: it is ended already.
    virtual void unadvise(std::uint32_t cookie);

    /// Reads or calls without by-reference results.
    Value call(const Text& name, std::vector<Value> arguments = {});
    void put(const Text& name, Value value);
};

using DispatchRef = std::shared_ptr<DispatchObject>;

} // namespace zn
