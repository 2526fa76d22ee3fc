#pragma once

#include "language/parse/TokenReader.h"
#include "language/tree/Module.h"

#include <optional>

namespace zn::language {

class Library;

/// Binds every name of a module to what it stands for, and computes constants. Afterwards no `Name` and no `Applied`
/// is left in the tree.
class Resolver {
public:
    Resolver(Module& module, const Library* library)
        : m_module(module)
        , m_library(library)
    {
    }

    /// The errors that were found, in no particular order.
    std::vector<SyntaxProblem> run();

private:
    /// What a name is wanted for.
    enum class Use { Read, Assign, Call };

    // declarations
    void resolveDeclarations();
    void resolveConstants(std::vector<Constant>& constants);
    const Value& constantValue(std::vector<Constant>& constants, std::size_t index);
    void resolveVariable(Variable& variable);
    void resolveParameters(std::vector<Parameter>& parameters, const std::vector<Variable>& variables);
    std::int32_t constantNumber(ExprRef& expr);
    void resolveProcedure(Procedure& procedure);

    // steps
    void resolveStep(Step& step);
    void resolveTarget(ExprRef& expr);
    void resolveReDim(ReDimStep& step);
    bool isFixedArray(const Expr& expr) const;
    void checkAssignable(const Expr& target) const;

    // names
    void resolve(ExprRef& expr, Use use = Use::Read);
    void resolveAll(Arguments& arguments);
    void resolveAll(std::vector<ExprRef>& list);
    void resolveOperator(Expr& expr);
    void resolveName(ExprRef& expr, Use use);
    void resolveApplied(ExprRef& expr, Use use);
    void resolveMember(ExprRef& expr, Use use);
    bool resolveQualified(ExprRef& expr, Use use);
    bool bindVariable(Expr& expr, const Name& name);
    bool bindResult(Expr& expr, const Name& name, bool hasArguments, Use use);
    std::optional<Value> constantNamed(TextView name);
    bool isDeclared(TextView name) const;
    void bindImplicit(Expr& expr, const Name& name);
    void makeElement(ExprRef& expr, ExprRef array, Arguments arguments);

    // calls
    bool bindCall(ExprRef& expr, const Name& name, Arguments& arguments);
    void callProcedure(Expr& expr, int index, Arguments& arguments);
    void callDeclared(Expr& expr, int index, Arguments& arguments);
    void callIntrinsic(Expr& expr, const struct Intrinsic& intrinsic, Arguments& arguments);
    /// Puts named arguments to their places.
    std::vector<ExprRef> placed(
        Position position, Arguments& arguments, const std::vector<Text>& names, std::vector<ExprRef>* rest);
    void checkReference(const Expr& argument, const Parameter& parameter, const Type& wanted) const;

    [[noreturn]] static void fail(Position position, Text message);

    Module& m_module;
    const Library* m_library;
    Procedure* m_procedure = nullptr;
    std::vector<SyntaxProblem> m_problems;
};

} // namespace zn::language
