#include "language/parse/ExpressionParser.h"

namespace zn::language {

namespace {

// Generous for people, and small enough for every walk over the tree to stay on the stack.
constexpr int deepestNesting = 100;
constexpr int highestTree = 400;

struct BinaryOperator {
    Operator op;
    int precedence;
};

constexpr int notPrecedence = 6;
constexpr int unaryPrecedence = 13;
constexpr int powerPrecedence = 14;

/// Precedence 0 for a token that is no binary operator.
BinaryOperator binaryOperator(const Token& token)
{
    switch (token.symbol) {
    case Symbol::Equal:
        return {Operator::Equal, 7};
    case Symbol::NotEqual:
        return {Operator::NotEqual, 7};
    case Symbol::Less:
        return {Operator::Less, 7};
    case Symbol::Greater:
        return {Operator::Greater, 7};
    case Symbol::LessOrEqual:
        return {Operator::LessOrEqual, 7};
    case Symbol::GreaterOrEqual:
        return {Operator::GreaterOrEqual, 7};
    case Symbol::Ampersand:
        return {Operator::Concatenate, 8};
    case Symbol::Plus:
        return {Operator::Add, 9};
    case Symbol::Minus:
        return {Operator::Subtract, 9};
    case Symbol::Backslash:
        return {Operator::IntegerDivide, 11};
    case Symbol::Star:
        return {Operator::Multiply, 12};
    case Symbol::Slash:
        return {Operator::Divide, 12};
    case Symbol::Caret:
        return {Operator::Power, powerPrecedence};
    default:
        break;
    }
    switch (token.word) {
    case Word::Imp:
        return {Operator::Imp, 1};
    case Word::Eqv:
        return {Operator::Eqv, 2};
    case Word::Xor:
        return {Operator::Xor, 3};
    case Word::Or:
        return {Operator::Or, 4};
    case Word::And:
        return {Operator::And, 5};
    case Word::Like:
        return {Operator::Like, 7};
    case Word::Is:
        return {Operator::Is, 7};
    case Word::Mod:
        return {Operator::Modulo, 10};
    default:
        return {Operator::Add, 0};
    }
}

class DepthGuard {
public:
    explicit DepthGuard(int& depth)
        : m_depth(++depth)
    {
    }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;
    ~DepthGuard() { --m_depth; }

private:
    int& m_depth;
};

} // namespace

ExprRef ExpressionParser::checkedHeight(ExprRef expr, int height) const
{
    if (height > highestTree)
        fail(expr->position, u"The expression is too complex");
    expr->height = height;
    return expr;
}

ExprRef ExpressionParser::joined(Operator op, Position position, ExprRef left, ExprRef right)
{
    const int height = std::max(left->height, right->height) + 1;
    if (op != Operator::Concatenate)
        return checkedHeight(makeExpr(position, Binary{op, {}, std::move(left), std::move(right)}), height);
    if (auto* run = std::get_if<Concatenation>(&left->node)) {
        left->height = std::max(left->height, right->height + 1);
        run->parts.push_back(std::move(right));
        return left;
    }
    Concatenation run;
    run.parts.push_back(std::move(left));
    run.parts.push_back(std::move(right));
    return checkedHeight(makeExpr(position, std::move(run)), height);
}

ExprRef ExpressionParser::parseBinary(int least)
{
    ExprRef left = parseUnary();
    for (;;) {
        const BinaryOperator found = binaryOperator(peek());
        if (found.precedence == 0 || found.precedence <= least)
            return left;
        const Position position = next().position;
        // The exponent may carry a sign of its own: 2 ^ -1.
        left = joined(found.op, position, std::move(left), parseBinary(found.precedence));
    }
}

ExprRef ExpressionParser::parseUnary()
{
    const DepthGuard guard(m_depth);
    if (m_depth > deepestNesting)
        fail(u"The expression is too complex");
    const Position position = here();
    if (accept(Symbol::Minus)) {
        ExprRef operand = parseBinary(unaryPrecedence);
        const int height = operand->height + 1;
        return checkedHeight(makeExpr(position, Unary{Operator::Negate, std::move(operand)}), height);
    }
    if (accept(Symbol::Plus))
        return parseBinary(unaryPrecedence);
    if (accept(Word::Not)) {
        ExprRef operand = parseBinary(notPrecedence);
        const int height = operand->height + 1;
        return checkedHeight(makeExpr(position, Unary{Operator::Not, std::move(operand)}), height);
    }
    return parsePostfix(parsePrimary(), Reach::Whole);
}

ExprRef ExpressionParser::parsePrimary()
{
    const Token& token = peek();
    if (token.kind == TokenKind::Literal)
        return parseLiteral();
    if (at(Symbol::Dot) || at(Symbol::Bang))
        return parsePostfixOnce(withSubject(token.position));
    if (at(Symbol::OpenParen)) {
        const Position position = next().position;
        ExprRef inner = parseExpression();
        expect(Symbol::CloseParen, u")");
        const int height = inner->height + 1;
        return checkedHeight(makeExpr(position, Parenthesised{std::move(inner)}), height);
    }
    if (token.kind == TokenKind::Identifier)
        return parseNamed();
    fail(u"Expected: expression");
}

ExprRef ExpressionParser::parseLiteral()
{
    const Token& token = next();
    return makeExpr(token.position, Literal{token.value});
}

ExprRef ExpressionParser::parseNamed()
{
    const Token& token = peek();
    switch (token.word) {
    case Word::True:
        next();
        return makeExpr(token.position, Literal{Value(true)});
    case Word::False:
        next();
        return makeExpr(token.position, Literal{Value(false)});
    case Word::Nothing:
        next();
        return makeExpr(token.position, Literal{Value(ObjectRef())});
    case Word::Null:
        next();
        return makeExpr(token.position, Literal{Value(NullValue{})});
    case Word::Empty:
        next();
        return makeExpr(token.position, Literal{Value()});
    case Word::New:
        return parseNew();
    case Word::TypeOf:
        return parseTypeOf();
    case Word::Input: // the function; the statement never begins an expression
    case Word::Seek:
        break;
    default:
        if (isReserved(token.word))
            fail(u"Expected: expression");
    }
    next();
    return makeExpr(token.position, Name{Text(token.text), token.suffix});
}

namespace {

Text joinedNames(Text name, TextView more) { return std::move(name.append(u".").append(more)); }

} // namespace

ExprRef ExpressionParser::parseNew()
{
    const Position position = next().position;
    Text name(expectName().text);
    while (accept(Symbol::Dot))
        name = joinedNames(std::move(name), expectName().text);
    return makeExpr(position, NewObject{std::move(name)});
}

ExprRef ExpressionParser::parseTypeOf()
{
    const Position position = next().position;
    ExprRef object = parseTarget(Reach::Whole);
    expect(Word::Is, u"Is");
    Text name(expectName().text);
    while (accept(Symbol::Dot))
        name = joinedNames(std::move(name), expectName().text);
    return makeExpr(position, TypeOf{std::move(object), std::move(name)});
}

ExprRef ExpressionParser::withSubject(Position position) const
{
    if (m_withSlots.empty())
        fail(position, u"A member without an object stands outside of a With block");
    return makeExpr(position, WithSubject{m_withSlots.back()});
}

ExprRef ExpressionParser::parseTarget(Reach reach)
{
    const Token& token = peek();
    if (at(Symbol::Dot) || at(Symbol::Bang))
        return parsePostfix(parsePostfixOnce(withSubject(token.position)), reach);
    if (token.kind == TokenKind::Identifier && !isReserved(token.word))
        return parsePostfix(parseNamed(), reach);
    fail(u"Expected: statement");
}

/// A dot behind a blank begins a member of the `With` block's object, as in `list.Add .Count`; behind a continued line
/// it goes on with what stands before.
bool ExpressionParser::atMember() const
{
    if (!at(Symbol::Dot) && !at(Symbol::Bang))
        return false;
    return m_withSlots.empty() || !peek().blankBefore || atContinuation();
}

ExprRef ExpressionParser::parsePostfix(ExprRef target, Reach reach)
{
    while (atMember() || (at(Symbol::OpenParen) && !(reach == Reach::BeforeArguments && peek().blankBefore)))
        target = parsePostfixOnce(std::move(target));
    return target;
}

ExprRef ExpressionParser::parsePostfixOnce(ExprRef target)
{
    const int height = target->height + 1;
    const Token& opening = next();
    const Position position = target->position; // people look for the name, not for the parenthesis behind it
    if (opening.symbol == Symbol::Dot)
        return checkedHeight(parseMember(std::move(target)), height);
    if (opening.symbol == Symbol::OpenParen)
        return checkedHeight(applied(std::move(target), position), height);
    // `object!key` is the default member with the key's name.
    Arguments key;
    key.push_back({makeExpr(here(), Literal{Value(Text(expectName().text))}), {}});
    return checkedHeight(makeExpr(position, Applied{std::move(target), std::move(key)}), height);
}

ExprRef ExpressionParser::parseMember(ExprRef object)
{
    const Token& token = peek();
    if (token.kind != TokenKind::Identifier)
        fail(u"Expected: identifier");
    next();
    return makeExpr(token.position, Member{std::move(object), Text(token.text), {}, false});
}

ExprRef ExpressionParser::applied(ExprRef target, Position position)
{
    const DepthGuard guard(m_depth);
    Arguments arguments = parseArguments();
    expect(Symbol::CloseParen, u")");
    int height = target->height;
    for (const Argument& argument : arguments)
        height = argument.value ? std::max(height, argument.value->height) : height;
    if (auto* member = std::get_if<Member>(&target->node); member && !member->applied) {
        member->arguments = std::move(arguments);
        member->applied = true;
        return checkedHeight(std::move(target), height + 1);
    }
    return checkedHeight(makeExpr(position, Applied{std::move(target), std::move(arguments)}), height + 1);
}

Argument ExpressionParser::parseArgument()
{
    Argument argument;
    if (peek().kind == TokenKind::Identifier && at(Symbol::NamedArgument, 1)) {
        argument.name = next().text;
        next();
    }
    accept(Word::ByVal);
    accept(Symbol::Hash); // a file number may be marked as one: Input(5, #1)
    argument.value = parseExpression();
    return argument;
}

Arguments ExpressionParser::parseArguments()
{
    Arguments arguments;
    if (at(Symbol::CloseParen) || atStatementEnd())
        return arguments;
    for (;;) {
        const bool omitted = at(Symbol::Comma) || at(Symbol::CloseParen) || atStatementEnd();
        arguments.push_back(omitted ? Argument{} : parseArgument());
        if (!arguments.back().value && arguments.size() > 1 && !arguments[arguments.size() - 2].name.empty())
            fail(u"Expected: named parameter");
        if (arguments.size() > 1 && arguments.back().name.empty() && !arguments[arguments.size() - 2].name.empty())
            fail(u"Expected: named parameter");
        if (!accept(Symbol::Comma))
            return arguments;
    }
}

} // namespace zn::language
