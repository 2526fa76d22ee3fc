#include "language/functions/Given.h"
#include "language/functions/Intrinsic.h"
#include "language/run/RunContext.h"

#include <algorithm>
#include <cmath>

namespace zn::language {

namespace {

// Payments that come in are positive, those that go out negative. `due` is 1 where payments fall at the beginning of
// a period and 0 where they fall at its end; any number but 0 counts as 1.

double numberAt(Given a, std::size_t index, double otherwise)
{
    return isGiven(a, index) ? numberOf(a[index]) : otherwise;
}

double dueAt(Given a, std::size_t index) { return numberAt(a, index, 0) != 0 ? 1 : 0; }

Value result(double number)
{
    if (!std::isfinite(number))
        raise(error::overflow);
    return number;
}

/// What a payment of 1 in each period is worth at the end of the last.
double accumulated(double rate, double periods, double due)
{
    if (rate == 0)
        return periods;
    return (1 + rate * due) * (std::pow(1 + rate, periods) - 1) / rate;
}

double futureValue(double rate, double periods, double payment, double present, double due)
{
    return -(present * std::pow(1 + rate, periods) + payment * accumulated(rate, periods, due));
}

double paymentFor(double rate, double periods, double present, double future, double due)
{
    const double worth = accumulated(rate, periods, due);
    if (periods == 0 || worth == 0)
        raise(error::invalidCall);
    return -(future + present * std::pow(1 + rate, periods)) / worth;
}

Value presentValueOf(RunContext&, Given a)
{
    const double rate = numberOf(a[0]);
    const double periods = numberOf(a[1]);
    const double worth = numberOf(a[2]) * accumulated(rate, periods, dueAt(a, 4));
    return result(-(numberAt(a, 3, 0) + worth) / std::pow(1 + rate, periods));
}

Value futureValueOf(RunContext&, Given a)
{
    return result(futureValue(numberOf(a[0]), numberOf(a[1]), numberOf(a[2]), numberAt(a, 3, 0), dueAt(a, 4)));
}

Value paymentOf(RunContext&, Given a)
{
    return result(paymentFor(numberOf(a[0]), numberOf(a[1]), numberOf(a[2]), numberAt(a, 3, 0), dueAt(a, 4)));
}

struct PaymentParts {
    double interest;
    double principal;
};

PaymentParts paymentParts(Given a)
{
    const double rate = numberOf(a[0]);
    const double period = numberOf(a[1]);
    const double periods = numberOf(a[2]);
    const double present = numberOf(a[3]);
    const double due = dueAt(a, 5);
    if (period <= 0 || period >= periods + 1)
        raise(error::invalidCall);
    const double payment = paymentFor(rate, periods, present, numberAt(a, 4, 0), due);
    if (due != 0 && period == 1) // paid before any interest has come up
        return {0, payment};
    const double owed = due != 0 ? futureValue(rate, period - 2, payment, present + payment, 0)
                                 : futureValue(rate, period - 1, payment, present, 0);
    return {owed * rate, payment - owed * rate};
}

Value interestPart(RunContext&, Given a) { return result(paymentParts(a).interest); }

Value principalPart(RunContext&, Given a) { return result(paymentParts(a).principal); }

Value numberOfPeriods(RunContext&, Given a)
{
    const double rate = numberOf(a[0]);
    const double payment = numberOf(a[1]);
    const double present = numberOf(a[2]);
    const double future = numberAt(a, 3, 0);
    if (rate <= -1 || (rate == 0 && payment == 0))
        raise(error::invalidCall);
    if (rate == 0)
        return result(-(present + future) / payment);
    const double lasting = payment * (1 + rate * dueAt(a, 4)) / rate;
    const double ratio = (lasting - future) / (lasting + present);
    if (!(ratio > 0))
        raise(error::invalidCall);
    return result(std::log(ratio) / std::log1p(rate));
}

/// The rate at which `worth` becomes nothing, from a guess on. Raises 5 if it isn't found.
template <class Worth> double rateWhere(double guess, Worth&& worth)
{
    constexpr int tries = 100;
    if (guess <= -1)
        raise(error::invalidCall);
    double before = guess;
    double rate = guess == 0 ? 0.001 : guess * 1.1;
    double worthBefore = worth(before);
    for (int i = 0; i < tries; ++i) {
        const double here = worth(rate);
        if (!std::isfinite(here) || here == worthBefore)
            break;
        double next = rate - here * (rate - before) / (here - worthBefore);
        if (next <= -1) // such a rate has no meaning: go half the way there
            next = (rate - 1) / 2;
        before = rate;
        worthBefore = here;
        rate = next;
        if (std::fabs(rate - before) <= 1e-13 * std::max(1.0, std::fabs(rate)))
            return rate;
    }
    if (worthBefore == 0)
        return before;
    raise(error::invalidCall);
}

Value rateOf(RunContext&, Given a)
{
    const double periods = numberOf(a[0]);
    const double payment = numberOf(a[1]);
    const double present = numberOf(a[2]);
    const double future = numberAt(a, 3, 0);
    const double due = dueAt(a, 4);
    if (periods <= 0)
        raise(error::invalidCall);
    return rateWhere(
        numberAt(a, 5, 0.1), [&](double rate) { return futureValue(rate, periods, payment, present, due) - future; });
}

using Flows = std::vector<double>;

Flows flowsAt(RunContext& context, const Value& value)
{
    const auto* array = value.get<ArrayRef>();
    if (!array || !*array || (*array)->elements.empty() || (*array)->bounds.size() != 1)
        raise(array ? error::invalidCall : error::typeMismatch);
    Flows flows;
    for (const Value& element : (*array)->elements) {
        if (flows.size() % 65536 == 65535)
            context.checkpoint();
        flows.push_back(numberOf(element));
    }
    return flows;
}

/// What the flows are worth one period before the first of them.
double presentWorth(RunContext& context, const Flows& flows, double rate)
{
    double worth = 0;
    double factor = 1;
    context.checkpoint();
    for (const double flow : flows) {
        factor /= 1 + rate;
        worth += flow * factor;
    }
    return worth;
}

Value netPresentValue(RunContext& context, Given a)
{
    const double rate = numberOf(a[0]);
    if (rate == -1)
        raise(error::invalidCall);
    return result(presentWorth(context, flowsAt(context, a[1]), rate));
}

Value internalRate(RunContext& context, Given a)
{
    const Flows flows = flowsAt(context, a[0]);
    const auto [least, most] = std::ranges::minmax(flows);
    if (least >= 0 || most <= 0)
        raise(error::invalidCall);
    return rateWhere(numberAt(a, 1, 0.1), [&](double rate) { return presentWorth(context, flows, rate); });
}

Value modifiedInternalRate(RunContext& context, Given a)
{
    const Flows flows = flowsAt(context, a[0]);
    const double finance = numberOf(a[1]);
    const double reinvestment = numberOf(a[2]);
    if (finance == -1 || reinvestment == -1)
        raise(error::invalidCall);
    Flows out = flows;
    Flows in = flows;
    for (double& flow : out)
        flow = std::min(flow, 0.0);
    for (double& flow : in)
        flow = std::max(flow, 0.0);
    const double spent = presentWorth(context, out, finance) * (1 + finance);
    const double periods = static_cast<double>(flows.size());
    if (spent == 0 || flows.size() < 2)
        raise(error::divisionByZero);
    const double earned = presentWorth(context, in, reinvestment) * std::pow(1 + reinvestment, periods);
    return result(std::pow(-earned / spent, 1 / (periods - 1)) - 1);
}

Value straightLine(RunContext&, Given a)
{
    const double life = numberOf(a[2]);
    if (life == 0)
        raise(error::invalidCall);
    return result((numberOf(a[0]) - numberOf(a[1])) / life);
}

Value sumOfYears(RunContext&, Given a)
{
    const double salvage = numberOf(a[1]);
    const double life = numberOf(a[2]);
    const double period = numberOf(a[3]);
    if (salvage < 0 || period <= 0 || period > life)
        raise(error::invalidCall);
    return result((numberOf(a[0]) - salvage) * (life - period + 1) * 2 / (life * (life + 1)));
}

Value decliningBalance(RunContext&, Given a)
{
    const double cost = numberOf(a[0]);
    const double salvage = numberOf(a[1]);
    const double life = numberOf(a[2]);
    const double period = numberOf(a[3]);
    const double factor = numberAt(a, 4, 2);
    if (factor <= 0 || salvage < 0 || period <= 0 || period > life)
        raise(error::invalidCall);
    const double share = std::min(factor / life, 1.0);
    const double left = cost * std::pow(1 - share, std::max(period - 1, 0.0));
    return result(std::max(0.0, std::min(left * share, left - salvage)));
}

constexpr ValueType number = ValueType::Float64;

constexpr Intrinsic functions[] = {
    {u"PV", 3, 5, number, presentValueOf, u"Rate NPer Pmt FV Due"},
    {u"FV", 3, 5, number, futureValueOf, u"Rate NPer Pmt PV Due"},
    {u"Pmt", 3, 5, number, paymentOf, u"Rate NPer PV FV Due"},
    {u"IPmt", 4, 6, number, interestPart, u"Rate Per NPer PV FV Due"},
    {u"PPmt", 4, 6, number, principalPart, u"Rate Per NPer PV FV Due"},
    {u"NPer", 3, 5, number, numberOfPeriods, u"Rate Pmt PV FV Due"},
    {u"Rate", 3, 6, number, rateOf, u"NPer Pmt PV FV Due Guess"},
    {u"NPV", 2, 2, number, netPresentValue, u"Rate ValueArray"},
    {u"IRR", 1, 2, number, internalRate, u"ValueArray Guess"},
    {u"MIRR", 3, 3, number, modifiedInternalRate, u"ValueArray FinanceRate ReinvestRate"},
    {u"SLN", 3, 3, number, straightLine, u"Cost Salvage Life"},
    {u"SYD", 4, 4, number, sumOfYears, u"Cost Salvage Life Period"},
    {u"DDB", 4, 5, number, decliningBalance, u"Cost Salvage Life Period Factor"},
};

} // namespace

std::span<const Intrinsic> financialFunctions() { return functions; }

} // namespace zn::language
