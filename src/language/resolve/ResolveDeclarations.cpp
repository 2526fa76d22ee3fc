#include "language/resolve/Folding.h"
#include "language/resolve/Resolver.h"
#include "language/values/Conversions.h"

namespace zn::language {

void Resolver::fail(Position position, Text message) { throw SyntaxProblem{position, std::move(message)}; }

std::vector<SyntaxProblem> Resolver::run()
{
    resolveDeclarations();
    for (Procedure& procedure : m_module.procedures)
        resolveProcedure(procedure);
    m_procedure = nullptr;
    return std::move(m_problems);
}

void Resolver::resolveDeclarations()
{
    const auto guarded = [this](auto&& work) {
        try {
            work();
        } catch (const SyntaxProblem& problem) {
            m_problems.push_back(problem);
        }
    };
    resolveConstants(m_module.constants);
    for (Variable& variable : m_module.globals)
        guarded([&] { resolveVariable(variable); });
    for (RecordType& record : m_module.records)
        for (Variable& field : record.fields)
            guarded([&] { resolveVariable(field); });
    for (DeclaredFunction& function : m_module.functions)
        guarded([&] { resolveParameters(function.parameters, function.parameterVariables); });
    for (Procedure& procedure : m_module.procedures)
        guarded([&] { resolveParameters(procedure.parameters, procedure.locals); });
}

void Resolver::resolveConstants(std::vector<Constant>& constants)
{
    for (std::size_t i = 0; i < constants.size(); ++i) {
        try {
            constantValue(constants, i);
        } catch (const SyntaxProblem& problem) {
            m_problems.push_back(problem);
        }
    }
}

const Value& Resolver::constantValue(std::vector<Constant>& constants, std::size_t index)
{
    Constant& constant = constants[index];
    if (constant.done)
        return *literalOf(*constant.value);
    if (constant.underway)
        fail(constant.position, u"The constant depends on itself: " + constant.name);
    constant.underway = true;
    Value value;
    try {
        if (constant.after >= 0) {
            const Value& previous = constantValue(constants, static_cast<std::size_t>(constant.after));
            value = applyBinary(Operator::Add, previous, Value(std::int32_t(1)), {});
        } else {
            resolve(constant.value);
            const Value* literal = literalOf(*constant.value);
            if (!literal)
                fail(constant.value->position, u"Constant expression required");
            value = *literal;
        }
        value = coerce(value, constant.type.base);
    } catch (const ScriptError& failure) {
        fail(constant.position, failure.description);
    }
    constant.value = makeExpr(constant.position, Literal{std::move(value)});
    constant.done = true;
    return *literalOf(*constant.value);
}

std::int32_t Resolver::constantNumber(ExprRef& expr)
{
    resolve(expr);
    const Value* literal = literalOf(*expr);
    if (!literal)
        fail(expr->position, u"Constant expression required");
    try {
        return longOf(*literal);
    } catch (const ScriptError& failure) {
        fail(expr->position, failure.description);
    }
}

void Resolver::resolveVariable(Variable& variable)
{
    constexpr std::int64_t mostElements = 25'000'000;
    std::int64_t elements = 1;
    for (BoundsExpr& bound : variable.boundExprs) {
        FixedBound fixed;
        fixed.lower = bound.lower ? constantNumber(bound.lower) : m_module.arrayBase;
        fixed.upper = constantNumber(bound.upper);
        const std::int64_t count = std::int64_t(fixed.upper) - fixed.lower + 1;
        if (count < 1)
            fail(variable.position, u"The upper bound of an array must not be below the lower one");
        elements = count > mostElements ? count : elements * count;
        if (elements > mostElements)
            fail(variable.position, u"The array is too large: " + variable.name);
        variable.bounds.push_back(fixed);
    }
    variable.boundExprs.clear();
    if (variable.lengthExpr) {
        variable.type.fixedLength = constantNumber(variable.lengthExpr);
        if (variable.type.fixedLength < 1)
            fail(variable.position, u"A fixed text must be at least one character long");
        variable.lengthExpr.reset();
    }
}

void Resolver::resolveParameters(std::vector<Parameter>& parameters, const std::vector<Variable>& variables)
{
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        ExprRef& given = parameters[i].defaultExpr;
        if (!given)
            continue;
        resolve(given);
        const Value* literal = literalOf(*given);
        if (!literal)
            fail(given->position, u"Constant expression required");
        try {
            const Position position = given->position;
            Value value = variables[i].type.isObject() ? *literal : coerce(*literal, variables[i].type.base);
            given = makeExpr(position, Literal{std::move(value)});
        } catch (const ScriptError& failure) {
            fail(given->position, failure.description);
        }
    }
}

void Resolver::resolveProcedure(Procedure& procedure)
{
    m_procedure = &procedure;
    resolveConstants(procedure.constants);
    for (Variable& variable : procedure.locals) {
        try {
            resolveVariable(variable);
        } catch (const SyntaxProblem& problem) {
            m_problems.push_back(problem);
        }
    }
    // By index: an implicit variable adds to the locals, never to the steps.
    for (std::size_t i = 0; i < procedure.steps.size(); ++i) {
        try {
            resolveStep(procedure.steps[i]);
        } catch (const SyntaxProblem& problem) {
            m_problems.push_back(problem);
        }
    }
}

int Procedure::requiredParameters() const
{
    int count = 0;
    for (const Parameter& parameter : parameters)
        count += parameter.optional || parameter.paramArray ? 0 : 1;
    return count;
}

} // namespace zn::language
