#include "language/values/Operators.h"

#include "language/values/Conversions.h"
#include "language/values/Like.h"

#include <cmath>
#include <limits>

namespace zn::language {

namespace {

enum class Rank { Byte, Integer, Long, LongLong, Single, Double, Currency, Date };

Rank rankOf(const Value& value)
{
    switch (value.type()) {
    case ValueType::UInt8:
        return Rank::Byte;
    case ValueType::Empty:
    case ValueType::Boolean:
    case ValueType::Int16:
        return Rank::Integer;
    case ValueType::Int32:
        return Rank::Long;
    case ValueType::Int64:
        return Rank::LongLong;
    case ValueType::Float32:
        return Rank::Single;
    case ValueType::Float64:
    case ValueType::String:
        return Rank::Double;
    case ValueType::Currency:
        return Rank::Currency;
    case ValueType::Date:
        return Rank::Date;
    default:
        raise(error::typeMismatch);
    }
}

bool isWhole(Rank rank) { return rank <= Rank::LongLong; }

/// The type in which two ranks meet. A long integer and a single don't fit each other's digits.
Rank meet(Rank a, Rank b)
{
    const Rank high = std::max(a, b);
    const Rank low = std::min(a, b);
    if (high == Rank::Single && (low == Rank::Long || low == Rank::LongLong))
        return Rank::Double;
    return high;
}

std::int64_t wholeOf(const Value& value)
{
    if (const auto* number = value.get<std::int32_t>())
        return *number;
    return *coerce(value, ValueType::Int64).get<std::int64_t>();
}

Value wholeResult(std::int64_t number, Rank rank, bool widens)
{
    if (rank == Rank::Byte) {
        if (number >= 0 && number <= 255)
            return std::uint8_t(number);
        rank = Rank::Integer;
        if (!widens)
            raise(error::overflow);
    }
    if (rank == Rank::Integer) {
        if (number >= std::numeric_limits<std::int16_t>::min() && number <= std::numeric_limits<std::int16_t>::max())
            return std::int16_t(number);
        if (!widens)
            raise(error::overflow);
        rank = Rank::Long;
    }
    if (rank == Rank::Long) {
        if (number >= std::numeric_limits<std::int32_t>::min() && number <= std::numeric_limits<std::int32_t>::max())
            return std::int32_t(number);
        if (!widens)
            raise(error::overflow);
        return double(number);
    }
    return number;
}

Value wholeArithmetic(Operator op, std::int64_t a, std::int64_t b, Rank rank, bool widens)
{
    std::int64_t result = 0;
    const bool overflows = op == Operator::Add ? __builtin_add_overflow(a, b, &result)
        : op == Operator::Subtract             ? __builtin_sub_overflow(a, b, &result)
                                               : __builtin_mul_overflow(a, b, &result);
    if (overflows)
        raise(error::overflow);
    return wholeResult(result, rank, widens);
}

double floatArithmetic(Operator op, double a, double b)
{
    const double result = op == Operator::Add ? a + b : op == Operator::Subtract ? a - b : a * b;
    if (!std::isfinite(result))
        raise(error::overflow);
    return result;
}

Value singleResult(double number, bool widens)
{
    if (std::fabs(number) <= double(std::numeric_limits<float>::max()))
        return static_cast<float>(number);
    if (!widens)
        raise(error::overflow);
    return number;
}

Value currencyArithmetic(Operator op, const Value& left, const Value& right)
{
    const auto a = coerce(left, ValueType::Currency).get<CurrencyValue>()->tenThousandths;
    const auto b = coerce(right, ValueType::Currency).get<CurrencyValue>()->tenThousandths;
    if (op == Operator::Multiply)
        return coerce(Value(double(a) / 10000.0 * (double(b) / 10000.0)), ValueType::Currency);
    std::int64_t result = 0;
    if (op == Operator::Add ? __builtin_add_overflow(a, b, &result) : __builtin_sub_overflow(a, b, &result))
        raise(error::overflow);
    return CurrencyValue{result};
}

/// `+`, `-` and `*` on numbers.
Value arithmetic(Operator op, const Value& left, const Value& right, bool widens)
{
    const Rank leftRank = rankOf(left);
    const Rank rightRank = rankOf(right);
    const Rank rank = meet(leftRank, rightRank);
    if (isWhole(rank))
        return wholeArithmetic(op, wholeOf(left), wholeOf(right), rank, widens);
    if (rank == Rank::Currency)
        return currencyArithmetic(op, left, right);
    const double result = floatArithmetic(op, numberOf(left), numberOf(right));
    if (rank == Rank::Single)
        return singleResult(result, widens);
    const bool isDate = rank == Rank::Date && op != Operator::Multiply
        && !(op == Operator::Subtract && leftRank == rightRank); // the distance of two dates is a number
    if (isDate)
        return DateValue{result};
    return result;
}

Value add(const Value& left, const Value& right, OperatorRules rules)
{
    const auto* leftText = left.get<Text>();
    const auto* rightText = right.get<Text>();
    if (leftText && rightText)
        return *leftText + *rightText;
    if (leftText && right.isEmpty())
        return left;
    if (rightText && left.isEmpty())
        return right;
    return arithmetic(Operator::Add, left, right, rules.widens());
}

Value divide(const Value& left, const Value& right)
{
    const double divisor = numberOf(right);
    const double dividend = numberOf(left);
    if (divisor == 0)
        raise(dividend == 0 ? error::overflow : error::divisionByZero);
    const double result = dividend / divisor;
    if (!std::isfinite(result))
        raise(error::overflow);
    const Rank rank = meet(rankOf(left), rankOf(right));
    const bool single = rank == Rank::Single && left.type() != ValueType::Int32 && right.type() != ValueType::Int32;
    return single ? singleResult(result, true) : Value(result);
}

/// `\` and `Mod` round their operands to whole numbers first.
Value wholeDivision(Operator op, const Value& left, const Value& right)
{
    const Rank met = meet(rankOf(left), rankOf(right));
    const Rank rank = isWhole(met) ? met : Rank::Long;
    const std::int64_t dividend = wholeOf(left);
    const std::int64_t divisor = wholeOf(right);
    if (divisor == 0)
        raise(error::divisionByZero);
    if (divisor == -1) // the one quotient that 64 bits can't hold traps the processor
        return op == Operator::Modulo ? wholeResult(0, rank, false)
                                      : wholeArithmetic(Operator::Subtract, 0, dividend, rank, true);
    return wholeResult(op == Operator::IntegerDivide ? dividend / divisor : dividend % divisor, rank, true);
}

Value power(const Value& left, const Value& right)
{
    const double base = numberOf(left);
    const double exponent = numberOf(right);
    if ((base == 0 && exponent < 0) || (base < 0 && exponent != std::trunc(exponent)))
        raise(error::invalidCall);
    const double result = std::pow(base, exponent);
    if (!std::isfinite(result))
        raise(error::overflow);
    return result;
}

std::int64_t bits(Operator op, std::int64_t a, std::int64_t b)
{
    switch (op) {
    case Operator::And:
        return a & b;
    case Operator::Or:
        return a | b;
    case Operator::Xor:
        return a ^ b;
    case Operator::Eqv:
        return ~(a ^ b);
    default:
        return ~a | b;
    }
}

/// Numbers are combined bit by bit in the wider of their types, fractions rounded to a Long before.
Rank logicRank(const Value& left, const Value& right)
{
    const auto whole = [](const Value& value) {
        const Rank rank = rankOf(value);
        return isWhole(rank) ? rank : Rank::Long;
    };
    return std::max(whole(left), whole(right));
}

/// False decides an `And`, true an `Or`, whatever the unknown other side is; the rest stays unknown.
Value nullLogic(Operator op, const Value& left, const Value& right)
{
    const bool bothNull = isNull(left) && isNull(right);
    if (bothNull)
        return NullValue{};
    const Value& known = isNull(left) ? right : left;
    const bool truth = truthOf(known);
    if (op == Operator::And && !truth)
        return known;
    if (op == Operator::Or && truth)
        return known;
    if (op == Operator::Imp && (isNull(left) ? truth : !truth))
        return isNull(left) ? known : Value(true);
    return NullValue{};
}

Value logic(Operator op, const Value& left, const Value& right)
{
    if (isNull(left) || isNull(right))
        return nullLogic(op, left, right);
    const bool booleans = left.type() == ValueType::Boolean && right.type() == ValueType::Boolean;
    if (booleans)
        return BooleanValue{
            static_cast<std::int16_t>(bits(op, left.get<BooleanValue>()->bits, right.get<BooleanValue>()->bits))};
    return wholeResult(bits(op, wholeOf(left), wholeOf(right)), logicRank(left, right), true);
}

bool holds(Operator op, int order)
{
    switch (op) {
    case Operator::Equal:
        return order == 0;
    case Operator::NotEqual:
        return order != 0;
    case Operator::Less:
        return order < 0;
    case Operator::Greater:
        return order > 0;
    case Operator::LessOrEqual:
        return order <= 0;
    default:
        return order >= 0;
    }
}

bool sameObject(const Value& left, const Value& right)
{
    if (!isObject(left) || !isObject(right))
        raise(error::objectRequired);
    return *left.get<ObjectRef>() == *right.get<ObjectRef>();
}

Value negate(const Value& operand, OperatorRules rules)
{
    const Rank rank = rankOf(operand);
    if (rank == Rank::Byte)
        return wholeResult(-wholeOf(operand), Rank::Integer, rules.widens());
    if (rank == Rank::Date)
        return DateValue{-operand.get<DateValue>()->days};
    if (rank == Rank::Single)
        return -*operand.get<float>();
    return arithmetic(Operator::Subtract, std::int16_t(0), operand, rules.widens());
}

Value invert(const Value& operand)
{
    if (const auto* flag = operand.get<BooleanValue>())
        return BooleanValue{static_cast<std::int16_t>(~flag->bits)};
    return wholeResult(~wholeOf(operand), logicRank(operand, operand), true);
}

Value applyPlain(Operator op, const Value& left, const Value& right, OperatorRules rules)
{
    switch (op) {
    case Operator::Concatenate:
        if (isNull(left) && isNull(right))
            return NullValue{};
        return (isNull(left) ? Text() : textOf(left)) + (isNull(right) ? Text() : textOf(right));
    case Operator::And:
    case Operator::Or:
    case Operator::Xor:
    case Operator::Eqv:
    case Operator::Imp:
        return logic(op, left, right);
    default:
        break;
    }
    if (isNull(left) || isNull(right))
        return NullValue{};
    switch (op) {
    case Operator::Add:
        return add(left, right, rules);
    case Operator::Subtract:
    case Operator::Multiply:
        return arithmetic(op, left, right, rules.widens());
    case Operator::Divide:
        return divide(left, right);
    case Operator::IntegerDivide:
    case Operator::Modulo:
        return wholeDivision(op, left, right);
    case Operator::Power:
        return power(left, right);
    case Operator::Like:
        return matchesPattern(textOf(left), textOf(right), rules.ignoreCase);
    default:
        return holds(op, compareValues(left, right, rules));
    }
}

} // namespace

namespace {

/// How a text and a number meet depends on where they come from: two Variants keep their kinds apart, numbers first;
/// a text that is no Variant makes a Variant a text; in all other cases the text has to be a number.
enum class Meeting { NumbersFirst, AsTexts, AsNumbers };

Meeting meetingOf(const Value& left, const Value& right, OperatorRules rules)
{
    if ((left.type() == ValueType::String) == (right.type() == ValueType::String))
        return Meeting::AsNumbers;
    if (rules.leftVariant && rules.rightVariant)
        return Meeting::NumbersFirst;
    const bool textIsVariant = left.type() == ValueType::String ? rules.leftVariant : rules.rightVariant;
    return rules.widens() && !textIsVariant ? Meeting::AsTexts : Meeting::AsNumbers;
}

/// An array of bytes counts as the text that it makes. Raises 13 for any other array.
Value textForBytes(const Value& value) { return value.isArray() ? Value(textOf(value)) : value; }

} // namespace

int compareValues(const Value& left, const Value& right, OperatorRules rules)
{
    const auto* leftText = left.get<Text>();
    const auto* rightText = right.get<Text>();
    const Text empty;
    if (leftText && right.isEmpty())
        rightText = &empty;
    if (rightText && left.isEmpty())
        leftText = &empty;
    if (leftText && rightText)
        return rules.ignoreCase ? compareNoCase(*leftText, *rightText) : leftText->compare(*rightText);
    if (left.isArray() || right.isArray())
        raise(error::typeMismatch);
    const Meeting meeting = meetingOf(left, right, rules);
    if (meeting == Meeting::NumbersFirst)
        return leftText ? 1 : -1;
    if (meeting == Meeting::AsTexts)
        return compareValues(Value(textOf(left)), Value(textOf(right)), rules);
    if (isWhole(rankOf(left)) && isWhole(rankOf(right))) {
        const std::int64_t a = wholeOf(left);
        const std::int64_t b = wholeOf(right);
        return a < b ? -1 : a > b;
    }
    // A single compares by the digits that it has, so that 0.1 read as a single equals the single 0.1.
    const bool single = left.type() == ValueType::Float32 || right.type() == ValueType::Float32;
    const double a = single ? double(float(numberOf(left))) : numberOf(left);
    const double b = single ? double(float(numberOf(right))) : numberOf(right);
    return a < b ? -1 : a > b;
}

Value applyBinary(Operator op, const Value& left, const Value& right, OperatorRules rules)
{
    if (op == Operator::Is)
        return sameObject(left, right);
    if (left.isArray() || right.isArray())
        return applyBinary(op, textForBytes(left), textForBytes(right), rules);
    if (isObject(left) || isObject(right))
        return applyPlain(op, plainValue(left), plainValue(right), rules);
    return applyPlain(op, left, right, rules);
}

Value applyUnary(Operator op, const Value& operand, OperatorRules rules)
{
    if (operand.isArray())
        raise(error::typeMismatch);
    Value plain = plainValue(operand);
    if (isNull(plain))
        return plain;
    return op == Operator::Not ? invert(plain) : negate(plain, rules);
}

} // namespace zn::language
