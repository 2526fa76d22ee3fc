#include "language/Reason.h"

#include "language/values/Errors.h"

#include <algorithm>
#include <array>

namespace zn::language {

namespace {

struct NumberReason {
    std::int32_t number;
    Reason reason;
};

constexpr auto reasons = std::to_array<NumberReason>({
    {error::invalidCall, Reason::InvalidArgument},
    {error::overflow, Reason::Overflow},
    {error::outOfMemory, Reason::OutOfMemory},
    {error::subscript, Reason::InvalidIndex},
    {error::typeMismatch, Reason::TypeMismatch},
    {error::outOfTextSpace, Reason::OutOfMemory},
    {error::outOfStack, Reason::OutOfMemory},
    {error::procedureMissing, Reason::ProcedureExpected},
    {error::badFileNumber, Reason::OpenFailed},
    {error::fileNotFound, Reason::OpenFailed},
    {error::fileAlreadyOpen, Reason::OpenFailed},
    {error::deviceError, Reason::DiskError},
    {error::diskFull, Reason::SaveFailed},
    {error::tooManyFiles, Reason::TooManyFiles},
    {error::permissionDenied, Reason::PermissionDenied},
    {error::pathAccess, Reason::PermissionDenied},
    {error::pathNotFound, Reason::OpenFailed},
    {error::cannotCreateObject, Reason::CallFailed},
    {error::memberMissing, Reason::ProcedureExpected},
    {error::argumentRequired, Reason::ParameterMissing},
    {error::argumentCount, Reason::InvalidParameterCount},
    {380, Reason::InvalidPropertyType},
    {error::functionMissing, Reason::CallFailed},
});

struct MessageReason {
    TextView beginning;
    Reason reason;
};

constexpr auto messages = std::to_array<MessageReason>({
    {u"Sub or Function not defined", Reason::ProcedureExpected},
    {u"Expected: Sub, Function or Property", Reason::ProcedureExpected},
    {u"Wrong number of arguments", Reason::InvalidParameterCount},
    {u"Argument not optional", Reason::ParameterMissing},
    {u"User-defined type not defined", Reason::InvalidVariableType},
    {u"ByRef argument type mismatch", Reason::TypeMismatch},
    {u"Type mismatch", Reason::TypeMismatch},
});

} // namespace

Reason reasonOf(const RuntimeFault& fault)
{
    switch (fault.kind) {
    case FaultKind::MissingProcedure:
        return Reason::InvalidProcedureName;
    case FaultKind::ParameterCount:
        return Reason::InvalidParameterCount;
    case FaultKind::Interrupted:
        return Reason::Interrupted;
    case FaultKind::RuntimeError:
        break;
    }
    const auto hit = std::ranges::find(reasons, fault.number, &NumberReason::number);
    return hit != reasons.end() ? hit->reason : Reason::UnhandledException;
}

Reason reasonOf(const SyntaxError& failure)
{
    for (const MessageReason& entry : messages)
        if (failure.message().starts_with(entry.beginning))
            return entry.reason;
    return Reason::CallFailed;
}

} // namespace zn::language
