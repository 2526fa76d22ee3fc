#include "language/functions/Intrinsic.h"
#include "language/Library.h"
#include "language/resolve/Folding.h"
#include "language/resolve/Resolver.h"

#include <algorithm>
#include <array>

namespace zn::language {

namespace {

// Names that may stand before a function or constant of the language itself.
constexpr auto ownQualifiers = std::to_array<TextView>({u"VBA", u"Strings", u"Math", u"Information", u"Interaction",
    u"Conversion", u"DateTime", u"FileSystem", u"Constants", u"Debug"});

bool isLogic(Operator op)
{
    return op == Operator::And || op == Operator::Or || op == Operator::Xor || op == Operator::Eqv
        || op == Operator::Imp;
}

bool isComparison(Operator op) { return op >= Operator::Equal && op <= Operator::Is; }

/// The type of an operator's result; Variant wherever an operand is one.
ValueType resultType(Operator op, ValueType left, ValueType right)
{
    if (left == ValueType::Variant || right == ValueType::Variant || left == ValueType::Dispatch
        || right == ValueType::Dispatch)
        return ValueType::Variant;
    if (op == Operator::Concatenate || (op == Operator::Add && left == ValueType::String && right == left))
        return ValueType::String;
    if (isComparison(op) || (isLogic(op) && left == ValueType::Boolean && right == left))
        return ValueType::Boolean;
    if (op == Operator::Divide || op == Operator::Power)
        return ValueType::Float64;
    // Only whether it is a Variant matters to what runs; the exact number type shows when it does.
    return left == right ? left : ValueType::Float64;
}

} // namespace

void Resolver::resolveAll(Arguments& arguments)
{
    for (Argument& argument : arguments)
        if (argument.value)
            resolve(argument.value);
}

void Resolver::resolveAll(std::vector<ExprRef>& list)
{
    for (ExprRef& expr : list)
        resolve(expr);
}

void Resolver::resolve(ExprRef& expr, Use use)
{
    if (std::holds_alternative<Name>(expr->node))
        return resolveName(expr, use);
    if (std::holds_alternative<Applied>(expr->node))
        return resolveApplied(expr, use);
    if (std::holds_alternative<Member>(expr->node))
        return resolveMember(expr, use);
    if (auto* test = std::get_if<TypeOf>(&expr->node)) {
        resolve(test->object);
        expr->type.base = ValueType::Boolean;
    } else if (const auto* subject = std::get_if<WithSubject>(&expr->node)) {
        expr->type = m_procedure->locals[static_cast<std::size_t>(subject->slot)].type;
    } else if (const auto* literal = std::get_if<Literal>(&expr->node)) {
        const ValueType type = literal->value.type();
        expr->type.base = type == ValueType::Empty || type == ValueType::Null ? ValueType::Variant : type;
    } else if (std::holds_alternative<NewObject>(expr->node)) {
        expr->type.base = ValueType::Dispatch;
    } else {
        resolveOperator(*expr);
    }
}

void Resolver::resolveOperator(Expr& expr)
{
    if (auto* group = std::get_if<Parenthesised>(&expr.node)) {
        resolve(group->inner);
        expr.type = group->inner->type;
    } else if (auto* unary = std::get_if<Unary>(&expr.node)) {
        resolve(unary->operand);
        expr.type = unary->operand->type;
    } else if (auto* binary = std::get_if<Binary>(&expr.node)) {
        resolve(binary->left);
        resolve(binary->right);
        const ValueType left = binary->left->type.base;
        const ValueType right = binary->right->type.base;
        expr.type.base = resultType(binary->op, left, right);
        binary->rules = {left == ValueType::Variant, right == ValueType::Variant, m_module.compareText};
    } else if (auto* run = std::get_if<Concatenation>(&expr.node)) {
        resolveAll(run->parts);
        expr.type.base = ValueType::String;
        for (const ExprRef& part : run->parts)
            if (part->type.base == ValueType::Variant)
                expr.type.base = ValueType::Variant;
    }
    foldOperator(expr);
}

bool Resolver::isDeclared(TextView name) const
{
    return (m_procedure && m_procedure->localNames.contains(foldCase(name)))
        || m_module.globalNames.contains(foldCase(name));
}

bool Resolver::bindVariable(Expr& expr, const Name& name)
{
    const int local = m_procedure ? indexOf(m_procedure->localNames, name.name) : -1;
    if (local >= 0) {
        const Variable& variable = m_procedure->locals[static_cast<std::size_t>(local)];
        expr.type = variable.type;
        if (variable.staticSlot >= 0)
            expr.node = GlobalVariable{variable.staticSlot};
        else
            expr.node = LocalVariable{local};
        return true;
    }
    // A local constant hides the module's variable.
    if (m_procedure && m_procedure->constantNames.contains(foldCase(name.name)))
        return false;
    const int global = indexOf(m_module.globalNames, name.name);
    if (global < 0)
        return false;
    expr.type = m_module.globals[static_cast<std::size_t>(global)].type;
    expr.node = GlobalVariable{global};
    return true;
}

/// Inside a function its own name is its result, unless that is a call of itself.
bool Resolver::bindResult(Expr& expr, const Name& name, bool hasArguments, Use use)
{
    if (!m_procedure || !m_procedure->isFunction || !equalNoCase(m_procedure->name, name.name))
        return false;
    if (use == Use::Call || (hasArguments && use == Use::Read && !m_procedure->parameters.empty()))
        return false;
    expr.type = m_procedure->result;
    expr.node = LocalVariable{m_procedure->resultSlot};
    return true;
}

std::optional<Value> Resolver::constantNamed(TextView name)
{
    const int local = m_procedure ? indexOf(m_procedure->constantNames, name) : -1;
    if (local >= 0)
        return constantValue(m_procedure->constants, static_cast<std::size_t>(local));
    const int global = indexOf(m_module.constantNames, name);
    if (global >= 0)
        return constantValue(m_module.constants, static_cast<std::size_t>(global));
    if (m_module.procedureNames.contains(foldCase(name)) || m_module.functionNames.contains(foldCase(name)))
        return std::nullopt;
    if (m_library)
        if (std::optional<Value> value = m_library->constant(name))
            return value;
    return languageConstant(name);
}

void Resolver::bindImplicit(Expr& expr, const Name& name)
{
    if (m_module.explicitNames || !m_procedure)
        fail(expr.position, u"Variable not defined: " + name.name);
    static constexpr std::pair<char16_t, ValueType> suffixes[] = {
        {u'%', ValueType::Int16},
        {u'&', ValueType::Int32},
        {u'!', ValueType::Float32},
        {u'#', ValueType::Float64},
        {u'@', ValueType::Currency},
        {u'$', ValueType::String},
    };
    Variable variable;
    variable.name = name.name;
    for (const auto& [suffix, type] : suffixes)
        if (suffix == name.suffix)
            variable.type.base = type;
    const int slot = static_cast<int>(m_procedure->locals.size());
    m_procedure->localNames.emplace(foldCase(name.name), slot);
    expr.type = variable.type;
    expr.node = LocalVariable{slot};
    m_procedure->locals.push_back(std::move(variable));
}

void Resolver::resolveName(ExprRef& expr, Use use)
{
    const Name name = std::move(std::get<Name>(expr->node));
    if (bindResult(*expr, name, false, use) || bindVariable(*expr, name)) {
        if (use == Use::Call)
            fail(expr->position, u"Expected: Sub, Function or Property; " + name.name + u" is a variable");
        return;
    }
    if (std::optional<Value> value = constantNamed(name.name)) {
        expr->node = Literal{std::move(*value)};
        return resolve(expr);
    }
    Arguments none;
    if (bindCall(expr, name, none))
        return;
    if (equalNoCase(name.name, u"Err")) {
        expr->node = ErrorReference{};
        expr->type.base = ValueType::Dispatch;
        return;
    }
    if (use == Use::Call)
        fail(expr->position, u"Sub or Function not defined: " + name.name);
    bindImplicit(*expr, name);
}

void Resolver::makeElement(ExprRef& expr, ExprRef array, Arguments arguments)
{
    const Type type = array->type;
    if (!type.array && !type.isVariant() && !type.isObject())
        fail(array->position, u"Expected array");
    resolveAll(arguments);
    if (type.array)
        for (const Argument& argument : arguments)
            if (!argument.value || !argument.name.empty())
                fail(expr->position, u"Expected: subscript");
    expr->node = Element{std::move(array), std::move(arguments)};
    expr->type = type.array ? type.element() : Type{};
}

void Resolver::resolveApplied(ExprRef& expr, Use use)
{
    Applied applied = std::move(std::get<Applied>(expr->node));
    if (const auto* held = std::get_if<Name>(&applied.target->node)) {
        const Name name = *held;
        if (!bindResult(*applied.target, name, true, use) && !bindVariable(*applied.target, name)) {
            if (constantNamed(name.name))
                fail(applied.target->position, u"Expected array; " + name.name + u" is a constant");
            if (bindCall(expr, name, applied.arguments))
                return;
            fail(applied.target->position, u"Sub or Function not defined: " + name.name);
        }
    } else {
        resolve(applied.target);
    }
    makeElement(expr, std::move(applied.target), std::move(applied.arguments));
}

/// `Enumeration.Member`, `Library.Constant` and the language's own modules.
bool Resolver::resolveQualified(ExprRef& expr, Use use)
{
    Member& member = std::get<Member>(expr->node);
    const auto* qualifier = std::get_if<Name>(&member.object->node);
    if (!qualifier || isDeclared(qualifier->name))
        return false;
    const TextView name = qualifier->name;
    const bool isEnum = m_module.enumNames.contains(foldCase(name));
    const bool isLibrary = m_library && !m_library->hasGlobal(name)
        && (m_library->typeNamed(name) == LibraryType::Enumeration || m_library->constant(member.name));
    const bool isOwn = std::ranges::any_of(ownQualifiers, [&](TextView own) { return equalNoCase(own, name); })
        && (findIntrinsic(member.name) || languageConstant(member.name));
    if (!isEnum && !isLibrary && !isOwn)
        return false;
    Arguments arguments = std::move(member.arguments);
    const bool applied = member.applied;
    ExprRef inner = makeExpr(expr->position, Name{std::move(member.name), 0});
    if (applied)
        inner = makeExpr(expr->position, Applied{std::move(inner), std::move(arguments)});
    expr = std::move(inner);
    resolve(expr, use);
    return true;
}

void Resolver::resolveMember(ExprRef& expr, Use use)
{
    if (resolveQualified(expr, use))
        return;
    Member& member = std::get<Member>(expr->node);
    resolve(member.object);
    const Type object = member.object->type;
    if (object.isRecord()) {
        const RecordType& record = m_module.records[static_cast<std::size_t>(object.record)];
        const int field = indexOf(record.fieldNames, member.name);
        if (field < 0)
            fail(expr->position, u"Method or data member not found: " + member.name);
        Arguments arguments = std::move(member.arguments);
        const bool applied = member.applied;
        expr->type = record.fields[static_cast<std::size_t>(field)].type;
        expr->node = Field{std::move(std::get<Member>(expr->node).object), field};
        if (applied) {
            const Position position = expr->position;
            ExprRef array = std::move(expr);
            expr = makeExpr(position, Literal{});
            makeElement(expr, std::move(array), std::move(arguments));
        }
        return;
    }
    if (!object.isVariant() && !object.isObject())
        fail(member.object->position, u"Invalid qualifier");
    resolveAll(member.arguments);
}

} // namespace zn::language
