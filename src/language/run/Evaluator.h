#pragma once

#include "language/Machine.h"
#include "language/run/Frame.h"
#include "language/run/RunContext.h"
#include "language/run/Watching.h"

#include <optional>

namespace zn::language {

/// Walks a compiled module. Errors of the macro travel as `ScriptError` until a procedure handles them.
class Evaluator {
public:
    Evaluator(Program program, Host& host, FileAccess& files);

    Value run(TextView procedure, std::vector<Value> arguments);
    /// Closes files; failures are raised as `RuntimeFault`.
    void finish();
    void finishQuietly();

private:
    // calls (EvaluatorCalls.cpp)
    Value callFromOutside(const Procedure& procedure, std::vector<Value> arguments);
    Value callProcedure(const ProcedureCall& call);
    void bindParameter(Frame& frame, std::size_t index, const ExprRef& argument, std::vector<Operand>& copiedBack);
    void prepareLocals(Frame& frame, std::size_t first);
    Value finishCall(Frame& frame);
    Value callDeclared(const DeclaredFunctionCall& call);
    Value callIntrinsic(const IntrinsicCall& call);
    Value callMember(const Member& member);
    Value callDefault(const DispatchRef& object, const Arguments& arguments);
    Value callHost(const HostCall& call);
    Value invoke(DispatchObject& object, MemberCall& call);
    /// Evaluates arguments into a call; `places` gets those that by-reference results go back to.
    void addArguments(MemberCall& call, const Arguments& arguments, std::vector<Operand>& places);
    void copyBack(std::vector<Value>& results, std::vector<Operand>& places);
    DispatchRef objectOfMember(const ExprRef& object);

    // expressions (EvaluatorExpressions.cpp)
    Value evaluate(const Expr& expr);
    /// The value without a copy where it lies in a variable; `scratch` holds it otherwise.
    const Value& peek(const Expr& expr, Value& scratch);
    Operand operand(const Expr& expr);
    Operand elementOperand(const Expr& expr, const Element& element);
    Operand fieldOperand(const Expr& expr, const Field& field);
    Value evaluateBinary(const Expr& expr, const Binary& binary);
    Value joined(std::span<const ExprRef> parts);
    Value evaluateTypeOf(const TypeOf& test);
    Slot& localSlot(int slot) { return m_frame->slot(slot); }
    void createIfNew(Value& value, const Type& type, const Variable& variable);
    bool condition(const Expr& expr);

    // places (EvaluatorPlaces.cpp)
    void assign(Value& place, const Type& type, Value value);
    void put(const Expr& target, Value value, bool isSet);
    void putMember(const DispatchRef& object, const Text& name, const Arguments& arguments, Value value, bool isSet);
    Value letValue(const Expr& expr);
    Value makeArray(const Type& element, const std::vector<FixedBound>& bounds);
    Value initialValue(const Variable& variable);
    Value initialElement(const Type& type);
    void redimension(Operand& place, const ReDimStep& step);

    // steps (EvaluatorSteps.cpp, EvaluatorLoops.cpp, EvaluatorFiles.cpp)
    void execute(Frame& frame);
    void perform(const Step& step);
    void handle(Frame& frame, const ScriptError& raised);
    int nextStatement(const Frame& frame, int step) const;
    std::int32_t lineNumberAt(const Frame& frame) const;
    void jump(int target) { m_frame->next = target; }
    void printLines(const Text& text);
    void step(const LetStep& s);
    void grow(const LetStep& s);
    void step(const SetStep& s);
    void step(const CallStep& s);
    void step(const JumpStep& s);
    void step(const JumpUnlessStep& s);
    void step(const ForStep& s);
    void step(const ForNextStep& s);
    void step(const ForEachStep& s);
    void step(const ForEachNextStep& s);
    void step(const SelectStep& s);
    void step(const CaseStep& s);
    void step(const WithStep& s);
    void step(const ClearSlotStep& s);
    void step(const OnErrorStep& s);
    void step(const ResumeStep& s);
    void step(const RaiseStep& s);
    void step(const GoSubStep& s);
    void step(const ChooseStep& s);
    void step(const ReturnStep& s);
    void step(const ExitStep& s);
    void step(const EndStep& s);
    void step(const ReDimStep& s);
    void step(const EraseStep& s);
    void step(const MidStep& s);
    void step(const JustifyStep& s);
    void step(const PrintStep& s);
    void step(const OpenStep& s);
    void step(const CloseStep& s);
    void step(const WriteStep& s);
    void step(const InputStep& s);
    void step(const LineInputStep& s);
    void step(const SeekStep& s);
    void step(const RenameStep& s);
    bool clauseHolds(const CaseClause& clause, const Value& subject, bool isVariant);
    bool loopGoesOn(const Value& counter, const Value& limit, const Value& step) const;

    void checkStack() const;
    void tick();
    RuntimeFault faultOf(const ScriptError& error) const;

    Program m_program;
    const Module& m_module;
    RunContext m_context;
    std::vector<Value> m_globals;
    Frame* m_frame = nullptr;
    Position m_position; ///< of the part that runs now
    struct Origin {
        Position position;
        Text procedure;
    };
    std::optional<Origin> m_origin; ///< where the error that travels now came from
    std::uint32_t m_ticks = 0;
    std::optional<Watching> m_watching; ///< where the host has somebody who watches
    Text m_printed;                     ///< an unfinished line of `Debug.Print`
};

} // namespace zn::language
