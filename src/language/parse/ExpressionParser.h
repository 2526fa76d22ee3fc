#pragma once

#include "language/parse/TokenReader.h"
#include "language/tree/Tree.h"

namespace zn::language {

/// Reads expressions into trees with unresolved names.
class ExpressionParser : public TokenReader {
public:
    using TokenReader::TokenReader;

    /// Raises `SyntaxProblem`.
    ExprRef parseExpression() { return parseBinary(0); }

protected:
    /// How far a target goes when a statement begins with it.
    enum class Reach {
        Whole,
        /// Stops before a parenthesis that follows a blank: it begins the arguments of a call without parentheses.
        BeforeArguments,
    };
    /// A name, member, element or call.
    ExprRef parseTarget(Reach reach);
    /// Arguments up to a closing parenthesis or the statement's end, neither of which is taken.
    Arguments parseArguments();
    /// One more `.member` or `(…)`; the reader stands at it.
    ExprRef parsePostfixOnce(ExprRef target);
    ExprRef withSubject(Position position) const;

    std::vector<int> m_withSlots; ///< of the enclosing `With` blocks

private:
    ExprRef parseBinary(int least);
    ExprRef parseUnary();
    ExprRef parsePrimary();
    ExprRef parseLiteral();
    ExprRef parseNamed();
    ExprRef parseNew();
    ExprRef parseTypeOf();
    ExprRef parsePostfix(ExprRef target, Reach reach);
    bool atMember() const;
    ExprRef parseMember(ExprRef object);
    ExprRef applied(ExprRef target, Position position);
    ExprRef joined(Operator op, Position position, ExprRef left, ExprRef right);
    Argument parseArgument();
    ExprRef checkedHeight(ExprRef expr, int height) const;

    int m_depth = 0;
};

} // namespace zn::language
