#include "language/values/Record.h"

namespace zn::language {

Value ownCopy(const Value& value)
{
    if (const auto* array = value.get<ArrayRef>(); array && *array) {
        auto copy = std::make_shared<ValueArray>(**array);
        for (Value& element : copy->elements)
            element = ownCopy(element);
        return Value(std::move(copy));
    }
    if (const auto* held = value.get<ObjectRef>()) {
        if (const auto record = query<Record>(*held)) {
            auto copy = std::make_shared<Record>(record->typeIndex, record->typeName, record->fields);
            for (Value& field : copy->fields)
                field = ownCopy(field);
            return Value(ObjectRef(std::move(copy)));
        }
    }
    return value;
}

Value ownedValue(Value value)
{
    if (const auto* array = value.get<ArrayRef>())
        return array->use_count() > 1 ? ownCopy(value) : value;
    if (const auto* held = value.get<ObjectRef>(); held && held->use_count() > 1 && query<Record>(*held))
        return ownCopy(value);
    return value;
}

} // namespace zn::language
