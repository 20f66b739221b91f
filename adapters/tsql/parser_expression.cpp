#include <algorithm>
#include <charconv>

#include "parser.h"
#include "tamarok_tsql/type_rules.h"

namespace tamarok::tsql {
namespace {

/// Highest expression tree. A chain such as 1+1+1 is as high as it is long; back ends walk the tree recursively
/// and refuse more than about 1000 levels.
constexpr std::uint16_t highestTree = 900;

/// Most conditions joined by one AND or OR chain.
constexpr std::size_t longestChain = 5000;

/// Most values in the lists of one statement: of IN, of rows to insert, of arguments. SQLite compiles a statement
/// without looking at the clock, some 400 ns a value.
constexpr std::size_t mostListedValues = 200'000;

bool isComparison(TokenKind kind)
{
    return kind >= TokenKind::Equal && kind <= TokenKind::GreaterEqual;
}

bool isAdditive(TokenKind kind)
{
    switch (kind) {
    case TokenKind::Plus:
    case TokenKind::Minus:
    case TokenKind::Ampersand:
    case TokenKind::Bar:
    case TokenKind::Caret:
    case TokenKind::BarBar: return true;
    default: return false;
    }
}

} // namespace

/// The server has no Boolean values: A = B is a condition and never an operand or an item of the SELECT list. One set
/// of functions parses both, and these two check where only one is allowed.
Expr* Parser::requireValue(Expr* expr) const
{
    if (expr->condition) {
        source_.refuse(expr->offset, messages::syntax,
                       "Incorrect syntax: a condition stands where a value is expected.");
    }
    return expr;
}

Expr* Parser::requireCondition(Expr* expr) const
{
    if (!expr->condition) {
        source_.refuse(expr->offset, 4145,
                       "An expression of non-boolean type is specified in a context where a condition is expected.");
    }
    return expr;
}

Expr* Parser::value()
{
    return requireValue(expression());
}

Expr* Parser::condition()
{
    return requireCondition(expression());
}

/// Builds a binary node and keeps count of the tree's height. The offset is that of the operator, which messages point
/// at.
Expr* Parser::binary(ExprKind kind, TokenKind op, Expr* left, Expr* right, std::uint32_t offset)
{
    auto* result = node<BinaryExpr>(kind, offset);
    result->op = op;
    result->left = requireValue(left);
    result->right = requireValue(right);
    result->condition = kind == ExprKind::Compare;
    return raised(result, {left, right});
}

void Parser::raise(Expr& node, const Expr* child) const
{
    if (child == nullptr || child->height < node.height) return;
    node.height = static_cast<std::uint16_t>(child->height + 1);
    if (node.height <= highestTree) return;
    source_.refuse(node.offset, messages::expressionTooComplex,
                   "An expression services limit has been reached: more than 900 operators follow each other or stand "
                   "inside each other.");
}

Expr* Parser::expression()
{
    const Level level(*this, "this expression");
    Expr* first = andChain();
    return at(Keyword::Or) ? chain(ExprKind::Or, first, Keyword::Or) : first;
}

Expr* Parser::andChain()
{
    Expr* first = notOperand();
    return at(Keyword::And) ? chain(ExprKind::And, first, Keyword::And) : first;
}

/// AND and OR collect all operands in one node: generated conditions have hundreds of them, and a binary tree would be
/// too high.
Expr* Parser::chain(ExprKind kind, Expr* first, Keyword keyword)
{
    auto* result = node<ChainExpr>(kind, first->offset);
    ArenaList<Expr*> operands(arena_);
    operands.push(requireCondition(first));
    while (at(keyword)) {
        if (operands.size() == longestChain) {
            source_.refuse(current().offset, messages::expressionTooComplex,
                           "An expression services limit has been reached: more than 5000 conditions are joined by " +
                               std::string(keywordText(keyword)) + ".");
        }
        ++position_;
        operands.push(requireCondition(kind == ExprKind::Or ? andChain() : notOperand()));
    }
    result->operands = operands.span();
    result->condition = true;
    for (const Expr* operand : result->operands)
        raise(*result, operand);
    return result;
}

/// Each NOT counts as a level of nesting, since this function calls itself for it.
Expr* Parser::notOperand()
{
    if (!at(Keyword::Not)) return predicate();
    const Level level(*this, "this NOT");
    auto* result = node<NotExpr>(ExprKind::Not, current().offset);
    ++position_;
    result->operand = requireCondition(notOperand());
    result->condition = true;
    return raised(result, {result->operand});
}

/// Comparisons do not chain: after A = B the next comparison is a syntax error. A parenthesised condition comes back
/// from `additive` with its flag set and passes through unchanged.
Expr* Parser::predicate()
{
    if (at(Keyword::Exists)) {
        auto* result = node<QueryExpr>(ExprKind::Exists, current().offset);
        ++position_;
        expect(TokenKind::LeftParen, "(");
        result->query = query();
        expect(TokenKind::RightParen, ")");
        result->condition = true;
        return result;
    }
    Expr* left = additive();
    if (isComparison(current().kind)) {
        const Token& op = tokens_[position_++];
        if (at(Keyword::All) || at(Keyword::Any) || at(Keyword::Some)) {
            unsupportedHere("A comparison with ALL, ANY or SOME");
        }
        return binary(ExprKind::Compare, op.kind, left, additive(), op.offset);
    }
    return negatablePredicate(left);
}

Expr* Parser::negatablePredicate(Expr* left)
{
    const std::uint32_t offset = current().offset;
    if (accept(Keyword::Is)) {
        auto* result = node<IsNullExpr>(ExprKind::IsNull, offset);
        result->value = requireValue(left);
        result->negated = accept(Keyword::Not);
        expect(Keyword::Null);
        result->condition = true;
        return raised(result, {left});
    }
    // NOT belongs to this predicate only if IN, BETWEEN or LIKE follows it. Otherwise nothing is consumed.
    const Keyword following = at(Keyword::Not) ? ahead(1).keyword : current().keyword;
    if (following != Keyword::In && following != Keyword::Between && following != Keyword::Like) return left;
    const bool negated = accept(Keyword::Not);
    ++position_;
    if (following == Keyword::In) return inPredicate(left, negated, offset);
    if (following == Keyword::Between) {
        auto* result = node<BetweenExpr>(ExprKind::Between, offset);
        result->value = requireValue(left);
        // The bounds are read without AND and OR, so that the AND found next is the one of BETWEEN.
        result->low = requireValue(additive());
        expect(Keyword::And);
        result->high = requireValue(additive());
        result->negated = negated;
        result->condition = true;
        return raised(result, {left, result->low, result->high});
    }
    auto* result = node<LikeExpr>(ExprKind::Like, offset);
    result->value = requireValue(left);
    result->pattern = requireValue(additive());
    result->escape = accept(Keyword::Escape) ? requireValue(additive()) : nullptr;
    result->negated = negated;
    result->condition = true;
    return raised(result, {left, result->pattern, result->escape});
}

/// IN takes a query or a list of values. IN ((SELECT ...)) is a query as well: the list has one item, which is a
/// subquery.
Expr* Parser::inPredicate(Expr* left, bool negated, std::uint32_t offset)
{
    expect(TokenKind::LeftParen, "(");
    Query* inner = nullptr;
    ExprList items;
    if (at(Keyword::Select)) {
        inner = query();
    } else {
        items = valueList();
        if (items.size() == 1 && items[0]->kind == ExprKind::Subquery) inner = as<QueryExpr>(*items[0]).query;
    }
    expect(TokenKind::RightParen, ")");
    if (inner != nullptr) {
        auto* result = node<InQueryExpr>(ExprKind::InQuery, offset);
        result->value = requireValue(left);
        result->query = inner;
        result->negated = negated;
        result->condition = true;
        return raised(result, {left});
    }
    auto* result = node<InListExpr>(ExprKind::InList, offset);
    result->value = requireValue(left);
    result->items = items;
    result->negated = negated;
    result->condition = true;
    for (const Expr* item : items)
        raise(*result, item);
    return raised(result, {left});
}

/// Bitwise operators have the rank of + and -, as on the server. || joins texts in statements written for Oracle.
Expr* Parser::additive()
{
    Expr* left = multiplicative();
    while (isAdditive(current().kind)) {
        const Token& op = tokens_[position_++];
        left = binary(ExprKind::Binary, op.kind, left, multiplicative(), op.offset);
    }
    return left;
}

Expr* Parser::multiplicative()
{
    Expr* left = unary();
    while (at(TokenKind::Star) || at(TokenKind::Slash) || at(TokenKind::Percent)) {
        const Token& op = tokens_[position_++];
        left = binary(ExprKind::Binary, op.kind, left, unary(), op.offset);
    }
    return left;
}

/// A sign of plus is dropped: it changes neither value nor type.
Expr* Parser::unary()
{
    if (!at(TokenKind::Minus) && !at(TokenKind::Plus) && !at(TokenKind::Tilde)) return primary();
    const Level level(*this, "this sign");
    const Token& op = tokens_[position_++];
    Expr* operand = requireValue(unary());
    if (op.kind == TokenKind::Plus) return operand;
    auto* result = node<UnaryExpr>(ExprKind::Unary, op.offset);
    result->op = op.kind;
    result->operand = operand;
    return raised(result, {operand});
}

Expr* Parser::textLiteral(const Token& token)
{
    auto* result = node<TextExpr>(ExprKind::Text, token.offset);
    std::string_view raw = text(token);
    result->national = raw.front() != '\'';
    if (result->national) raw.remove_prefix(1);
    result->raw = raw;
    return result;
}

/// What an operator may stand beside. Parameters are numbered in the order in which they are met, over the whole batch.
Expr* Parser::primary()
{
    const Token& token = current();
    switch (token.kind) {
    case TokenKind::Name:
    case TokenKind::QuotedName: return wordExpression();
    case TokenKind::Integer:
    case TokenKind::Decimal:
    case TokenKind::Float: {
        auto* result = node<NumberExpr>(ExprKind::Number, token.offset);
        result->text = text(token);
        result->token = token.kind;
        ++position_;
        return result;
    }
    case TokenKind::Text: ++position_; return textLiteral(token);
    case TokenKind::Parameter: {
        auto* result = node<ParameterExpr>(ExprKind::Parameter, token.offset);
        result->index = parameters_++;
        ++position_;
        return result;
    }
    case TokenKind::SystemVariable: {
        auto* result = node<SystemExpr>(ExprKind::System, token.offset);
        result->name = text(token);
        ++position_;
        return result;
    }
    case TokenKind::Variable:
        source_.refuse(token.offset, 137, "Must declare the scalar variable \"" + std::string(text(token)) + "\".");
    case TokenKind::Hex: unsupportedHere("A binary constant");
    case TokenKind::LeftParen: return parenthesised();
    default: refuseHere();
    }
}

Expr* Parser::parenthesised()
{
    const std::uint32_t offset = current().offset;
    ++position_;
    Expr* result = nullptr;
    if (at(Keyword::Select)) {
        auto* subquery = node<QueryExpr>(ExprKind::Subquery, offset);
        subquery->query = query();
        result = subquery;
    } else {
        result = expression();
    }
    expect(TokenKind::RightParen, ")");
    return result;
}

/// Keywords that begin an expression. CAST, ISNULL and their like are functions only if a parenthesis follows; without
/// one they are column names.
Expr* Parser::wordExpression()
{
    const bool called = ahead(1).kind == TokenKind::LeftParen;
    switch (current().keyword) {
    case Keyword::Null: {
        Expr* result = node<Expr>(ExprKind::Null, current().offset);
        ++position_;
        return result;
    }
    case Keyword::Default: {
        Expr* result = node<Expr>(ExprKind::Default, current().offset);
        ++position_;
        return result;
    }
    case Keyword::Case: return caseExpression();
    case Keyword::Cast:
        if (called) return castExpression();
        break;
    case Keyword::Convert:
        if (called) return convertExpression();
        break;
    case Keyword::IsNull:
    case Keyword::Nvl:
        if (called) return callExpression(ExprKind::IsNullCall, 2, 2);
        break;
    case Keyword::Coalesce:
        if (called) return callExpression(ExprKind::Coalesce, 1, 1000);
        break;
    case Keyword::NullIf:
        if (called) return callExpression(ExprKind::NullIf, 2, 2);
        break;
    case Keyword::Iif:
        if (called) return iifExpression();
        break;
    default: break;
    }
    return columnOrCall();
}

/// LEFT and RIGHT are reserved because of the joins, but are functions before a parenthesis. Of a name of several parts
/// the last two count: the table (or its alias) and the column. The server's user functions are written
/// schema.name(...); the schema is dropped.
Expr* Parser::columnOrCall()
{
    const bool called = ahead(1).kind == TokenKind::LeftParen;
    const bool sided = at(Keyword::Left) || at(Keyword::Right);
    if (called && (atName() || sided)) return functionCall(nameOf(tokens_[position_++]));
    auto* column = node<ColumnExpr>(ExprKind::Column, current().offset);
    const bool rowNumber = at(Keyword::RowNum);
    column->name = name();
    // Oracle's ROWNUM. The binder decides whether a column of that name exists.
    if (rowNumber && !at(TokenKind::Dot)) column->kind = ExprKind::RowNum;
    while (accept(TokenKind::Dot)) {
        column->qualifier = column->name;
        column->name = name();
        if (at(TokenKind::LeftParen)) return functionCall(column->name);
    }
    return column;
}

ExprList Parser::valueList()
{
    ArenaList<Expr*> items(arena_);
    do {
        if (++listedValues_ > mostListedValues) {
            source_.refuse(current().offset, messages::tooComplex,
                           "The query processor ran out of internal resources: the lists of the statement have more "
                           "than 200000 values.");
        }
        items.push(value());
    } while (accept(TokenKind::Comma));
    return items.span();
}

Expr* Parser::functionCall(const Name& called)
{
    auto* result = node<FunctionExpr>(ExprKind::Function, called.offset);
    result->name = called;
    expect(TokenKind::LeftParen, "(");
    if (accept(TokenKind::Star)) {
        result->star = true;
    } else if (!at(TokenKind::RightParen)) {
        result->distinct = accept(Keyword::Distinct);
        accept(Keyword::All);
        result->arguments = valueList();
    }
    expect(TokenKind::RightParen, ")");
    for (const Expr* argument : result->arguments)
        raise(*result, argument);
    if (at(Keyword::Over)) result->over = overClause();
    return result;
}

Over* Parser::overClause()
{
    ++position_;
    expect(TokenKind::LeftParen, "(");
    Over* over = arena_.make<Over>();
    if (accept(Keyword::Partition)) {
        expect(Keyword::By);
        over->partition = valueList();
    }
    if (accept(Keyword::Order)) {
        expect(Keyword::By);
        over->order = orderItems();
    }
    if (at(Keyword::Rows) || atWord("RANGE")) unsupportedHere("A window frame (ROWS or RANGE)");
    expect(TokenKind::RightParen, ")");
    return over;
}

/// CASE operand WHEN value ... or CASE WHEN condition ...; ELSE is optional in both.
Expr* Parser::caseExpression()
{
    auto* result = node<CaseExpr>(ExprKind::Case, current().offset);
    ++position_;
    if (!at(Keyword::When)) result->operand = value();
    ArenaList<CaseArm> arms(arena_);
    while (accept(Keyword::When)) {
        Expr* when = result->operand != nullptr ? value() : condition();
        expect(Keyword::Then);
        Expr* then = value();
        arms.push({when, then});
        raise(*result, when);
        raise(*result, then);
    }
    if (arms.size() == 0) expect(Keyword::When);
    if (accept(Keyword::Else)) result->otherwise = value();
    expect(Keyword::End);
    result->arms = arms.span();
    return raised(result, {result->operand, result->otherwise});
}

/// IIF(condition, a, b) becomes CASE WHEN condition THEN a ELSE b END.
Expr* Parser::iifExpression()
{
    auto* result = node<CaseExpr>(ExprKind::Case, current().offset);
    position_ += 2;
    Expr* when = condition();
    expect(TokenKind::Comma, ",");
    Expr* then = value();
    expect(TokenKind::Comma, ",");
    result->otherwise = value();
    expect(TokenKind::RightParen, ")");
    const CaseArm arm{when, then};
    result->arms = arena_.copy(std::span<const CaseArm>(&arm, 1));
    return raised(result, {when, then, result->otherwise});
}

/// A call whose type follows from all of its arguments, so that it has a node kind of its own. Wrong numbers of
/// arguments are refused here; for other functions the binder does it.
Expr* Parser::callExpression(ExprKind kind, std::size_t least, std::size_t most)
{
    const Token& called = current();
    auto* result = node<CallExpr>(kind, called.offset);
    position_ += 2;
    result->arguments = valueList();
    expect(TokenKind::RightParen, ")");
    if (result->arguments.size() < least || result->arguments.size() > most) {
        source_.refuse(called.offset, messages::argumentCount,
                       "The " + std::string(text(called)) + " function requires " + std::to_string(least) +
                           " argument(s).");
    }
    for (const Expr* argument : result->arguments)
        raise(*result, argument);
    return result;
}

/// A whole number literal that fits into 32 bits: the size of a type.
std::int32_t Parser::smallNumber()
{
    std::int32_t result = 0;
    const std::string_view digits = text(current());
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), result);
    if (!at(TokenKind::Integer) || failure != std::errc() || end != digits.data() + digits.size()) refuseHere();
    ++position_;
    return result;
}

