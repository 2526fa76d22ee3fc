#pragma once

#include "language/tree/Tree.h"

namespace zn::language {

// A procedure's body is a flat list of steps; blocks have become jumps. So a `GoTo` may lead anywhere, and
// `Resume Next` is the next step that begins a statement. A target is the index of a step.

struct LetStep {
    ExprRef target;
    ExprRef value;
    bool grows = false; ///< `s = s & …`, whose further parts change nothing
};
struct SetStep {
    ExprRef target;
    ExprRef value;
};
struct CallStep {
    ExprRef call;
};
struct JumpStep {
    int target;
};
/// Jumps unless the condition holds; with `until`, when it holds.
struct JumpUnlessStep {
    ExprRef condition;
    int target;
    bool until = false;
};
/// Sets the counter and keeps limit and step in hidden slots; goes to `exit` if the loop has no turn.
struct ForStep {
    ExprRef counter;
    ExprRef first;
    ExprRef last;
    ExprRef step; ///< null for 1
    int limitSlot;
    int stepSlot;
    int exit;
};
/// Advances the counter of the `ForStep` at `begin`, and goes to the step behind it while there are turns left.
struct ForNextStep {
    int begin;
};
struct ForEachStep {
    ExprRef variable;
    ExprRef collection;
    int cursorSlot;
};
/// Gives the variable of the `ForEachStep` at `begin` the next element, or goes to `exit`.
struct ForEachNextStep {
    int begin;
    int exit;
};
struct SelectStep {
    ExprRef subject;
    int slot;
};
struct CaseClause {
    Operator op = Operator::Equal; ///< how the subject stands to `value`
    ExprRef value;
    ExprRef upper; ///< of `value To upper`
};
/// Goes on if one clause holds, otherwise to `otherwise`.
struct CaseStep {
    std::vector<CaseClause> clauses;
    int slot;
    int otherwise;
};
struct WithStep {
    ExprRef subject;
    int slot;
};
struct ClearSlotStep {
    int slot;
};
enum class ErrorMode { Off, ResumeNext, Handler, ClearActive };
struct OnErrorStep {
    ErrorMode mode;
    int target;
};
enum class ResumeMode { Retry, Next, Label };
struct ResumeStep {
    ResumeMode mode;
    int target;
};
struct RaiseStep {
    ExprRef number;
};
struct GoSubStep {
    int target;
};
/// `On number GoTo …` and `On number GoSub …`: goes on with the step of the list behind it that the number tells, or
/// behind the list.
struct ChooseStep {
    ExprRef number;
    int stride; ///< steps of one entry
    int count;  ///< of entries
};
struct ReturnStep { };
struct ExitStep { };
/// `End` and `Stop`: the macro is over.
struct EndStep { };

struct BoundsExpr {
    ExprRef lower; ///< null for the module's base
    ExprRef upper;
};
struct ReDimStep {
    ExprRef variable;
    std::vector<BoundsExpr> bounds;
    bool preserve = false;
    Type element; ///< for an array that isn't there yet
};
struct EraseStep {
    ExprRef variable;
    bool fixed = false; ///< its elements go back to their beginning; a dynamic array goes away
};
/// `Mid(target, start, length) = value`
struct MidStep {
    ExprRef target;
    ExprRef start;
    ExprRef length; ///< or null
    ExprRef value;
};
/// `LSet` and `RSet`.
struct JustifyStep {
    ExprRef target;
    ExprRef value;
    bool right;
};

enum class PrintItemKind { Value, Tab, Spaces, NextZone };
struct PrintItem {
    PrintItemKind kind = PrintItemKind::Value;
    ExprRef value; ///< the expression, column or count; null for a `Tab` without a column
};
/// `Debug.Print` without a file number, otherwise `Print #`.
struct PrintStep {
    ExprRef file;
    std::vector<PrintItem> items;
    bool endsLine = true;
};
enum class OpenMode { Input, Output, Append, Random, Binary };
struct OpenStep {
    ExprRef path;
    ExprRef file;
    OpenMode mode;
    ExprRef recordLength;
};
struct CloseStep {
    std::vector<ExprRef> files; ///< none: all
};
struct WriteStep {
    ExprRef file;
    std::vector<ExprRef> values;
};
struct InputStep {
    ExprRef file;
    std::vector<ExprRef> targets;
};
struct LineInputStep {
    ExprRef file;
    ExprRef target;
};
struct SeekStep {
    ExprRef file;
    ExprRef position;
};
struct RenameStep {
    ExprRef from;
    ExprRef to;
};

using StepNode = std::variant<LetStep, SetStep, CallStep, JumpStep, JumpUnlessStep, ForStep, ForNextStep, ForEachStep,
    ForEachNextStep, SelectStep, CaseStep, WithStep, ClearSlotStep, OnErrorStep, ResumeStep, RaiseStep, GoSubStep,
    ChooseStep, ReturnStep, ExitStep, EndStep, ReDimStep, EraseStep, MidStep, JustifyStep, PrintStep, OpenStep,
    CloseStep, WriteStep, InputStep, LineInputStep, SeekStep, RenameStep>;

struct Step {
    Position position;
    bool startsStatement;
    StepNode node;
};

} // namespace zn::language
