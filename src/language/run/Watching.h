#pragma once

#include "language/LineWatcher.h"
#include "language/run/Frame.h"

#include <vector>

namespace zn::language {

/// Finds out for a watcher what has changed since it was told last.
class Watching {
public:
    /// All outlive this object. `globals` holds one value for each global of the module.
    Watching(LineWatcher& watcher, const Module& module, const std::vector<Value>& globals);

    void enter(Frame& frame);
    /// Before a statement runs.
    void statement(Frame& frame, Position position);
    void leave(Frame& frame);

private:
    struct Call {
        const Frame* frame;
        std::vector<Text> shown; ///< of its slots
        Position last{};
    };

    /// The call of the frame; those that an error has ended are forgotten.
    Call& callOf(const Frame& frame);
    void tellChanges(Frame& frame, Call& call);
    void compare(const Text& name, const Value& value, Text& shown);

    LineWatcher& m_watcher;
    const Module& m_module;
    const std::vector<Value>& m_globals;
    std::vector<Text> m_shownGlobals;
    std::vector<Call> m_calls;
};

} // namespace zn::language
