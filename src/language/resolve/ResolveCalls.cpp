#include "language/functions/Intrinsic.h"
#include "language/Library.h"
#include "language/resolve/Changes.h"
#include "language/resolve/Resolver.h"

#include <algorithm>

namespace zn::language {

namespace {

std::vector<Text> namesOf(const std::vector<Variable>& variables, std::size_t count)
{
    std::vector<Text> names;
    for (std::size_t i = 0; i < count; ++i)
        names.push_back(variables[i].name);
    return names;
}

bool isVariable(const Expr& expr)
{
    return std::holds_alternative<LocalVariable>(expr.node) || std::holds_alternative<GlobalVariable>(expr.node);
}

} // namespace

bool Resolver::bindCall(ExprRef& expr, const Name& name, Arguments& arguments)
{
    const int procedure = indexOf(m_module.procedureNames, name.name);
    const int declared = indexOf(m_module.functionNames, name.name);
    const bool isGlobal = procedure < 0 && declared < 0 && m_library && m_library->hasGlobal(name.name);
    const Intrinsic* intrinsic = findIntrinsic(name.name);
    if (procedure < 0 && declared < 0 && !isGlobal && !intrinsic)
        return false;
    const Procedure* called = procedure >= 0 ? &m_module.procedures[static_cast<std::size_t>(procedure)] : nullptr;
    if (called && called->parameters.empty() && !arguments.empty()) {
        // A function without parameters: the parentheses take an element of what it gives.
        ExprRef call = makeExpr(expr->position, Literal{});
        Arguments none;
        callProcedure(*call, procedure, none);
        makeElement(expr, std::move(call), std::move(arguments));
        return true;
    }
    resolveAll(arguments);
    if (called) {
        callProcedure(*expr, procedure, arguments);
    } else if (declared >= 0) {
        callDeclared(*expr, declared, arguments);
    } else if (isGlobal) {
        expr->node = HostCall{name.name, std::move(arguments)};
    } else {
        callIntrinsic(*expr, *intrinsic, arguments);
    }
    return true;
}

std::vector<ExprRef> Resolver::placed(
    Position position, Arguments& arguments, const std::vector<Text>& names, std::vector<ExprRef>* rest)
{
    std::vector<ExprRef> out(names.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::size_t place = i;
        if (!arguments[i].name.empty()) {
            place = 0;
            while (place < names.size() && !equalNoCase(names[place], arguments[i].name))
                ++place;
            if (place == names.size())
                fail(position, u"Named argument not found: " + arguments[i].name);
        }
        if (place >= names.size()) {
            if (!rest)
                fail(position, u"Wrong number of arguments or invalid property assignment");
            rest->push_back(std::move(arguments[i].value));
            continue;
        }
        if (out[place])
            fail(position, u"Named argument already specified: " + names[place]);
        out[place] = std::move(arguments[i].value);
    }
    return out;
}

void Resolver::checkReference(const Expr& argument, const Parameter& parameter, const Type& wanted) const
{
    const Type& given = argument.type;
    if (wanted.array && !given.array && !given.isVariant())
        fail(argument.position, u"Type mismatch: array expected");
    if (wanted.isRecord() && given.record != wanted.record)
        fail(argument.position, u"ByRef argument type mismatch");
    if (!parameter.byRef || wanted.isVariant() || !isVariable(argument) || given.isVariant())
        return;
    if (given.base != wanted.base || given.array != wanted.array)
        fail(argument.position, u"ByRef argument type mismatch");
}

void Resolver::callProcedure(Expr& expr, int index, Arguments& arguments)
{
    const Procedure& procedure = m_module.procedures[static_cast<std::size_t>(index)];
    const std::size_t named = procedure.parameters.size() - (procedure.takesRest() ? 1 : 0);
    ProcedureCall call{index, {}, {}};
    call.arguments = placed(
        expr.position, arguments, namesOf(procedure.locals, named), procedure.takesRest() ? &call.rest : nullptr);
    for (std::size_t i = 0; i < named; ++i) {
        if (call.arguments[i])
            checkReference(*call.arguments[i], procedure.parameters[i], procedure.locals[i].type);
        else if (!procedure.parameters[i].optional)
            fail(expr.position, u"Argument not optional: " + procedure.locals[i].name);
    }
    expr.type = procedure.result;
    expr.node = std::move(call);
}

void Resolver::callDeclared(Expr& expr, int index, Arguments& arguments)
{
    const DeclaredFunction& function = m_module.functions[static_cast<std::size_t>(index)];
    DeclaredFunctionCall call{index, {}};
    call.arguments
        = placed(expr.position, arguments, namesOf(function.parameterVariables, function.parameters.size()), nullptr);
    for (std::size_t i = 0; i < call.arguments.size(); ++i)
        if (!call.arguments[i] && !function.parameters[i].optional)
            fail(expr.position, u"Argument not optional: " + function.parameterVariables[i].name);
    expr.type = function.result;
    expr.node = std::move(call);
}

void Resolver::callIntrinsic(Expr& expr, const Intrinsic& intrinsic, Arguments& arguments)
{
    IntrinsicCall call{&intrinsic, {}, false};
    bool isNamed = false;
    for (const Argument& argument : arguments)
        isNamed = isNamed || !argument.name.empty();
    if (isNamed) {
        std::vector<Text> names;
        if (!intrinsic.parameters.empty())
            names = split(intrinsic.parameters, u' ');
        call.arguments = placed(expr.position, arguments, names, nullptr);
    } else {
        for (Argument& argument : arguments)
            call.arguments.push_back(std::move(argument.value));
    }
    while (!call.arguments.empty() && !call.arguments.back())
        call.arguments.pop_back();
    const int count = static_cast<int>(call.arguments.size());
    if (count < intrinsic.least)
        fail(expr.position, u"Argument not optional");
    if (intrinsic.most >= 0 && count > intrinsic.most)
        fail(expr.position, u"Wrong number of arguments or invalid property assignment");
    call.lends
        = std::ranges::all_of(call.arguments, [](const ExprRef& given) { return !given || changesNothing(*given); });
    expr.type.base = intrinsic.result;
    expr.node = std::move(call);
}

} // namespace zn::language
