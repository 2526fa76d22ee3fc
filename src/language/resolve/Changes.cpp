#include "language/resolve/Changes.h"

#include <algorithm>

namespace zn::language {

namespace {

bool changesNothing(const std::vector<ExprRef>& list)
{
    return std::ranges::all_of(list, [](const ExprRef& expr) { return !expr || language::changesNothing(*expr); });
}

} // namespace

bool changesNothing(const Expr& expr)
{
    // A variable of `As New` is made when it is first met.
    if (expr.type.createsItself)
        return false;
    if (std::holds_alternative<Literal>(expr.node) || std::holds_alternative<LocalVariable>(expr.node)
        || std::holds_alternative<GlobalVariable>(expr.node))
        return true;
    if (const auto* unary = std::get_if<Unary>(&expr.node))
        return changesNothing(*unary->operand);
    if (const auto* binary = std::get_if<Binary>(&expr.node))
        return changesNothing(*binary->left) && changesNothing(*binary->right);
    if (const auto* run = std::get_if<Concatenation>(&expr.node))
        return changesNothing(run->parts);
    if (const auto* group = std::get_if<Parenthesised>(&expr.node))
        return changesNothing(*group->inner);
    if (const auto* call = std::get_if<IntrinsicCall>(&expr.node))
        return call->lends;
    if (const auto* element = std::get_if<Element>(&expr.node))
        return element->array->type.array && changesNothing(*element->array)
            && std::ranges::all_of(
                element->subscripts, [](const Argument& one) { return one.value && changesNothing(*one.value); });
    return false;
}

bool growsItself(const Expr& target, const Expr& value)
{
    const auto* run = std::get_if<Concatenation>(&value.node);
    if (!run || target.type.isVariant() || target.type.fixedLength > 0 || !changesNothing(value))
        return false;
    const ExprNode& first = run->parts.front()->node;
    if (const auto* local = std::get_if<LocalVariable>(&target.node))
        return std::get_if<LocalVariable>(&first) && std::get<LocalVariable>(first).slot == local->slot;
    if (const auto* global = std::get_if<GlobalVariable>(&target.node))
        return std::get_if<GlobalVariable>(&first) && std::get<GlobalVariable>(first).slot == global->slot;
    return false;
}

} // namespace zn::language
