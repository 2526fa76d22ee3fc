#pragma once

#include "language/Program.h"

namespace zn::language {

class Host;
class FileAccess;
class Evaluator;

enum class FaultKind {
    RuntimeError,     ///< an error that the macro didn't handle
    MissingProcedure, ///< `run` was given a name that the module doesn't have
    ParameterCount,   ///< `run` was given too few or too many arguments
    Interrupted,      ///< the host asked for the end
};

/// Why a macro ended before its end. `what()` is the description in UTF-8.
class RuntimeFault : public std::runtime_error {
public:
    RuntimeFault(FaultKind kind, std::int32_t number, Text description);

    FaultKind kind;
    std::int32_t number; ///< the language's error number, or a negative status of a host call
    Text description;
    int line = 0; ///< of the statement's faulty part, from 1; 0 when no statement was reached
    int column = 0;
    Text sourceLine;
    Text procedure;
};

/// Runs the procedures of one program. Module-level variables live as long as the machine.
/// A machine and its objects belong to one thread.
class Machine {
public:
    /// `host` and `files` must outlive the machine.
    Machine(Program program, Host& host, FileAccess& files);
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;
    /// Closes the files that the macro left open.
    ~Machine();

    /// Runs a procedure and gives its result, Empty for a `Sub`. Raises `RuntimeFault`.
    /// Not to be called while a run of the same machine goes on.
    /// Files that the macro left open are closed, written out, when it ends.
    Value run(TextView procedure, std::vector<Value> arguments = {});

private:
    std::unique_ptr<Evaluator> m_evaluator;
};

} // namespace zn::language
