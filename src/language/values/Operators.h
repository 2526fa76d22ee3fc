#pragma once

#include "base/Value.h"

namespace zn::language {

enum class Operator {
    Add,
    Subtract,
    Multiply,
    Divide,
    IntegerDivide,
    Modulo,
    Power,
    Concatenate,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessOrEqual,
    GreaterOrEqual,
    Like,
    Is,
    And,
    Or,
    Xor,
    Eqv,
    Imp,
    Negate,
    Not,
};

struct OperatorRules {
    // Whether an operand was declared as a Variant, or comes from one.
    bool leftVariant = false;
    bool rightVariant = false;
    /// `Option Compare Text`.
    bool ignoreCase = false;

    /// A result that its type can't hold takes the next wider one instead of overflowing.
    bool widens() const { return leftVariant || rightVariant; }
};

/// Raises `ScriptError`.
Value applyBinary(Operator op, const Value& left, const Value& right, OperatorRules rules);
Value applyUnary(Operator op, const Value& operand, OperatorRules rules);

/// Negative, 0 or positive. Neither may be Null.
int compareValues(const Value& left, const Value& right, OperatorRules rules);

} // namespace zn::language
