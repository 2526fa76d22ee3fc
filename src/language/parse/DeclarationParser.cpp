#include "language/parse/DeclarationParser.h"

#include "language/Library.h"

#include <algorithm>
#include <array>

namespace zn::language {

namespace {

struct NamedType {
    TextView name;
    ValueType type;
};

constexpr auto plainTypes = std::to_array<NamedType>({
    {u"Boolean", ValueType::Boolean},
    {u"Byte", ValueType::UInt8},
    {u"Currency", ValueType::Currency},
    {u"Date", ValueType::Date},
    {u"Double", ValueType::Float64},
    {u"Integer", ValueType::Int16},
    {u"Long", ValueType::Int32},
    {u"LongLong", ValueType::Int64},
    {u"LongPtr", ValueType::Int64},
    {u"Object", ValueType::Dispatch},
    {u"Single", ValueType::Float32},
    {u"String", ValueType::String},
    {u"Variant", ValueType::Variant},
});

// Classes of the language itself, usable without any library.
constexpr auto ownClasses = std::to_array<TextView>({
    u"Collection",
    u"ErrObject",
    u"Scripting.Dictionary",
    u"Scripting.FileSystemObject",
    u"Scripting.TextStream",
    u"Scripting.File",
    u"Scripting.Folder",
    u"Dictionary",
    u"FileSystemObject",
    u"RegExp",
    u"VBScript_RegExp_55.RegExp",
    u"VBScript_RegExp_55.Match",
    u"VBScript_RegExp_55.MatchCollection",
    u"VBScript_RegExp_55.SubMatches",
    u"TextStream",
    u"File",
    u"Folder",
});

} // namespace

ValueType DeclarationParser::suffixType(char16_t suffix)
{
    switch (suffix) {
    case u'%':
        return ValueType::Int16;
    case u'&':
        return ValueType::Int32;
    case u'!':
        return ValueType::Float32;
    case u'#':
        return ValueType::Float64;
    case u'@':
        return ValueType::Currency;
    case u'$':
        return ValueType::String;
    default:
        return ValueType::Variant;
    }
}

void DeclarationParser::declareName(NameMap& names, const Text& name, std::size_t index, Position position)
{
    if (!names.emplace(foldCase(name), static_cast<int>(index)).second)
        fail(position, u"Duplicate declaration in current scope: " + name);
}

void DeclarationParser::collectTypeNames()
{
    const std::size_t start = mark();
    for (; !atSourceEnd(); next()) {
        if (!peek().startsLine)
            continue;
        const std::size_t word = at(Word::Private) || at(Word::Public) ? 1 : 0;
        const bool isType = at(Word::Type, word);
        if (!isType && !at(Word::Enum, word))
            continue;
        const Token& name = peek(word + 1);
        if (name.kind != TokenKind::Identifier)
            continue;
        if (isType && m_module.recordNames.emplace(foldCase(name.text), int(m_module.records.size())).second)
            m_module.records.push_back({Text(name.text), name.position, {}, {}});
        else if (!isType)
            m_module.enumNames.emplace(foldCase(name.text), 0);
    }
    rewind(start);
}

Text DeclarationParser::parseQualifiedName()
{
    if (peek().kind != TokenKind::Identifier)
        fail(u"Expected: type name");
    Text name(next().text);
    while (accept(Symbol::Dot))
        name.append(u".").append(expectName().text);
    return name;
}

void DeclarationParser::setNamedType(TypeClause& clause, const Text& name, Position position)
{
    const auto plain = std::ranges::find_if(plainTypes, [&](const NamedType& t) { return equalNoCase(t.name, name); });
    const int record = indexOf(m_module.recordNames, name);
    if (equalNoCase(name, u"Any")) {
        clause.any = true;
    } else if (plain != plainTypes.end()) {
        clause.type.base = plain->type;
    } else if (record >= 0) {
        clause.type.base = ValueType::Dispatch;
        clause.type.record = static_cast<std::int16_t>(record);
    } else if (m_module.enumNames.contains(foldCase(name))) {
        clause.type.base = ValueType::Int32;
    } else if (const auto known = m_library ? m_library->typeNamed(name) : LibraryType::Unknown;
               known != LibraryType::Unknown) {
        clause.type.base = known == LibraryType::Class ? ValueType::Dispatch : ValueType::Int32;
    } else if (std::ranges::any_of(ownClasses, [&](TextView own) { return equalNoCase(own, name); })) {
        clause.type.base = ValueType::Dispatch;
    } else {
        // The declaration stands all the same: who lacks it would have one error after the other for the same reason.
        if (m_unknownTypes.insert(foldCase(name)).second)
            m_problems.push_back({position, u"User-defined type not defined: " + name});
        clause.type.base = ValueType::Dispatch;
    }
}

DeclarationParser::TypeClause DeclarationParser::parseAsClause()
{
    TypeClause clause;
    if (!accept(Word::As))
        return clause;
    clause.given = true;
    clause.type.createsItself = accept(Word::New);
    const Position position = here();
    const Text name = parseQualifiedName();
    setNamedType(clause, name, position);
    clause.className = name;
    if (clause.type.createsItself && !clause.type.isObject())
        fail(position, u"Invalid use of New: " + name + u" is no class");
    if (clause.type.base == ValueType::String && accept(Symbol::Star))
        clause.length = parseExpression();
    return clause;
}

std::vector<BoundsExpr> DeclarationParser::parseBounds()
{
    std::vector<BoundsExpr> bounds;
    while (!at(Symbol::CloseParen)) {
        BoundsExpr bound;
        bound.upper = parseExpression();
        if (accept(Word::To)) {
            bound.lower = std::move(bound.upper);
            bound.upper = parseExpression();
        }
        bounds.push_back(std::move(bound));
        if (!accept(Symbol::Comma))
            break;
    }
    expect(Symbol::CloseParen, u")");
    return bounds;
}

Variable DeclarationParser::parseVariable()
{
    if (at(Word::WithEvents))
        fail(u"WithEvents belongs to class modules, which macros don't have");
    const Token& token = expectName();
    Variable variable;
    variable.name = token.text;
    variable.position = token.position;
    const bool isArray = accept(Symbol::OpenParen);
    if (isArray)
        variable.boundExprs = parseBounds();
    TypeClause clause = parseAsClause();
    if (clause.any)
        fail(token.position, u"Any is a type of declared functions' parameters only");
    variable.type = clause.given ? clause.type : Type{suffixType(token.suffix)};
    variable.type.array = isArray;
    variable.className = std::move(clause.className);
    variable.lengthExpr = std::move(clause.length);
    return variable;
}

Parameter DeclarationParser::parseParameter(Variable& variable)
{
    Parameter parameter;
    for (;; next()) {
        if (at(Word::Optional))
            parameter.optional = true;
        else if (at(Word::ByVal))
            parameter.byRef = false;
        else if (at(Word::ParamArray))
            parameter.paramArray = true;
        else if (!at(Word::ByRef))
            break;
    }
    const Token& token = expectName();
    variable.name = token.text;
    variable.position = token.position;
    const bool isArray = accept(Symbol::OpenParen);
    if (isArray)
        expect(Symbol::CloseParen, u")");
    TypeClause clause = parseAsClause();
    variable.type = clause.given ? clause.type : Type{suffixType(token.suffix)};
    variable.type.array = isArray;
    parameter.any = clause.any;
    if (parameter.paramArray && (!isArray || variable.type.base != ValueType::Variant))
        fail(token.position, u"A ParamArray must be declared as an array of Variant");
    if (accept(Symbol::Equal)) {
        if (!parameter.optional)
            fail(u"Only an Optional parameter can have a default value");
        parameter.defaultExpr = parseExpression();
    }
    return parameter;
}

void DeclarationParser::parseParameters(std::vector<Parameter>& parameters, std::vector<Variable>& variables)
{
    if (!accept(Symbol::OpenParen))
        return;
    while (!at(Symbol::CloseParen)) {
        Variable variable;
        const Position position = here();
        Parameter parameter = parseParameter(variable);
        const bool afterOptional = !parameters.empty() && parameters.back().optional;
        if (!parameters.empty() && parameters.back().paramArray)
            fail(position, u"A ParamArray must be the last parameter");
        if (afterOptional && !parameter.optional && !parameter.paramArray)
            fail(position, u"Expected: Optional");
        parameters.push_back(std::move(parameter));
        variables.push_back(std::move(variable));
        if (!accept(Symbol::Comma))
            break;
    }
    expect(Symbol::CloseParen, u")");
}

void DeclarationParser::parseRecordType()
{
    const Token& name = expectName();
    RecordType& record = m_module.records[static_cast<std::size_t>(indexOf(m_module.recordNames, name.text))];
    if (!record.fields.empty())
        fail(name.position, u"Duplicate declaration in current scope: " + record.name);
    skipLine();
    while (!(at(Word::End) && at(Word::Type, 1))) {
        if (atSourceEnd())
            fail(name.position, u"Type without End Type");
        if (atStatementEnd()) {
            next();
            continue;
        }
        Variable field = parseVariable();
        declareName(record.fieldNames, field.name, record.fields.size(), field.position);
        record.fields.push_back(std::move(field));
        expectStatementEnd();
    }
    next();
    next();
    if (record.fields.empty())
        fail(name.position, u"A Type must have at least one field");
}

void DeclarationParser::declareConstant(std::vector<Constant>& constants, NameMap& names, Constant constant)
{
    declareName(names, constant.name, constants.size(), constant.position);
    constants.push_back(std::move(constant));
}

void DeclarationParser::parseEnumeration()
{
    const Position position = expectName().position;
    skipLine();
    int previous = -1;
    while (!(at(Word::End) && at(Word::Enum, 1))) {
        if (atSourceEnd())
            fail(position, u"Enum without End Enum");
        if (atStatementEnd()) {
            next();
            continue;
        }
        const Token& token = expectName();
        Constant constant;
        constant.name = token.text;
        constant.position = token.position;
        constant.type.base = ValueType::Int32;
        if (accept(Symbol::Equal))
            constant.value = parseExpression();
        else if (previous < 0)
            constant.value = makeExpr(token.position, Literal{Value(std::int32_t(0))});
        constant.after = constant.value ? -1 : previous;
        previous = static_cast<int>(m_module.constants.size());
        declareConstant(m_module.constants, m_module.constantNames, std::move(constant));
        expectStatementEnd();
    }
    next();
    next();
}

void DeclarationParser::parseConstants(std::vector<Constant>& constants, NameMap& names)
{
    do {
        const Token& token = expectName();
        Constant constant;
        constant.name = token.text;
        constant.position = token.position;
        const TypeClause clause = parseAsClause();
        constant.type = clause.given ? clause.type : Type{suffixType(token.suffix)};
        expect(Symbol::Equal, u"=");
        constant.value = parseExpression();
        declareConstant(constants, names, std::move(constant));
    } while (accept(Symbol::Comma));
}

void DeclarationParser::parseDeclare()
{
    accept(Word::PtrSafe);
    DeclaredFunction function;
    function.isFunction = accept(Word::Function);
    if (!function.isFunction)
        expect(Word::Sub, u"Sub or Function");
    const Token& name = expectName();
    function.name = name.text;
    function.position = name.position;
    const auto text = [this]() -> Text {
        const Token& token = peek();
        if (token.kind != TokenKind::Literal || !token.value.get<Text>())
            fail(u"Expected: text in quotes");
        return *next().value.get<Text>();
    };
    expect(Word::Lib, u"Lib");
    function.library = text();
    function.entry = accept(Word::Alias) ? text() : function.name;
    parseParameters(function.parameters, function.parameterVariables);
    const TypeClause clause = parseAsClause();
    function.result = clause.given ? clause.type : Type{suffixType(name.suffix)};
    declareName(m_module.functionNames, function.name, m_module.functions.size(), function.position);
    m_module.functions.push_back(std::move(function));
}

} // namespace zn::language
