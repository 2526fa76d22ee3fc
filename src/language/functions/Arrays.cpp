#include "language/functions/Given.h"
#include "language/functions/Intrinsic.h"
#include "language/run/RunContext.h"
#include "language/values/Record.h"

namespace zn::language {

namespace {

const ValueArray::Bound& boundOf(Given a)
{
    const auto* array = a[0].get<ArrayRef>();
    if (!array)
        raise(error::typeMismatch);
    const std::size_t dimension = countAt(a, 1, 1, 0);
    if (!*array || dimension < 1 || dimension > (*array)->bounds.size())
        raise(error::subscript);
    return (*array)->bounds[dimension - 1];
}

Value lowerBound(RunContext&, Given a) { return boundOf(a).lower; }

Value upperBound(RunContext&, Given a)
{
    const ValueArray::Bound& bound = boundOf(a);
    return static_cast<std::int32_t>(std::int64_t(bound.lower) + bound.count - 1);
}

Value arrayOf(RunContext& context, Given a)
{
    std::vector<Value> elements;
    elements.reserve(a.size());
    for (std::size_t i = 0; i < a.size(); ++i)
        elements.push_back(ownedValue(a.take(i)));
    Value out = Value::arrayOf(std::move(elements));
    (*out.get<ArrayRef>())->bounds[0].lower = context.arrayBase;
    return out;
}

Value either(RunContext&, Given a) { return a[truthOf(a[0]) ? 1 : 2]; }

Value chosen(RunContext&, Given a)
{
    const std::int32_t index = longOf(a[0]);
    if (index < 1 || static_cast<std::size_t>(index) >= a.size())
        return NullValue{};
    return a[static_cast<std::size_t>(index)];
}

Value switched(RunContext&, Given a)
{
    if (a.size() % 2 != 0)
        raise(error::invalidCall);
    for (std::size_t i = 0; i < a.size(); i += 2)
        if (truthOf(a[i]))
            return a[i + 1];
    return NullValue{};
}

constexpr ValueType any = ValueType::Variant;

constexpr Intrinsic functions[] = {
    {u"LBound", 1, 2, ValueType::Int32, lowerBound},
    {u"UBound", 1, 2, ValueType::Int32, upperBound},
    {u"Array", 0, -1, any, arrayOf},
    {u"IIf", 3, 3, any, either, u"Expression TruePart FalsePart"},
    {u"Choose", 2, -1, any, chosen},
    {u"Switch", 2, -1, any, switched},
};

} // namespace

std::span<const Intrinsic> arrayFunctions() { return functions; }

} // namespace zn::language
