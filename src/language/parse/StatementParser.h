#pragma once

#include "language/parse/DeclarationParser.h"

namespace zn::language {

/// Turns the statements of one procedure into steps. Names in them stay unresolved.
class StatementParser : public DeclarationParser {
public:
    using DeclarationParser::DeclarationParser;

protected:
    /// The body up to its `End Sub` or `End Function`, which is taken.
    void parseBody(Procedure& procedure, Word kind);

private:
    enum class LoopKind { For, Do };
    struct Loop {
        LoopKind kind;
        std::vector<int> exits; ///< steps whose target is the loop's end
    };
    struct LabelUse {
        int step;
        Text name;
        Position position;
    };

    // blocks
    void parseBlock();
    bool atBlockEnd() const;
    void parseLabels();
    void recoverFrom(const SyntaxProblem& problem);
    void expectEnd(Word word, const char16_t* message, Position begin);
    void parseStatement();
    bool parseBlockStatement();
    bool parseJumpStatement();
    bool parseDeclarationStatement();
    void parseIf(Position position);
    void parseIfBlock(Position position);
    void parseInlineIf(int test, Position position);
    void parseInlineStatements();
    void parseSelect(Position position);
    CaseClause parseCaseClause();
    void parseFor(Position position);
    void parseForEach(Position position);
    void parseNext(Position begin);
    void parseDo(Position position);
    void parseWhile(Position position);
    void parseWith(Position position);
    void parseExit(Position position);
    void parseOn(Position position);
    void parseChoice(Position position);
    void parseResume(Position position);
    void parseLabelUse(int step);

    // plain statements
    void parseAssignmentOrCall(Position position);
    void parseCall(Position position);
    void emitCall(Position position, ExprRef target, Arguments arguments, bool applied);
    void parseLet(Position position);
    void parseSet(Position position);
    void parseDim(bool isStatic);
    void parseReDim(Position position);
    /// Whether the parenthesis here holds a `ReDim`'s bounds, and not the subscripts of something before a dot.
    bool atBounds() const;
    void parseErase(Position position);
    void parseMid(Position position);
    void parseJustify(Position position, bool right);

    // files and output
    bool parseFileStatement();
    void parseOpen(Position position);
    OpenMode parseOpenMode();
    void parseClose(Position position);
    void parsePrint(Position position, ExprRef file);
    void parseWrite(Position position);
    void parseInput(Position position);
    void parseLineInput(Position position);
    void parseSeek(Position position);
    void parseRename(Position position);
    ExprRef parseFileNumber();

    // steps
    int emit(Position position, StepNode node);
    int nextStep() const { return static_cast<int>(m_procedure->steps.size()); }
    /// Makes a jump lead to the step that comes next.
    void land(int step) { setTarget(step, nextStep()); }
    void setTarget(int step, int target);
    int hiddenSlot();
    void leaveLoop();
    void bindLabels();

    Procedure* m_procedure = nullptr;
    bool m_starts = true;         ///< the next step begins a statement
    bool m_nextContinues = false; ///< `Next j, i`: the outer loop's name stands where a `Next` would
    int m_blockDepth = 0;
    std::vector<Loop> m_loops;
    NameMap m_labels; ///< to their steps
    std::vector<LabelUse> m_labelUses;
};

} // namespace zn::language
