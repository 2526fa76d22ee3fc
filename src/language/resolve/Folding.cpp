#include "language/resolve/Folding.h"

#include "language/parse/TokenReader.h"
#include "language/values/Errors.h"

#include <algorithm>

namespace zn::language {

namespace {

class Folder {
public:
    explicit Folder(const std::function<Value(TextView)>& valueOfName)
        : m_valueOfName(valueOfName)
    {
    }

    Value fold(const Expr& expr) const
    {
        if (const auto* literal = std::get_if<Literal>(&expr.node))
            return literal->value;
        if (const auto* name = std::get_if<Name>(&expr.node))
            return m_valueOfName(name->name);
        if (const auto* group = std::get_if<Parenthesised>(&expr.node))
            return fold(*group->inner);
        if (const auto* unary = std::get_if<Unary>(&expr.node))
            return applyUnary(unary->op, fold(*unary->operand), {});
        if (const auto* binary = std::get_if<Binary>(&expr.node))
            return applyBinary(binary->op, fold(*binary->left), fold(*binary->right), {});
        if (const auto* run = std::get_if<Concatenation>(&expr.node)) {
            Value out = fold(*run->parts.front());
            for (std::size_t i = 1; i < run->parts.size(); ++i)
                out = applyBinary(Operator::Concatenate, out, fold(*run->parts[i]), {});
            return out;
        }
        throw SyntaxProblem{expr.position, u"Constant expression required"};
    }

private:
    const std::function<Value(TextView)>& m_valueOfName;
};

} // namespace

Value foldUnresolved(const Expr& expr, const std::function<Value(TextView)>& valueOfName)
{
    return Folder(valueOfName).fold(expr);
}

const Value* literalOf(const Expr& expr)
{
    const auto* literal = std::get_if<Literal>(&expr.node);
    return literal ? &literal->value : nullptr;
}

namespace {

bool isFoldable(const Expr& expr)
{
    if (const auto* group = std::get_if<Parenthesised>(&expr.node))
        return literalOf(*group->inner);
    if (const auto* unary = std::get_if<Unary>(&expr.node))
        return literalOf(*unary->operand);
    if (const auto* binary = std::get_if<Binary>(&expr.node))
        return literalOf(*binary->left) && literalOf(*binary->right);
    if (const auto* run = std::get_if<Concatenation>(&expr.node))
        return std::ranges::all_of(run->parts, [](const ExprRef& part) { return literalOf(*part) != nullptr; });
    return false;
}

} // namespace

void foldOperator(Expr& expr)
{
    if (!isFoldable(expr))
        return;
    if (const auto* binary = std::get_if<Binary>(&expr.node); binary && binary->rules.ignoreCase)
        return;
    try {
        expr.node = Literal{foldUnresolved(expr, [](TextView) { return Value(); })};
    } catch (const ScriptError&) {
        return; // 1 \ 0 is no error of the source: it may never run
    }
}

} // namespace zn::language
