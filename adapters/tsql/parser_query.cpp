#include <algorithm>
#include <array>
#include <utility>

#include "parser.h"

namespace tamarok::tsql {
namespace {

/// Most SELECTs of a compound query (UNION and the like); back ends have such a limit.
constexpr std::uint16_t mostArms = 500;

/// Most tables of one FROM clause; back ends number them by the bits of a word.
constexpr std::size_t mostTables = 256;

/// Most items of a SELECT list, as on the server.
constexpr std::size_t mostItems = 4096;

/// Hints on locking are honoured by how the embedded database locks in any case; they change no result.
constexpr std::array<std::string_view, 15> knownHints{
    "NOLOCK",          "ROWLOCK",        "READPAST", "UPDLOCK",      "XLOCK",  "HOLDLOCK", "TABLOCK",      "TABLOCKX",
    "READUNCOMMITTED", "REPEATABLEREAD", "PAGLOCK",  "SERIALIZABLE", "NOWAIT", "NOEXPAND", "READCOMMITTED"};

} // namespace

/// A query with its ORDER BY. OFFSET and FETCH belong to ORDER BY, as on the server.
Query* Parser::query()
{
    const Level level(*this, "this query");
    Query* result = setExpression();
    if (at(Keyword::Order)) {
        // A parenthesised query may already have an ORDER BY.
        if (!result->order.empty()) refuseHere();
        ++position_;
        expect(Keyword::By);
        result->order = orderItems();
        if (at(Keyword::Offset)) offsetClause(*result);
    }
    if (at(Keyword::Option)) unsupportedHere("OPTION (query hint)");
    if (atWord("FOR")) unsupportedHere("FOR XML, FOR JSON and FOR BROWSE");
    return result;
}

/// Joins two queries. `arms` counts the SELECTs below, so that the limit is found while the tree is built.
Query* Parser::combine(SetOperator op, Query* left, Query* right, std::uint32_t offset)
{
    Query* result = arena_.make<Query>();
    result->op = op;
    result->left = left;
    result->right = right;
    result->offset = offset;
    result->arms = static_cast<std::uint16_t>(left->arms + right->arms);
    if (result->arms > mostArms) {
        source_.refuse(offset, messages::tooDeep, "A query joined of more than 500 SELECT is nested too deeply.");
    }
    return result;
}

/// UNION and EXCEPT have the same rank and group from the left; INTERSECT binds more tightly. MINUS is Oracle's name of
/// EXCEPT.
Query* Parser::setExpression()
{
    Query* left = intersectTerm();
    for (;;) {
        const std::uint32_t offset = current().offset;
        if (accept(Keyword::Union)) {
            const SetOperator op = accept(Keyword::All) ? SetOperator::UnionAll : SetOperator::Union;
            left = combine(op, left, intersectTerm(), offset);
        } else if (accept(Keyword::Except) || acceptWord("MINUS")) {
            left = combine(SetOperator::Except, left, intersectTerm(), offset);
        } else {
            return left;
        }
    }
}

Query* Parser::intersectTerm()
{
    Query* left = queryTerm();
    while (at(Keyword::Intersect)) {
        const std::uint32_t offset = current().offset;
        ++position_;
        left = combine(SetOperator::Intersect, left, queryTerm(), offset);
    }
    return left;
}

Query* Parser::queryTerm()
{
    if (accept(TokenKind::LeftParen)) {
        Query* inner = query();
        expect(TokenKind::RightParen, ")");
        return inner;
    }
    Query* result = arena_.make<Query>();
    result->offset = current().offset;
    result->select = select();
    return result;
}

/// The clauses in the order in which they must be written. Each is optional, apart from the items.
Select* Parser::select()
{
    Select* result = arena_.make<Select>();
    result->offset = current().offset;
    expect(Keyword::Select);
    result->distinct = accept(Keyword::Distinct);
    accept(Keyword::All);
    if (at(Keyword::Top)) topClause(*result);
    ArenaList<SelectItem> items(arena_);
    do {
        if (items.size() == mostItems) {
            source_.refuse(current().offset, messages::tooManyItems,
                           "The number of elements in the select list exceeds the maximum allowed number of 4096 "
                           "elements.");
        }
        items.push(selectItem());
    } while (accept(TokenKind::Comma));
    result->items = items.span();
    if (accept(Keyword::Into)) result->into = qualifiedName();
    if (accept(Keyword::From)) result->from = fromClause();
    if (accept(Keyword::Where)) result->where = condition();
    if (accept(Keyword::Group)) {
        expect(Keyword::By);
        if (at(Keyword::All)) unsupportedHere("GROUP BY ALL");
        result->groupBy = valueList();
        if (at(Keyword::With)) unsupportedHere("WITH ROLLUP and WITH CUBE");
    }
    if (accept(Keyword::Having)) result->having = condition();
    return result;
}

/// TOP (value) takes any expression; without parentheses only a number or a parameter, since an operator after it would
/// be ambiguous.
void Parser::topClause(Select& select)
{
    ++position_;
    if (accept(TokenKind::LeftParen)) {
        select.top = value();
        expect(TokenKind::RightParen, ")");
    } else {
        if (!at(TokenKind::Integer) && !at(TokenKind::Parameter)) refuseHere();
        select.top = primary();
    }
    if (at(Keyword::Percent)) unsupportedHere("TOP ... PERCENT");
    if (at(Keyword::With) && sameName(text(ahead(1)), "TIES")) unsupportedHere("TOP ... WITH TIES");
}

/// "alias = expression" at the beginning of an item of the SELECT list.
bool Parser::aliasedByEquals() const
{
    return (atName() || at(TokenKind::Text)) && ahead(1).kind == TokenKind::Equal;
}

/// An item is *, table.*, alias = value, or value with an optional alias. An item without a value is a star.
SelectItem Parser::selectItem()
{
    SelectItem item;
    item.offset = current().offset;
    if (accept(TokenKind::Star)) return item;
    if (aliasedByEquals()) {
        item.alias = nameOf(current());
        position_ += 2;
        item.value = value();
        return item;
    }
    if (atName()) {
        // Looks ahead over name.name... for a star, without consuming anything. Only the last name before it counts.
        std::size_t star = 1;
        while (ahead(star).kind == TokenKind::Dot && ahead(star + 1).kind != TokenKind::Star)
            star += 2;
        if (ahead(star).kind == TokenKind::Dot) {
            item.qualifier = nameOf(ahead(star - 1));
            position_ += star + 2;
            return item;
        }
    }
    item.value = value();
    item.alias = optionalAlias();
    return item;
}

std::span<OrderItem> Parser::orderItems()
{
    ArenaList<OrderItem> items(arena_);
    do {
        OrderItem item{value(), false};
        if (at(Keyword::Collate)) unsupportedHere("COLLATE in ORDER BY");
        item.descending = accept(Keyword::Desc);
        if (!item.descending) accept(Keyword::Asc);
        items.push(item);
    } while (accept(TokenKind::Comma));
    return items.span();
}

/// OFFSET n ROWS [FETCH NEXT m ROWS ONLY]. ROW and ROWS, NEXT and FIRST mean the same.
void Parser::offsetClause(Query& query)
{
    ++position_;
    query.skip = value();
    if (!acceptWord("ROWS")) expectWord("ROW");
    if (!accept(Keyword::Fetch)) return;
    if (!acceptWord("NEXT")) expectWord("FIRST");
    query.fetch = value();
    if (!acceptWord("ROWS")) expectWord("ROW");
    expectWord("ONLY");
}

FromItem* Parser::join(FromKind kind, FromItem* left, FromItem* right, std::uint32_t offset)
{
    FromItem* result = arena_.make<FromItem>();
    result->kind = kind;
    result->left = left;
    result->right = right;
    result->offset = offset;
    return result;
}

/// The comma binds less tightly than the joins, as on the server.
FromItem* Parser::fromClause()
{
    const std::size_t around = std::exchange(tables_, 0);
    FromItem* left = joined();
    while (at(TokenKind::Comma)) {
        const std::uint32_t offset = current().offset;
        ++position_;
        left = join(FromKind::Comma, left, joined(), offset);
    }
    tables_ = around;
    return left;
}

bool Parser::atJoin() const
{
    switch (current().keyword) {
    case Keyword::Join:
    case Keyword::Inner:
    case Keyword::Left:
    case Keyword::Right:
    case Keyword::Full:
    case Keyword::Cross: return true;
    default: return false;
    }
}

FromItem* Parser::joined()
{
    const Level level(*this, "this table or join");
    FromItem* left = fromPrimary();
    while (atJoin())
        left = joinTail(left);
    return left;
}

/// One join; where another join stands before its ON, that one binds first (A JOIN B JOIN C ON ... ON ...).
FromItem* Parser::joinTail(FromItem* left)
{
    const Level level(*this, "this table or join");
    const std::uint32_t offset = current().offset;
    FromKind kind = FromKind::Inner;
    if (accept(Keyword::Cross)) {
        if (atWord("APPLY")) unsupportedHere("CROSS APPLY");
        kind = FromKind::Cross;
    } else if (accept(Keyword::Left)) {
        kind = FromKind::Left;
    } else if (accept(Keyword::Right)) {
        kind = FromKind::Right;
    } else if (accept(Keyword::Full)) {
        kind = FromKind::Full;
    } else {
        accept(Keyword::Inner);
    }
    if (kind == FromKind::Left || kind == FromKind::Right || kind == FromKind::Full) accept(Keyword::Outer);
    if (atWord("HASH") || atWord("LOOP") || at(Keyword::Merge)) unsupportedHere("A join hint");
    expect(Keyword::Join);
    FromItem* right = fromPrimary();
    // CROSS JOIN has no ON.
    if (kind == FromKind::Cross) return join(kind, left, right, offset);
    while (atJoin())
        right = joinTail(right);
    FromItem* result = join(kind, left, right, offset);
    expect(Keyword::On);
    result->on = condition();
    return result;
}

void Parser::countTable()
{
    source_.work();
    if (++tables_ <= mostTables) return;
    source_.refuse(current().offset, messages::tooManyTables,
                   "Too many table names in the query. The maximum allowable is 256.");
}

/// A parenthesis holds either a query, which must have an alias, or joins. The word after it decides. Hints may stand
/// before and after the alias.
FromItem* Parser::fromPrimary()
{
    const Level level(*this, "this table or join");
    FromItem* result = arena_.make<FromItem>();
    result->offset = current().offset;
    if (accept(TokenKind::LeftParen)) {
        const bool derived = at(Keyword::Select) || (at(TokenKind::LeftParen) && ahead(1).keyword == Keyword::Select);
        if (!derived) {
            FromItem* inner = joined();
            expect(TokenKind::RightParen, ")");
            return inner;
        }
        countTable();
        result->kind = FromKind::Derived;
        result->query = query();
        expect(TokenKind::RightParen, ")");
        result->alias = optionalAlias();
        if (result->alias.empty()) refuseHere();
        if (at(TokenKind::LeftParen)) result->columnNames = nameList();
        return result;
    }
    if (at(TokenKind::Variable)) unsupportedHere("A table variable");
    countTable();
    result->kind = FromKind::Table;
    result->table = qualifiedName();
    if (at(TokenKind::LeftParen) && !atHint()) unsupportedHere("A table-valued function");
    tableHints();
    result->alias = optionalAlias();
    tableHints();
    if (atWord("TABLESAMPLE") || at(Keyword::Pivot) || atWord("UNPIVOT")) {
        unsupportedHere("PIVOT, UNPIVOT and TABLESAMPLE");
    }
    return result;
}

bool Parser::atHint() const
{
    const std::string_view word = text(ahead(1));
    return std::any_of(knownHints.begin(), knownHints.end(),
                       [&](std::string_view hint) { return sameName(hint, word); });
}

/// The older form without WITH is accepted only if the first word is a known hint: the parenthesis may otherwise be a
/// column list of INSERT. `atHint` looks at the token after the parenthesis or comma.
void Parser::tableHints()
{
    if (at(Keyword::With)) {
        ++position_;
        if (!at(TokenKind::LeftParen)) refuseHere();
    } else if (!at(TokenKind::LeftParen) || !atHint()) {
        return;
    }
    do {
        if (!atHint()) {
            ++position_;
            source_.refuse(current().offset, 321,
                           "\"" + std::string(text(current())) + "\" is not a recognized table hints option.");
        }
        position_ += 2;
    } while (at(TokenKind::Comma));
    expect(TokenKind::RightParen, ")");
}

} // namespace tamarok::tsql
