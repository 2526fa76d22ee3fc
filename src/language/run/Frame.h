#pragma once

#include "language/tree/Module.h"
#include "language/values/Conversions.h"

#include <memory>

namespace zn::language {

/// Keeps what a place lies in (an array, a record) alive while somebody refers to the place.
using Keeper = std::shared_ptr<const void>;

/// A variable of a running procedure. A by-reference parameter refers to its caller's place.
struct Slot {
    Value own;
    Value* at = nullptr;
    const Type* type = nullptr;
    Keeper keeper;

    Slot() = default;
    Slot(const Slot&) = delete;
    Slot& operator=(const Slot&) = delete;
};

/// The result of an expression: a place that can be assigned to, or a value of its own.
struct Operand {
    Value* at = nullptr;
    const Type* type = nullptr; ///< of the place
    Keeper keeper;
    Value temporary;

    bool isPlace() const { return at != nullptr; }
    const Value& value() const { return at ? *at : temporary; }
    /// The value, moved out if nobody else has it.
    Value take() { return at ? *at : std::move(temporary); }
};

/// How a procedure meets errors.
struct Handler {
    ErrorMode mode = ErrorMode::Off;
    int target = -1;
    bool active = false; ///< between the jump to the handler and its `Resume`
    int failedStep = -1;
};

/// One call of a procedure. Slots never move.
struct Frame {
    explicit Frame(const Procedure& called)
        : procedure(called)
        , slots(std::make_unique<Slot[]>(called.locals.size()))
    {
    }

    const Procedure& procedure;
    std::unique_ptr<Slot[]> slots;
    int current = 0; ///< step that runs
    int next = 0;
    Handler handler;
    std::vector<int> returns; ///< of `GoSub`

    Slot& slot(int index) { return slots[static_cast<std::size_t>(index)]; }
};

} // namespace zn::language
