#include "language/run/RunContext.h"

#include "language/objects/OwnClasses.h"
#include "language/values/Conversions.h"

namespace zn::language {

Text RunContext::pathOf(const Value& value) const
{
    const ValueType type = value.type();
    if (type == ValueType::Int32 || type == ValueType::Int64) {
        const std::int64_t pointer = *coerce(value, ValueType::Int64).get<std::int64_t>();
        if (const Text* text = pointers.textAt(pointer))
            return *text;
    }
    return textOf(value);
}

void RunContext::checkpoint() const
{
    if (host.stopRequested())
        throw Interruption{};
}

Value RunContext::createObject(const Text& programId)
{
    DispatchRef object = createOwnObject(programId, files);
    if (!object)
        object = host.createObject(programId);
    if (!object)
        raise(error::cannotCreateObject, Text(errorText(error::cannotCreateObject)) + u": " + programId);
    return Value(object);
}

} // namespace zn::language
