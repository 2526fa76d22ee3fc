#include "language/Program.h"

#include "language/parse/Conditions.h"
#include "language/parse/ModuleParser.h"
#include "language/resolve/Resolver.h"
#include "language/text/Lexer.h"

#include <algorithm>

namespace zn::language {

namespace {

struct Compilation {
    std::shared_ptr<Module> module = std::make_shared<Module>();
    std::vector<SyntaxProblem> problems;
};

Compilation compiled(TextView source, const CompileOptions& options)
{
    Compilation out;
    out.module->lines = sourceLines(source);
    const std::vector<Token> tokens = applyConditions(tokenize(source), options.conditionalConstants, out.problems);
    const auto parsed = ModuleParser(tokens, options.library, *out.module).run();
    out.problems.insert(out.problems.end(), parsed.begin(), parsed.end());
    // What names stand for can only be told of a module whose declarations were all read.
    if (out.problems.empty())
        out.problems = Resolver(*out.module, options.library).run();
    std::ranges::stable_sort(out.problems, [](const SyntaxProblem& a, const SyntaxProblem& b) {
        return std::pair(a.position.line, a.position.column) < std::pair(b.position.line, b.position.column);
    });
    return out;
}

Diagnostic diagnosticOf(const SyntaxProblem& problem, const Module& module)
{
    const auto line = static_cast<std::size_t>(problem.position.line);
    const bool known = line >= 1 && line <= module.lines.size();
    return {problem.position.line, problem.position.column, problem.message, known ? module.lines[line - 1] : Text()};
}

std::string shown(const Diagnostic& diagnostic)
{
    return std::to_string(diagnostic.line) + ":" + std::to_string(diagnostic.column) + ": "
        + toUtf8(diagnostic.message);
}

} // namespace

SyntaxError::SyntaxError(Diagnostic diagnostic)
    : std::runtime_error(shown(diagnostic))
    , m_diagnostic(std::move(diagnostic))
{
}

bool Program::hasProcedure(TextView name) const { return indexOf(m_module->procedureNames, name) >= 0; }

Program compile(TextView source, const CompileOptions& options)
{
    Compilation result = compiled(source, options);
    if (!result.problems.empty())
        throw SyntaxError(diagnosticOf(result.problems.front(), *result.module));
    return Program(std::move(result.module));
}

std::vector<Diagnostic> check(TextView source, const CompileOptions& options)
{
    const Compilation result = compiled(source, options);
    std::vector<Diagnostic> out;
    for (const SyntaxProblem& problem : result.problems)
        out.push_back(diagnosticOf(problem, *result.module));
    return out;
}

} // namespace zn::language
