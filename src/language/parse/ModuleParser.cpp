#include "language/parse/ModuleParser.h"

namespace zn::language {

std::vector<SyntaxProblem> ModuleParser::run()
{
    collectTypeNames();
    while (!atSourceEnd()) {
        if (atStatementEnd() && !at(Word::Else)) {
            next();
            continue;
        }
        try {
            parseModuleLine();
            if (!atLineEnd() && !at(Symbol::Colon))
                fail(u"Expected: end of statement");
        } catch (const SyntaxProblem& problem) {
            m_problems.push_back(problem);
            skipLine();
        }
    }
    return std::move(m_problems);
}

void ModuleParser::parseModuleLine()
{
    if (accept(Word::Option))
        parseOption();
    else if (at(Word::Attribute))
        skipLine(); // an exported module tells its name here
    else
        parseDeclaration();
}

void ModuleParser::parseOption()
{
    if (accept(Word::Explicit)) {
        m_module.explicitNames = true;
    } else if (accept(Word::Base)) {
        const auto* number = next().value.get<std::int16_t>();
        if (!number || (*number != 0 && *number != 1))
            fail(u"Expected: 0 or 1");
        m_module.arrayBase = *number;
    } else if (accept(Word::Compare)) {
        m_module.compareText = at(Word::Text);
        if (!accept(Word::Text) && !accept(Word::Binary))
            fail(u"Expected: Text or Binary");
    } else if (!(accept(Word::Private) && accept(Word::Module))) {
        fail(u"Expected: Explicit, Base, Compare or Private Module");
    }
}

void ModuleParser::parseDeclaration()
{
    bool scoped = false;
    bool isStatic = false;
    for (;; next()) {
        if (at(Word::Static))
            isStatic = true;
        else if (!at(Word::Private) && !at(Word::Public) && !at(Word::Global) && !at(Word::Friend))
            break;
        scoped = true;
    }
    const Word word = peek().word;
    switch (word) {
    case Word::Sub:
    case Word::Function:
        next();
        return parseProcedure(word, isStatic);
    case Word::Declare:
        next();
        return parseDeclare();
    case Word::Type:
        next();
        return parseRecordType();
    case Word::Enum:
        next();
        return parseEnumeration();
    case Word::Const:
        next();
        return parseConstants(m_module.constants, m_module.constantNames);
    case Word::Dim:
        next();
        scoped = true;
        break;
    case Word::Property:
        if (at(Word::Get, 1) || at(Word::Let, 1) || at(Word::Set, 1))
            fail(u"Property procedures belong to class modules, which macros don't have");
        break;
    case Word::Event:
    case Word::Implements:
        fail(Text(peek().text) + u" belongs to class modules, which macros don't have");
    default:
        break;
    }
    if (!scoped)
        fail(u"Expected: a declaration; statements must stand in a Sub or Function");
    do {
        Variable variable = parseVariable();
        declareName(m_module.globalNames, variable.name, m_module.globals.size(), variable.position);
        m_module.globals.push_back(std::move(variable));
    } while (accept(Symbol::Comma));
}

void ModuleParser::parseProcedure(Word kind, bool isStatic)
{
    const Token& name = expectName();
    Procedure procedure;
    procedure.name = name.text;
    procedure.position = name.position;
    procedure.isFunction = kind == Word::Function;
    procedure.isStatic = isStatic;
    parseParameters(procedure.parameters, procedure.locals);
    for (std::size_t i = 0; i < procedure.locals.size(); ++i)
        declareName(procedure.localNames, procedure.locals[i].name, i, procedure.locals[i].position);
    if (procedure.isFunction) {
        const TypeClause clause = parseAsClause();
        procedure.result = clause.given ? clause.type : Type{suffixType(name.suffix)};
        if (accept(Symbol::OpenParen)) {
            expect(Symbol::CloseParen, u")");
            procedure.result.array = true;
        }
        procedure.resultSlot = static_cast<int>(procedure.locals.size());
        Variable result;
        result.name = procedure.name;
        result.type = procedure.result;
        procedure.locals.push_back(std::move(result));
    }
    if (!atLineEnd() && !at(Symbol::Colon))
        fail(u"Expected: end of statement");
    parseBody(procedure, kind);
    declareName(m_module.procedureNames, procedure.name, m_module.procedures.size(), procedure.position);
    m_module.procedures.push_back(std::move(procedure));
}

} // namespace zn::language
