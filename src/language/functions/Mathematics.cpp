#include "language/functions/Given.h"
#include "language/functions/Intrinsic.h"
#include "language/Host.h"
#include "language/run/RunContext.h"

#include <cmath>

namespace zn::language {

namespace {

/// A number stays of its type; a text becomes a Double.
template <class Work> Value ofNumber(const Value& given, Work&& work)
{
    Value value = plainValue(given);
    if (isNull(value))
        return value;
    const double result = work(numberOf(value));
    const ValueType type = value.type();
    const bool keepsType = type != ValueType::String && type != ValueType::Boolean && !value.isEmpty();
    return keepsType ? coerce(Value(result), type) : coerce(Value(result), ValueType::Float64);
}

template <double (*Function)(double)> Value computed(RunContext&, Given a)
{
    const double result = Function(numberOf(a[0]));
    if (!std::isfinite(result))
        raise(error::overflow);
    return result;
}

double arcTangent(double x) { return std::atan(x); }
double sine(double x) { return std::sin(x); }
double cosine(double x) { return std::cos(x); }
double tangent(double x) { return std::tan(x); }
double exponential(double x) { return std::exp(x); }

double squareRoot(double x)
{
    if (x < 0)
        raise(error::invalidCall);
    return std::sqrt(x);
}

double logarithm(double x)
{
    if (x <= 0)
        raise(error::invalidCall);
    return std::log(x);
}

Value absolute(RunContext&, Given a)
{
    return ofNumber(a[0], [](double x) { return std::fabs(x); });
}

Value wholeBelow(RunContext&, Given a)
{
    return ofNumber(a[0], [](double x) { return std::floor(x); });
}

Value wholeTowardsZero(RunContext&, Given a)
{
    return ofNumber(a[0], [](double x) { return std::trunc(x); });
}

Value sign(RunContext&, Given a)
{
    const double number = numberOf(a[0]);
    return std::int16_t(number < 0 ? -1 : number > 0);
}

/// Halves go to the even neighbour. A scaled 0.5 that only looks like one for want of binary digits counts as one.
Value rounded(RunContext&, Given a)
{
    const std::size_t digits = countAt(a, 1, 0);
    return ofNumber(a[0], [&](double x) {
        const double scale = std::pow(10.0, static_cast<double>(digits));
        const double scaled = x * scale;
        if (!std::isfinite(scaled))
            return x;
        const double half = std::floor(scaled) + 0.5;
        const bool isHalf = std::fabs(scaled - half) <= std::fabs(scaled) * 1e-15;
        return std::nearbyint(isHalf ? half : scaled) / scale;
    });
}

constexpr std::uint32_t randomModulus = 1U << 24;

void advance(RunContext& context)
{
    context.randomState = (context.randomState * 0x43FD43FDU + 0xC39EC3U) % randomModulus;
}

/// Below 0 begins the row that the number stands for, 0 gives the last number again.
Value random(RunContext& context, Given a)
{
    const double which = isGiven(a, 0) ? numberOf(a[0]) : 1;
    if (which < 0)
        context.randomState = static_cast<std::uint32_t>(std::fmod(-which * 1e6, randomModulus));
    if (which != 0)
        advance(context);
    return static_cast<float>(context.randomState) / static_cast<float>(randomModulus);
}

Value randomize(RunContext& context, Given a)
{
    const double seed = isGiven(a, 0) ? numberOf(a[0]) : context.host.now() * 86400000.0;
    context.randomState = static_cast<std::uint32_t>(std::fmod(std::fabs(seed), randomModulus));
    return {};
}

Value colour(RunContext&, Given a)
{
    std::int32_t out = 0;
    for (std::size_t i = 0; i < 3; ++i)
        out |= static_cast<std::int32_t>(std::min<std::size_t>(countAt(a, i, 0), 255)) << (8 * i);
    return out;
}

constexpr ValueType any = ValueType::Variant;
constexpr ValueType number = ValueType::Float64;

constexpr Intrinsic functions[] = {
    {u"Abs", 1, 1, any, absolute},
    {u"Int", 1, 1, any, wholeBelow},
    {u"Fix", 1, 1, any, wholeTowardsZero},
    {u"Sgn", 1, 1, ValueType::Int16, sign},
    {u"Round", 1, 2, any, rounded, u"Number NumDigitsAfterDecimal"},
    {u"Sqr", 1, 1, number, computed<squareRoot>},
    {u"Exp", 1, 1, number, computed<exponential>},
    {u"Log", 1, 1, number, computed<logarithm>},
    {u"Sin", 1, 1, number, computed<sine>},
    {u"Cos", 1, 1, number, computed<cosine>},
    {u"Tan", 1, 1, number, computed<tangent>},
    {u"Atn", 1, 1, number, computed<arcTangent>},
    {u"Rnd", 0, 1, ValueType::Float32, random},
    {u"Randomize", 0, 1, any, randomize},
    {u"RGB", 3, 3, ValueType::Int32, colour, u"Red Green Blue"},
};

} // namespace

std::span<const Intrinsic> mathFunctions() { return functions; }

} // namespace zn::language
