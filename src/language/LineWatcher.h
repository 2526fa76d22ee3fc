#pragma once

#include "base/Text.h"

namespace zn::language {

/// A line of a macro at the moment at which its first statement is about to run.
struct WatchedLine {
    int number = 0;        ///< from 1
    const Text& source;    ///< the physical line, without its line end
    const Text& procedure; ///< in which it stands
    std::size_t depth = 0; ///< procedures around it that haven't ended; 0 for the one that was run
};

/// A variable that has another value than when the watcher was told of it last.
struct WatchedChange {
    const Text& name;
    /// As a person reads it, in one line: a text in double quotes, cut when it is long; the first elements of an array.
    const Text& value;
    std::size_t depth = 0; ///< as of a line
};

/// Who sees a macro run line by line. Several statements of one line count as one, unless the macro goes back.
/// Told of a procedure's parameters when it begins, and of changes behind the statement that made them: of variables of
/// the procedure that runs and of the module. What changes inside an object is not told, nor behind an array's first
/// elements. All calls come on the thread that runs the macro.
class LineWatcher {
public:
    virtual ~LineWatcher() = default;
    virtual void line(const WatchedLine& line) = 0;
    virtual void changed(const WatchedChange& change) = 0;
};

} // namespace zn::language
