#pragma once

#include "language/text/Token.h"
#include "language/tree/Types.h"
#include "language/values/Operators.h"

#include <memory>
#include <variant>
#include <vector>

namespace zn::language {

struct Intrinsic;
struct Expr;
using ExprRef = std::unique_ptr<Expr>;

struct Argument {
    ExprRef value; ///< null for one that is left out
    Text name;     ///< of `name:=value`, otherwise empty
};
using Arguments = std::vector<Argument>;

// What the parser makes, and the resolver replaces.

struct Name {
    Text name;
    char16_t suffix = 0;
};
/// `a(…)`: an element or a call, which only a's declaration can tell.
struct Applied {
    ExprRef target;
    Arguments arguments;
};

// What stays.

struct Literal {
    Value value;
};
struct LocalVariable {
    int slot;
};
struct GlobalVariable {
    int slot;
};
/// An element of an array, or of whatever a Variant holds (then a default member may answer).
struct Element {
    ExprRef array;
    Arguments subscripts;
};
struct Field {
    ExprRef record;
    int field;
};
/// A member of an object, found by name when it is called. Without an object: that of the enclosing `With`.
struct Member {
    ExprRef object;
    Text name;
    Arguments arguments;
    bool applied = false; ///< written with parentheses
};
/// Arguments in the order of the parameters; null where one is left out.
struct ProcedureCall {
    int procedure;
    std::vector<ExprRef> arguments;
    std::vector<ExprRef> rest; ///< for a `ParamArray`
};
struct DeclaredFunctionCall {
    int function;
    std::vector<ExprRef> arguments;
};
struct IntrinsicCall {
    const Intrinsic* intrinsic;
    std::vector<ExprRef> arguments;
    bool lends = false; ///< no argument changes what another one is (`changesNothing`)
};
/// A global name of the application's library.
struct HostCall {
    Text name;
    Arguments arguments;
};
struct Unary {
    Operator op;
    ExprRef operand;
};
struct Binary {
    Operator op;
    OperatorRules rules;
    ExprRef left;
    ExprRef right;
};
/// A run of `&`, kept flat because generated macros hold hundreds of terms.
struct Concatenation {
    std::vector<ExprRef> parts;
};
/// `(x)`: a value, so that nothing is passed by reference.
struct Parenthesised {
    ExprRef inner;
};
struct NewObject {
    Text className;
};
struct TypeOf {
    ExprRef object;
    Text className;
};
/// The object or record of the enclosing `With`.
struct WithSubject {
    int slot;
};
/// `Err`.
struct ErrorReference { };

using ExprNode = std::variant<Literal, LocalVariable, GlobalVariable, Element, Field, Member, ProcedureCall,
    DeclaredFunctionCall, IntrinsicCall, HostCall, Unary, Binary, Concatenation, Parenthesised, NewObject, TypeOf,
    WithSubject, ErrorReference, Name, Applied>;

struct Expr {
    Position position;
    Type type; ///< as far as it is known before running
    ExprNode node;
    int height = 1; ///< of the tree below; bounded by the parser, so that walking it never exhausts the stack
};

template <class Node> ExprRef makeExpr(Position position, Node node)
{
    return std::make_unique<Expr>(Expr{position, {}, std::move(node), 1});
}

} // namespace zn::language
