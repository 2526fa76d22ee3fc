#include "language/parse/Conditions.h"

#include "language/parse/ExpressionParser.h"
#include "language/resolve/Folding.h"
#include "language/values/Conversions.h"

#include <unordered_map>

namespace zn::language {

namespace {

/// One `#If` that is open.
struct Branch {
    Position position;
    bool outerActive; ///< whether the lines around it count
    bool taken;       ///< a branch of it has been active
    bool active;
    bool sawElse = false;
};

class ConditionReader : public ExpressionParser {
public:
    ConditionReader(const std::vector<Token>& tokens, const std::vector<ConditionalConstant>& constants,
        std::vector<SyntaxProblem>& problems)
        : ExpressionParser(tokens)
        , m_problems(problems)
    {
        for (const ConditionalConstant& constant : constants)
            m_constants[foldCase(constant.name)] = constant.value;
    }

    std::vector<Token> run()
    {
        std::vector<Token> kept;
        while (!atSourceEnd()) {
            if (isDirective())
                readDirective();
            else
                keepLine(kept);
        }
        kept.push_back(peek());
        if (!m_branches.empty())
            m_problems.push_back({m_branches.back().position, u"#If without #End If"});
        return kept;
    }

private:
    bool active() const { return m_branches.empty() || m_branches.back().active; }

    bool isDirective() const
    {
        return at(Symbol::Hash) && peek().startsLine
            && (at(Word::If, 1) || at(Word::ElseIf, 1) || at(Word::Else, 1) || at(Word::End, 1) || at(Word::EndIf, 1)
                || at(Word::Const, 1));
    }

    void keepLine(std::vector<Token>& kept)
    {
        const bool keep = active();
        while (!atLineEnd()) {
            const Token& token = next();
            if (keep)
                kept.push_back(token);
        }
        if (!atSourceEnd()) {
            const Token& end = next();
            if (keep)
                kept.push_back(end);
        }
    }

    void readDirective()
    {
        const Position position = next().position;
        try {
            directive(position);
            if (!atLineEnd())
                fail(u"Expected: end of statement");
        } catch (const SyntaxProblem& problem) {
            m_problems.push_back(problem);
        } catch (const ScriptError& failure) {
            m_problems.push_back({position, failure.description});
        }
        skipLine();
        if (!atSourceEnd())
            next();
    }

    void directive(Position position)
    {
        if (accept(Word::If)) {
            m_branches.push_back({position, active(), true, false});
            Branch& branch = m_branches.back();
            const bool holds = decide(branch.outerActive);
            branch.active = holds;
            branch.taken = holds;
        } else if (accept(Word::ElseIf)) {
            Branch& branch = openBranch(position, u"#ElseIf without #If");
            const bool open = branch.outerActive && !branch.taken;
            branch.active = false;
            const bool holds = decide(open);
            branch.active = holds;
            branch.taken = branch.taken || holds;
        } else if (accept(Word::Else)) {
            Branch& branch = openBranch(position, u"#Else without #If");
            branch.sawElse = true;
            branch.active = branch.outerActive && !branch.taken;
        } else if (accept(Word::Const)) {
            constant();
        } else {
            if (accept(Word::End))
                expect(Word::If, u"If");
            else
                next();
            openBranchForEnd(position);
            m_branches.pop_back();
        }
    }

    Branch& openBranch(Position position, const char16_t* message)
    {
        if (m_branches.empty() || m_branches.back().sawElse)
            fail(position, message);
        return m_branches.back();
    }

    void openBranchForEnd(Position position) const
    {
        if (m_branches.empty())
            fail(position, u"#End If without #If");
    }

    /// A condition that can't matter any more isn't even looked at.
    bool decide(bool matters)
    {
        if (!matters) {
            skipLine();
            return false;
        }
        const bool holds = truthOf(value());
        expect(Word::Then, u"Then");
        return holds;
    }

    Value value()
    {
        const ExprRef expr = parseExpression();
        return foldUnresolved(*expr, [this](TextView name) {
            const auto hit = m_constants.find(foldCase(name));
            return hit != m_constants.end() ? hit->second : Value();
        });
    }

    void constant()
    {
        const Text name = foldCase(expectName().text);
        expect(Symbol::Equal, u"=");
        if (!active())
            return skipLine();
        m_constants[name] = value();
    }

    std::unordered_map<Text, Value> m_constants;
    std::vector<Branch> m_branches;
    std::vector<SyntaxProblem>& m_problems;
};

} // namespace

std::vector<Token> applyConditions(const std::vector<Token>& tokens, const std::vector<ConditionalConstant>& constants,
    std::vector<SyntaxProblem>& problems)
{
    return ConditionReader(tokens, constants, problems).run();
}

} // namespace zn::language
