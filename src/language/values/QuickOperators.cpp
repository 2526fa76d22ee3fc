#include "language/values/QuickOperators.h"

#include <cmath>
#include <limits>

namespace zn::language {

namespace {

enum class Kind { None, Short, Long, Double };

struct Number {
    Kind kind = Kind::None;
    std::int32_t whole = 0;
    double real = 0;
};

Number numberIn(const Value& value)
{
    if (const auto* number = value.get<std::int32_t>())
        return {Kind::Long, *number, double(*number)};
    if (const auto* number = value.get<std::int16_t>())
        return {Kind::Short, *number, double(*number)};
    if (const auto* number = value.get<double>())
        return {Kind::Double, 0, *number};
    return {};
}

template <class T> bool compare(Operator op, T a, T b, Value& result)
{
    switch (op) {
    case Operator::Equal:
        result = Value(a == b);
        return true;
    case Operator::NotEqual:
        result = Value(a != b);
        return true;
    case Operator::Less:
        result = Value(a < b);
        return true;
    case Operator::Greater:
        result = Value(a > b);
        return true;
    case Operator::LessOrEqual:
        result = Value(a <= b);
        return true;
    case Operator::GreaterOrEqual:
        result = Value(a >= b);
        return true;
    default:
        return false;
    }
}

template <class T> bool fitting(std::int64_t number, Value& result)
{
    if (number < std::numeric_limits<T>::min() || number > std::numeric_limits<T>::max())
        return false;
    result = Value(static_cast<T>(number));
    return true;
}

bool wholeResult(Operator op, std::int64_t a, std::int64_t b, bool isLong, Value& result)
{
    std::int64_t number = 0;
    if (op == Operator::Add)
        number = a + b;
    else if (op == Operator::Subtract)
        number = a - b;
    else if (op == Operator::Multiply)
        number = a * b;
    else if (op == Operator::IntegerDivide && b != 0)
        number = a / b;
    else if (op == Operator::Modulo && b != 0)
        number = a % b;
    else
        return false;
    return isLong ? fitting<std::int32_t>(number, result) : fitting<std::int16_t>(number, result);
}

bool realResult(Operator op, double a, double b, Value& result)
{
    double number = 0;
    if (op == Operator::Add)
        number = a + b;
    else if (op == Operator::Subtract)
        number = a - b;
    else if (op == Operator::Multiply)
        number = a * b;
    else if (op == Operator::Divide && b != 0)
        number = a / b;
    else
        return false;
    if (!std::isfinite(number))
        return false;
    result = Value(number);
    return true;
}

} // namespace

bool applyQuickly(Operator op, const Value& left, const Value& right, Value& result)
{
    const Number a = numberIn(left);
    if (a.kind == Kind::None)
        return false;
    const Number b = numberIn(right);
    if (b.kind == Kind::None)
        return false;
    if (a.kind != Kind::Double && b.kind != Kind::Double)
        return compare(op, a.whole, b.whole, result)
            || wholeResult(op, a.whole, b.whole, a.kind == Kind::Long || b.kind == Kind::Long, result)
            || (op == Operator::Divide && realResult(op, a.real, b.real, result));
    return compare(op, a.real, b.real, result) || realResult(op, a.real, b.real, result);
}

} // namespace zn::language