/// A type with its sizes; `written` receives its text verbatim.
Type Parser::typeName(std::string_view& written)
{
    const std::uint32_t begin = current().offset;
    if (!at(TokenKind::Name) && !at(TokenKind::QuotedName)) refuseHere();
    const std::string_view shown = text(current());
    ++position_;
    if (accept(TokenKind::LeftParen)) {
        do {
            // The sizes are checked here and read from the text by parseDeclaredType. CHAR stands in Oracle's
            // VARCHAR2(40 CHAR).
            if (!acceptWord("MAX")) smallNumber();
            acceptWord("CHAR");
        } while (accept(TokenKind::Comma));
        expect(TokenKind::RightParen, ")");
    }
    const Token& last = tokens_[position_ - 1];
    written = source_.text().substr(begin, last.offset + last.length - begin);
    const Type type = parseDeclaredType(written);
    if (type.kind == TypeKind::Unknown) {
        source_.refuse(begin, 243, "Type " + std::string(shown) + " is not a defined system type.");
    }
    if (type.kind == TypeKind::Decimal && (type.precision < 1 || type.precision > 38 || type.scale > type.precision)) {
        source_.refuse(begin, 192, "The scale must be less than or equal to the precision, and that at most 38.");
    }
    return type;
}

namespace {

/// CAST and CONVERT to a text type without a length mean 30 characters.
Type withCastLength(Type type, std::string_view written)
{
    constexpr std::int32_t castLength = 30;
    const bool sized = written.find('(') != std::string_view::npos;
    if (isText(type) && type.length > 0 && !sized) type.length = castLength;
    return type;
}

} // namespace

Expr* Parser::castExpression()
{
    auto* result = node<CastExpr>(ExprKind::Cast, current().offset);
    position_ += 2;
    result->value = value();
    expect(Keyword::As);
    std::string_view written;
    const Type type = typeName(written);
    result->target = withCastLength(type, written);
    expect(TokenKind::RightParen, ")");
    return raised(result, {result->value});
}

Expr* Parser::convertExpression()
{
    auto* result = node<CastExpr>(ExprKind::Cast, current().offset);
    position_ += 2;
    std::string_view written;
    const Type type = typeName(written);
    result->target = withCastLength(type, written);
    expect(TokenKind::Comma, ",");
    result->value = value();
    if (accept(TokenKind::Comma)) result->style = value();
    expect(TokenKind::RightParen, ")");
    return raised(result, {result->value, result->style});
}

} // namespace tamarok::tsql
