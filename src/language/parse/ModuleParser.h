#pragma once

#include "language/parse/StatementParser.h"

namespace zn::language {

/// Reads a whole module. Afterwards the module holds everything that was declared, with unresolved expressions.
class ModuleParser : public StatementParser {
public:
    using StatementParser::StatementParser;

    /// The errors that were found.
    std::vector<SyntaxProblem> run();

private:
    void parseModuleLine();
    void parseOption();
    void parseDeclaration();
    void parseProcedure(Word kind, bool isStatic);
};

} // namespace zn::language
