#include <array>
#include <charconv>

#include "parser.h"
#include "tamarok_tsql/type_rules.h"

namespace tamarok::tsql {

ParsedStep& Parser::add(StepKind kind, std::uint32_t offset)
{
    ParsedStep& step = steps_.emplace_back();
    step.kind = kind;
    step.offset = offset;
    return step;
}

void Parser::statement()
{
    const Level level(*this, "this statement");
    listedValues_ = 0;
    statementBody();
    accept(TokenKind::Semicolon);
}

/// The first word determines the statement. BEGIN opens a transaction or a block, depending on the second word.
void Parser::statementBody()
{
    const std::uint32_t offset = current().offset;
    switch (current().keyword) {
    case Keyword::Select: {
        Query* parsed = query();
        add(StepKind::Query, offset).query = parsed;
        break;
    }
    case Keyword::Insert: insertStatement(); break;
    case Keyword::Update: updateStatement(); break;
    case Keyword::Delete: deleteStatement(); break;
    case Keyword::Set: setStatement(); break;
    case Keyword::If: ifStatement(); break;
    case Keyword::Begin:
        if (ahead(1).keyword == Keyword::Tran || ahead(1).keyword == Keyword::Transaction) {
            transactionStatement();
        } else {
            block();
        }
        break;
    case Keyword::Commit:
    case Keyword::Rollback: transactionStatement(); break;
    case Keyword::Exec:
    case Keyword::Execute: executeStatement(); break;
    case Keyword::Create: createStatement(); break;
    case Keyword::Drop: dropStatement(); break;
    case Keyword::Alter: alterStatement(); break;
    case Keyword::Truncate: truncateStatement(); break;
    default: refuseStatement();
    }
}

/// Statements that the server knows are refused by name, so that the reader of the message does not look for a typing
/// error. A query in parentheses is accepted.
void Parser::refuseStatement()
{
    switch (current().keyword) {
    case Keyword::Declare:
    case Keyword::While:
    case Keyword::Print:
    case Keyword::Raiserror:
    case Keyword::Return:
    case Keyword::Goto:
    case Keyword::Break:
    case Keyword::Merge:
    case Keyword::Use:
    case Keyword::WaitFor:
    case Keyword::Save: unsupportedHere("The statement " + std::string(text(current())));
    case Keyword::With: unsupportedHere("A common table expression (WITH)");
    default: break;
    }
    if (at(TokenKind::LeftParen)) {
        const std::uint32_t offset = current().offset;
        Query* parsed = query();
        add(StepKind::Query, offset).query = parsed;
        return;
    }
    refuseHere();
}

/// BEGIN ... END only groups: its steps are appended like any others. An empty block is a syntax error, as on the
/// server.
void Parser::block()
{
    if (atWord("TRY") || sameName(text(ahead(1)), "TRY")) unsupportedHere("BEGIN TRY");
    ++position_;
    accept(TokenKind::Semicolon);
    if (at(Keyword::End)) refuseHere();
    while (!at(Keyword::End)) {
        if (accept(TokenKind::Semicolon)) continue;
        if (at(TokenKind::End)) expect(Keyword::End);
        statement();
    }
    ++position_;
}

/// IF becomes a conditional jump over its statement, ELSE an unconditional one at the end of the first branch. The
/// targets are known only after the branch has been parsed; they are set by index, since references into `steps_` do
/// not survive the next `add`.
void Parser::ifStatement()
{
    const std::uint32_t offset = current().offset;
    ++position_;
    Expr* test = condition();
    const std::size_t branch = steps_.size();
    ParsedStep& jump = add(StepKind::JumpUnless, offset);
    jump.condition = test;
    statement();
    if (!accept(Keyword::Else)) {
        steps_[branch].jump = steps_.size();
        return;
    }
    const std::size_t skip = steps_.size();
    add(StepKind::Jump, current().offset);
    steps_[branch].jump = steps_.size();
    statement();
    steps_[skip].jump = steps_.size();
}

namespace {

struct Language {
    std::string_view name;
    std::string_view dateFormat;
};

/// SET LANGUAGE changes only the order of day, month and year here.
constexpr std::array languages{
    Language{"us_english", "mdy"}, Language{"English", "mdy"}, Language{"British", "dmy"}, Language{"German", "dmy"},
    Language{"Deutsch", "dmy"},    Language{"French", "dmy"},  Language{"Italian", "dmy"}, Language{"Czech", "dmy"},
};

struct Option {
    std::string_view name;
    bool switchable; ///< OFF has no effect here; otherwise OFF would change results and is refused
};

/// Options that the embedded database can honour because it behaves in that way in any case.
constexpr std::array options{
    Option{"ANSI_NULLS", false},
    Option{"ANSI_PADDING", false},
    Option{"ANSI_WARNINGS", false},
    Option{"ANSI_NULL_DFLT_ON", false},
    Option{"ANSI_DEFAULTS", false},
    Option{"QUOTED_IDENTIFIER", false},
    Option{"CONCAT_NULL_YIELDS_NULL", false},
    Option{"ARITHABORT", false},
    Option{"NUMERIC_ROUNDABORT", true},
    Option{"CURSOR_CLOSE_ON_COMMIT", true},
    Option{"FMTONLY", true},
};

} // namespace

/// SET TRANSACTION ISOLATION LEVEL has no effect: a statement of the embedded database always sees one state of the
/// data.
void Parser::setStatement()
{
    const std::uint32_t offset = current().offset;
    ++position_;
    if (at(TokenKind::Variable)) unsupportedHere("A variable");
    if (accept(Keyword::Transaction)) {
        for (const std::string_view word : {"ISOLATION", "LEVEL"})
            expectWord(word);
        if (!acceptWord("SERIALIZABLE") && !acceptWord("SNAPSHOT")) {
            if (acceptWord("REPEATABLE")) {
                expectWord("READ");
            } else {
                expectWord("READ");
                if (!acceptWord("UNCOMMITTED")) expectWord("COMMITTED");
            }
        }
        add(StepKind::Nothing, offset);
        return;
    }
    const Token option = current();
    if (!atName()) refuseHere();
    ++position_;
    setOption(option);
    steps_.back().offset = offset;
}

/// Date order and row counts change results and become steps. Options of the table above are accepted in the setting
/// that matches the embedded database; anything else is refused, since results could differ silently.
void Parser::setOption(const Token& option)
{
    const std::string_view word = text(option);
    if (sameName(word, "DATEFORMAT") || sameName(word, "LANGUAGE")) {
        const Token& argument = current();
        std::string chosen(argument.kind == TokenKind::Text ? nameOf(argument).text : text(argument));
        for (const Language& language : languages) {
            if (sameName(word, "LANGUAGE") && sameName(language.name, chosen)) chosen = language.dateFormat;
        }
        if (const std::optional<DateOrder> order = parseDateOrder(chosen)) {
            ++position_;
            add(StepKind::DateFormat, option.offset).dateOrder = *order;
            return;
        }
        source_.refuse(argument.offset, 2741, "SET " + std::string(word) + ": '" + chosen + "' is not known.");
    }
    if (sameName(word, "IDENTITY_INSERT")) {
        const Name table = qualifiedName();
        const bool open = accept(Keyword::On);
        if (!open) expect(Keyword::Off);
        ParsedStep& step = add(StepKind::IdentityInsert, option.offset);
        step.name = table;
        step.flag = open;
        return;
    }
    const bool on = accept(Keyword::On);
    if (!on && !at(Keyword::Off)) unsupportedHere("SET " + std::string(word));
    if (!on) ++position_;
    if (sameName(word, "NOCOUNT")) {
        add(StepKind::NoCount, option.offset).flag = on;
        return;
    }
    if (sameName(word, "XACT_ABORT")) {
        add(StepKind::XactAbort, option.offset).flag = on;
        return;
    }
    for (const Option& known : options) {
        if (!sameName(known.name, word)) continue;
        if (!on && !known.switchable) break;
        // FMTONLY ON would have the server send no rows at all.
        if (on && sameName(word, "FMTONLY")) break;
        add(StepKind::Nothing, option.offset);
        return;
    }
    source_.unsupported(option.offset, "SET " + std::string(word) + (on ? " ON" : " OFF"));
}

/// INSERT [INTO] table [(columns)], then DEFAULT VALUES, rows of values, or a query. A parenthesis before SELECT begins
/// the query and no column list.
void Parser::insertStatement()
{
    const std::uint32_t offset = current().offset;
    ++position_;
    if (at(Keyword::Top)) unsupportedHere("INSERT TOP");
    accept(Keyword::Into);
    auto* insert = arena_.make<InsertStatement>();
    insert->table = qualifiedName();
    tableHints();
    if (at(TokenKind::LeftParen) && ahead(1).keyword != Keyword::Select) insert->columns = nameList();
    if (atWord("OUTPUT")) unsupportedHere("The OUTPUT clause");
    if (accept(Keyword::Default)) {
        expect(Keyword::Values);
        insert->defaults = true;
    } else if (accept(Keyword::Values)) {
        ArenaList<ExprList> rows(arena_);
        do {
            expect(TokenKind::LeftParen, "(");
            rows.push(valueList());
            expect(TokenKind::RightParen, ")");
        } while (accept(TokenKind::Comma));
        insert->rows = rows.span();
    } else if (at(Keyword::Exec) || at(Keyword::Execute)) {
        unsupportedHere("INSERT ... EXEC");
    } else {
        insert->query = query();
    }
    add(StepKind::Insert, offset).insert = insert;
}

/// The target may be a table or an alias of the FROM clause; the binder finds out which.
void Parser::updateStatement()
{
    const std::uint32_t offset = current().offset;
    ++position_;
    if (at(Keyword::Top)) unsupportedHere("UPDATE TOP");
    auto* update = arena_.make<UpdateStatement>();
    update->target = qualifiedName();
    tableHints();
    expect(Keyword::Set);
    ArenaList<Assignment> assignments(arena_);
    do {
        if (at(TokenKind::Variable)) unsupportedHere("A variable");
        Assignment assignment{qualifiedName(), nullptr};
        // += and the like arrive as two tokens.
        if (ahead(1).kind == TokenKind::Equal && !at(TokenKind::Equal)) unsupportedHere("A compound assignment");
        expect(TokenKind::Equal, "=");
        assignment.value = value();
        assignments.push(assignment);
    } while (accept(TokenKind::Comma));
    update->assignments = assignments.span();
    if (atWord("OUTPUT")) unsupportedHere("The OUTPUT clause");
    if (accept(Keyword::From)) update->from = fromClause();
    if (accept(Keyword::Where)) {
        if (atWord("CURRENT")) unsupportedHere("WHERE CURRENT OF");
        update->where = condition();
    }
    add(StepKind::Update, offset).update = update;
}

/// The server allows two FROM: the first names the target, the second the tables to join with.
void Parser::deleteStatement()
{
    const std::uint32_t offset = current().offset;
    ++position_;
    if (at(Keyword::Top)) unsupportedHere("DELETE TOP");
    accept(Keyword::From);
    auto* erase = arena_.make<DeleteStatement>();
    erase->target = qualifiedName();
    tableHints();
    if (atWord("OUTPUT")) unsupportedHere("The OUTPUT clause");
    if (accept(Keyword::From)) erase->from = fromClause();
    if (accept(Keyword::Where)) {
        if (atWord("CURRENT")) unsupportedHere("WHERE CURRENT OF");
        erase->where = condition();
    }
    add(StepKind::Delete, offset).erase = erase;
}

/// The name of a transaction has no meaning on BEGIN and COMMIT and is skipped. ROLLBACK to a name may mean a savepoint
/// and is refused.
void Parser::transactionStatement()
{
    const Token& word = current();
    ++position_;
    const bool named = accept(Keyword::Tran) || accept(Keyword::Transaction);
    if (!named) accept(Keyword::Work);
    if (named && atName()) {
        if (word.keyword == Keyword::Rollback) unsupportedHere("ROLLBACK to a named point");
        ++position_;
    }
    add(word.keyword == Keyword::Begin    ? StepKind::Begin
        : word.keyword == Keyword::Commit ? StepKind::Commit
                                          : StepKind::Rollback,
        word.offset);
}

void Parser::executeStatement()
{
    const std::uint32_t offset = current().offset;
    ++position_;
    if (at(TokenKind::Variable)) unsupportedHere("EXEC with a variable for the result");
    if (at(TokenKind::LeftParen)) unsupportedHere("EXEC of a text");
    const Name procedure = qualifiedName();
    std::vector<Argument> arguments;
    // A procedure without arguments is followed by the next statement, without a semicolon between. The first token
    // tells whether arguments follow.
    const auto begins = [this] {
        return at(TokenKind::Integer) || at(TokenKind::Decimal) || at(TokenKind::Float) || at(TokenKind::Text) ||
               at(TokenKind::Minus) || at(TokenKind::Plus) || at(TokenKind::Parameter) || at(TokenKind::Variable) ||
               at(Keyword::Null) || atName();
    };
    if (begins()) {
        do {
            arguments.push_back(argument());
        } while (accept(TokenKind::Comma));
    }
    ParsedStep& step = add(StepKind::Execute, offset);
    step.name = procedure;
    step.arguments = std::move(arguments);
}

/// EXEC takes constants, no expressions: a number with a sign, a text, NULL, or a parameter. An unquoted name is a
/// text, as on the server.
Argument Parser::argument()
{
    Argument result;
    if (at(TokenKind::Variable)) {
        if (ahead(1).kind != TokenKind::Equal) unsupportedHere("A variable as argument");
        result.name = text(current()).substr(1);
        position_ += 2;
    }
    const bool negative = at(TokenKind::Minus);
    if (negative || at(TokenKind::Plus)) ++position_;
    const Token& token = current();
    const std::string_view digits = text(token);
    switch (token.kind) {
    case TokenKind::Integer:
    case TokenKind::Decimal:
    case TokenKind::Float: {
        std::int32_t whole = 0;
        double number = 0;
        const char* end = digits.data() + digits.size();
        // A number that is no 32-bit whole number is passed as a double.
        const auto read = std::from_chars(digits.data(), end, whole);
        if (read.ec == std::errc() && read.ptr == end) {
            result.value = Variant(negative ? -whole : whole);
        } else {
            std::from_chars(digits.data(), end, number);
            result.value = Variant(negative ? -number : number);
        }
        break;
    }
    case TokenKind::Text:
        if (negative) refuseHere();
        result.value = Variant(std::string(nameOf(token).text));
        break;
    case TokenKind::Parameter:
        if (negative) refuseHere();
        result.parameter = parameters_++;
        break;
    default:
        if (token.keyword == Keyword::Null) {
            result.value = Variant(tamarok::Null{});
        } else if (atName()) {
            result.value = Variant(std::string(nameOf(token).text));
        } else {
            refuseHere();
        }
    }
    ++position_;
    if (atWord("OUTPUT") || atWord("OUT")) unsupportedHere("An OUTPUT argument");
    return result;
}

} // namespace tamarok::tsql
