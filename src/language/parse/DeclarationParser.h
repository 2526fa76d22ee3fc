#pragma once

#include "language/parse/ExpressionParser.h"
#include "language/tree/Module.h"

#include <set>

namespace zn::language {

class Library;

/// Reads what declares names: variables, constants, types, parameters.
class DeclarationParser : public ExpressionParser {
public:
    DeclarationParser(const std::vector<Token>& tokens, const Library* library, Module& module)
        : ExpressionParser(tokens)
        , m_library(library)
        , m_module(module)
    {
    }

protected:
    struct TypeClause {
        Type type;
        Text className;
        ExprRef length;
        bool given = false;
        bool any = false;
    };

    /// Finds the names of all `Type` and `Enum` blocks, which may be used before they are declared.
    void collectTypeNames();

    /// `As …`, if there is one.
    TypeClause parseAsClause();
    /// `name(bounds) As type`
    Variable parseVariable();
    /// `(…)` of parameters.
    void parseParameters(std::vector<Parameter>& parameters, std::vector<Variable>& variables);
    std::vector<BoundsExpr> parseBounds();

    void parseRecordType();
    void parseEnumeration();
    /// The list behind `Const`.
    void parseConstants(std::vector<Constant>& constants, NameMap& names);
    void declareConstant(std::vector<Constant>& constants, NameMap& names, Constant constant);
    void parseDeclare();

    void declareName(NameMap& names, const Text& name, std::size_t index, Position position);
    static ValueType suffixType(char16_t suffix);

    const Library* m_library;
    Module& m_module;
    std::vector<SyntaxProblem> m_problems;

private:
    Text parseQualifiedName();
    void setNamedType(TypeClause& clause, const Text& name, Position position);
    Parameter parseParameter(Variable& variable);

    std::set<Text> m_unknownTypes; ///< folded; each is a problem once
};

} // namespace zn::language
