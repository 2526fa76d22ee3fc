#include "base/Dates.h"
#include "language/functions/Given.h"
#include "language/functions/Intrinsic.h"
#include "language/run/RunContext.h"

namespace zn::language {

namespace {

Value isNullValue(RunContext&, Given a) { return Value(isNull(a[0])); }

Value isEmptyValue(RunContext&, Given a) { return Value(a[0].isEmpty()); }

Value isNumericValue(RunContext&, Given a) { return Value(isNumeric(isObject(a[0]) ? plainValue(a[0]) : a[0])); }

Value isObjectValue(RunContext&, Given a) { return Value(isObject(a[0])); }

Value isArrayValue(RunContext&, Given a) { return Value(a[0].isArray()); }

Value isErrorValue(RunContext&, Given a) { return Value(a[0].type() == ValueType::Error); }

Value isMissingValue(RunContext&, Given a) { return Value(isMissingArgument(a[0])); }

Value isDateValue(RunContext&, Given a)
{
    double days = 0;
    const auto* text = a[0].get<Text>();
    return Value(a[0].type() == ValueType::Date || (text && parseDate(*text, days)));
}

Value typeName(RunContext&, Given a) { return typeNameOf(a[0]); }

Value typeNumber(RunContext&, Given a) { return std::int16_t(a[0].type()); }

constexpr ValueType truth = ValueType::Boolean;

constexpr Intrinsic functions[] = {
    {u"IsNull", 1, 1, truth, isNullValue},
    {u"IsEmpty", 1, 1, truth, isEmptyValue},
    {u"IsNumeric", 1, 1, truth, isNumericValue},
    {u"IsObject", 1, 1, truth, isObjectValue},
    {u"IsArray", 1, 1, truth, isArrayValue},
    {u"IsError", 1, 1, truth, isErrorValue},
    {u"IsMissing", 1, 1, truth, isMissingValue},
    {u"IsDate", 1, 1, truth, isDateValue},
    {u"TypeName", 1, 1, ValueType::String, typeName},
    {u"VarType", 1, 1, ValueType::Int16, typeNumber},
};

} // namespace

std::span<const Intrinsic> inspectionFunctions() { return functions; }

} // namespace zn::language
