#pragma once

#include "base/Value.h"

#include <memory>
#include <stdexcept>
#include <vector>

namespace zn::language {

class Library;
struct Module;

/// One error of a source text. Line and column count from 1; a column counts 16-bit units.
struct Diagnostic {
    int line = 0;
    int column = 0;
    Text message;
    Text sourceLine; ///< the physical line, without its line end
};

/// Raised by `compile` for the first error of a source. `what()` is "line:column: message" in UTF-8.
class SyntaxError : public std::runtime_error {
public:
    explicit SyntaxError(Diagnostic diagnostic);

    const Diagnostic& diagnostic() const { return m_diagnostic; }
    int line() const { return m_diagnostic.line; }
    int column() const { return m_diagnostic.column; }
    const Text& message() const { return m_diagnostic.message; }
    const Text& sourceLine() const { return m_diagnostic.sourceLine; }

private:
    Diagnostic m_diagnostic;
};

struct ConditionalConstant {
    Text name;
    Value value;
};

struct CompileOptions {
    /// The application's names, or null for none. It must outlive the call only.
    const Library* library = nullptr;
    /// Constants that `#If` knows beforehand (`VBA7`). An unknown one counts as Empty, which is false.
    std::vector<ConditionalConstant> conditionalConstants;
};

/// A compiled module: names are resolved, nothing of the source text is read again. Copies share it.
/// It can't be changed, so several machines may run it, also on several threads.
class Program {
public:
    explicit Program(std::shared_ptr<const Module> module)
        : m_module(std::move(module))
    {
    }

    const Module& module() const { return *m_module; }
    bool hasProcedure(TextView name) const;

private:
    std::shared_ptr<const Module> m_module;
};

/// Compiles one module. `source` has been decoded by the caller; line ends may be CRLF, LF or CR.
/// Raises `SyntaxError` for the first error in the order of the source.
Program compile(TextView source, const CompileOptions& options = {});

/// All errors that one reading of the source finds, in its order; empty for a source that compiles. Never raises for
/// a faulty source. An error inside a block may hide others that follow from it.
std::vector<Diagnostic> check(TextView source, const CompileOptions& options = {});

} // namespace zn::language
