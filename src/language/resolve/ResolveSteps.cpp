#include "language/resolve/Changes.h"
#include "language/resolve/Resolver.h"

namespace zn::language {

namespace {

template <class... Handlers> struct Overloaded : Handlers... {
    using Handlers::operator()...;
};
template <class... Handlers> Overloaded(Handlers...) -> Overloaded<Handlers...>;

} // namespace

void Resolver::checkAssignable(const Expr& target) const
{
    const bool assignable = std::holds_alternative<LocalVariable>(target.node)
        || std::holds_alternative<GlobalVariable>(target.node) || std::holds_alternative<Element>(target.node)
        || std::holds_alternative<Field>(target.node) || std::holds_alternative<Member>(target.node)
        || std::holds_alternative<HostCall>(target.node) || std::holds_alternative<ErrorReference>(target.node);
    if (std::holds_alternative<Literal>(target.node))
        fail(target.position, u"Assignment to constant not permitted");
    if (!assignable)
        fail(target.position, u"Expected: a variable or property to assign to");
}

bool Resolver::isFixedArray(const Expr& expr) const
{
    if (const auto* local = std::get_if<LocalVariable>(&expr.node))
        return !m_procedure->locals[static_cast<std::size_t>(local->slot)].bounds.empty();
    if (const auto* global = std::get_if<GlobalVariable>(&expr.node))
        return !m_module.globals[static_cast<std::size_t>(global->slot)].bounds.empty();
    if (const auto* field = std::get_if<Field>(&expr.node)) {
        const auto record = static_cast<std::size_t>(field->record->type.record);
        return !m_module.records[record].fields[static_cast<std::size_t>(field->field)].bounds.empty();
    }
    return false;
}

void Resolver::resolveTarget(ExprRef& expr)
{
    resolve(expr, Use::Assign);
    checkAssignable(*expr);
}

void Resolver::resolveReDim(ReDimStep& step)
{
    auto* name = std::get_if<Name>(&step.variable->node);
    // ReDim declares an array that isn't declared elsewhere.
    if (name && m_procedure && !isDeclared(name->name)) {
        Variable variable;
        variable.name = name->name;
        variable.type = step.element;
        variable.type.array = true;
        m_procedure->localNames.emplace(foldCase(name->name), static_cast<int>(m_procedure->locals.size()));
        m_procedure->locals.push_back(std::move(variable));
    }
    resolveTarget(step.variable);
    const Type& type = step.variable->type;
    if (!type.array && !type.isVariant() && !type.isObject())
        fail(step.variable->position, u"Expected array");
    if (isFixedArray(*step.variable))
        fail(step.variable->position, u"Array already dimensioned");
    if (type.array)
        step.element = type.element();
    for (BoundsExpr& bound : step.bounds) {
        if (bound.lower)
            resolve(bound.lower);
        resolve(bound.upper);
    }
}

void Resolver::resolveStep(Step& step)
{
    const auto optional = [this](ExprRef& expr) {
        if (expr)
            resolve(expr);
    };
    std::visit(
        Overloaded{
            [this](LetStep& s) {
                resolveTarget(s.target);
                if (isFixedArray(*s.target))
                    fail(s.target->position, u"Can't assign to an array");
                resolve(s.value);
                s.grows = growsItself(*s.target, *s.value);
            },
            [this](SetStep& s) {
                resolveTarget(s.target);
                resolve(s.value);
                if (!s.target->type.isVariant() && !s.target->type.isObject())
                    fail(s.target->position, u"Object required");
            },
            [this](CallStep& s) { resolve(s.call, Use::Call); }, [this](JumpUnlessStep& s) { resolve(s.condition); },
            [&](ForStep& s) {
                resolveTarget(s.counter);
                resolve(s.first);
                resolve(s.last);
                optional(s.step);
            },
            [this](ForEachStep& s) {
                resolveTarget(s.variable);
                resolve(s.collection);
            },
            [this](SelectStep& s) {
                resolve(s.subject);
                m_procedure->locals[static_cast<std::size_t>(s.slot)].type.base = s.subject->type.base;
            },
            [&](CaseStep& s) {
                for (CaseClause& clause : s.clauses) {
                    resolve(clause.value);
                    optional(clause.upper);
                }
            },
            [this](WithStep& s) {
                resolve(s.subject);
                m_procedure->locals[static_cast<std::size_t>(s.slot)].type = s.subject->type;
                m_procedure->locals[static_cast<std::size_t>(s.slot)].type.createsItself = false;
            },
            [this](RaiseStep& s) { resolve(s.number); }, [this](ChooseStep& s) { resolve(s.number); },
            [this](ReDimStep& s) { resolveReDim(s); },
            [this](EraseStep& s) {
                resolveTarget(s.variable);
                s.fixed = isFixedArray(*s.variable);
            },
            [&](MidStep& s) {
                resolveTarget(s.target);
                resolve(s.start);
                optional(s.length);
                resolve(s.value);
            },
            [this](JustifyStep& s) {
                resolveTarget(s.target);
                resolve(s.value);
            },
            [&](PrintStep& s) {
                optional(s.file);
                for (PrintItem& item : s.items)
                    optional(item.value);
            },
            [&](OpenStep& s) {
                resolve(s.path);
                resolve(s.file);
                optional(s.recordLength);
            },
            [this](CloseStep& s) { resolveAll(s.files); },
            [this](WriteStep& s) {
                resolve(s.file);
                resolveAll(s.values);
            },
            [this](InputStep& s) {
                resolve(s.file);
                for (ExprRef& target : s.targets)
                    resolveTarget(target);
            },
            [this](LineInputStep& s) {
                resolve(s.file);
                resolveTarget(s.target);
            },
            [this](SeekStep& s) {
                resolve(s.file);
                resolve(s.position);
            },
            [this](RenameStep& s) {
                resolve(s.from);
                resolve(s.to);
            },
            [](auto&) {}, // steps without expressions
        },
        step.node);
}

} // namespace zn::language
