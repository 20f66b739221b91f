#include "parser.h"
#include "tamarok_tsql/type_rules.h"

namespace tamarok::tsql {

/// UNIQUE and the index words may stand before INDEX; any other object after CREATE is refused by its name.
void Parser::createStatement()
{
    const std::uint32_t offset = current().offset;
    ++position_;
    if (accept(Keyword::Table)) return createTable(offset);
    if (accept(Keyword::View)) return createView(offset);
    const bool unique = accept(Keyword::Unique);
    indexWords();
    if (accept(Keyword::Index)) return createIndex(offset, unique);
    if (unique) refuseHere();
    unsupportedHere("CREATE " + std::string(text(current())));
}

/// CLUSTERED and NONCLUSTERED order the rows on disk. SQLite orders them by rowid, so the words are skipped.
void Parser::indexWords()
{
    if (!accept(Keyword::Clustered)) accept(Keyword::NonClustered);
}

/// In the list of CREATE TABLE these words begin a constraint; anything else is a column.
bool Parser::atConstraint() const
{
    switch (current().keyword) {
    case Keyword::Constraint:
    case Keyword::Primary:
    case Keyword::Unique:
    case Keyword::Foreign:
    case Keyword::Check: return true;
    default: return false;
    }
}

/// Columns and constraints share one list. The server accepts a comma after the last one; ON names a filegroup, which
/// has no counterpart in a file.
void Parser::createTable(std::uint32_t offset)
{
    auto* create = arena_.make<CreateTableStatement>();
    create->table = qualifiedName();
    ArenaList<ColumnDefinition> columns(arena_);
    ArenaList<TableConstraint> constraints(arena_);
    expect(TokenKind::LeftParen, "(");
    do {
        if (at(TokenKind::RightParen) && columns.size() != 0) break;
        if (atConstraint()) {
            constraints.push(tableConstraint());
        } else {
            columns.push(columnDefinition());
        }
    } while (accept(TokenKind::Comma));
    expect(TokenKind::RightParen, ")");
    if (accept(Keyword::On)) name();
    create->columns = columns.span();
    create->constraints = constraints.span();
    add(StepKind::CreateTable, offset).createTable = create;
}

/// Name, type and options, which may come in any order.
ColumnDefinition Parser::columnDefinition()
{
    ColumnDefinition column;
    column.name = name();
    if (at(Keyword::As)) unsupportedHere("A computed column");
    column.type = typeName(column.typeText);
    while (columnOption(column)) {}
    return column;
}

/// Reads one option after the type. @return false if none follows. Names of column constraints are dropped: messages
/// name the column instead.
bool Parser::columnOption(ColumnDefinition& column)
{
    if (accept(Keyword::Null)) return true;
    if (accept(Keyword::Not)) {
        expect(Keyword::Null);
        column.notNull = true;
    } else if (accept(Keyword::Constraint)) {
        name();
    } else if (accept(Keyword::Default)) {
        // `unary` and not `value`: DEFAULT 0 NOT NULL must end before NOT.
        column.defaultValue = requireValue(unary());
        if (accept(Keyword::With)) expect(Keyword::Values);
    } else if (at(Keyword::Identity)) {
        if (!isWhole(column.type)) {
            source_.refuse(current().offset, 2749,
                           "Identity column '" + std::string(column.name.text) + "' must be of a whole number type.");
        }
        ++position_;
        column.identity = true;
        if (accept(TokenKind::LeftParen)) {
            // SQLite numbers from 1 in steps of 1.
            if (text(current()) != "1" || text(ahead(2)) != "1") unsupportedHere("An IDENTITY other than (1,1)");
            ++position_;
            expect(TokenKind::Comma, ",");
            ++position_;
            expect(TokenKind::RightParen, ")");
        }
    } else if (accept(Keyword::Primary)) {
        expect(Keyword::Key);
        indexWords();
        column.primaryKey = true;
    } else if (accept(Keyword::Unique)) {
        indexWords();
        column.unique = true;
    } else if (accept(Keyword::Check)) {
        expect(TokenKind::LeftParen, "(");
        column.check = condition();
        expect(TokenKind::RightParen, ")");
    } else if (accept(Keyword::Collate)) {
        // Binary and case-sensitive collations compare bytes here; all others are the TAMAROK collation.
        const std::string collation(name().text);
        column.binary =
            collation.ends_with("_BIN") || collation.ends_with("_BIN2") || collation.find("_CS_") != std::string::npos;
    } else if (at(Keyword::Foreign) || at(Keyword::References)) {
        if (accept(Keyword::Foreign)) expect(Keyword::Key);
        references(column.referencedTable, column.referencedColumns, column.referenceActions);
    } else {
        return false;
    }
    return true;
}

/// ON DELETE and ON UPDATE mean the same in SQLite and are spelled alike, so the checked text is kept verbatim.
void Parser::references(Name& table, std::span<Name>& columns, std::string_view& actions)
{
    expect(Keyword::References);
    table = qualifiedName();
    if (at(TokenKind::LeftParen)) columns = nameList();
    const std::uint32_t begin = current().offset;
    std::uint32_t end = begin;
    while (at(Keyword::On) && (ahead(1).keyword == Keyword::Delete || ahead(1).keyword == Keyword::Update)) {
        position_ += 2;
        if (accept(Keyword::Set)) {
            if (!accept(Keyword::Null)) expect(Keyword::Default);
        } else if (acceptWord("NO")) {
            expectWord("ACTION");
        } else {
            expectWord("CASCADE");
        }
        end = tokens_[position_ - 1].offset + tokens_[position_ - 1].length;
    }
    actions = source_.text().substr(begin, end - begin);
}

/// [CONSTRAINT name] CHECK, FOREIGN KEY, UNIQUE or PRIMARY KEY. The order of key columns (ASC, DESC) only affects how
/// the server stores the index and is dropped.
TableConstraint Parser::tableConstraint()
{
    TableConstraint constraint{};
    if (accept(Keyword::Constraint)) constraint.name = name();
    if (accept(Keyword::Check)) {
        constraint.kind = ConstraintKind::Check;
        expect(TokenKind::LeftParen, "(");
        constraint.check = condition();
        expect(TokenKind::RightParen, ")");
        return constraint;
    }
    if (accept(Keyword::Foreign)) {
        constraint.kind = ConstraintKind::ForeignKey;
        expect(Keyword::Key);
        constraint.columns = nameList();
        references(constraint.referencedTable, constraint.referencedColumns, constraint.referenceActions);
        return constraint;
    }
    constraint.kind = at(Keyword::Unique) ? ConstraintKind::Unique : ConstraintKind::PrimaryKey;
    if (!accept(Keyword::Unique)) {
        expect(Keyword::Primary);
        expect(Keyword::Key);
    }
    indexWords();
    ArenaList<Name> columns(arena_);
    expect(TokenKind::LeftParen, "(");
    do {
        columns.push(name());
        if (!accept(Keyword::Asc)) accept(Keyword::Desc);
    } while (accept(TokenKind::Comma));
    expect(TokenKind::RightParen, ")");
    if (at(Keyword::With)) unsupportedHere("WITH behind a key");
    if (accept(Keyword::On)) name();
    constraint.columns = columns.span();
    return constraint;
}

/// INCLUDE, WHERE and WITH change what the index covers or enforces, so they are refused and not skipped.
void Parser::createIndex(std::uint32_t offset, bool unique)
{
    auto* create = arena_.make<CreateIndexStatement>();
    create->unique = unique;
    create->index = name();
    expect(Keyword::On);
    create->table = qualifiedName();
    ArenaList<IndexColumn> columns(arena_);
    expect(TokenKind::LeftParen, "(");
    do {
        IndexColumn column{name(), false};
        column.descending = accept(Keyword::Desc);
        if (!column.descending) accept(Keyword::Asc);
        columns.push(column);
    } while (accept(TokenKind::Comma));
    expect(TokenKind::RightParen, ")");
    if (atWord("INCLUDE")) unsupportedHere("INCLUDE of an index");
    if (at(Keyword::Where)) unsupportedHere("A filtered index");
    if (at(Keyword::With)) unsupportedHere("WITH of an index");
    create->columns = columns.span();
    add(StepKind::CreateIndex, offset).createIndex = create;
}

void Parser::createView(std::uint32_t offset)
{
    auto* create = arena_.make<CreateViewStatement>();
    create->view = qualifiedName();
    if (at(TokenKind::LeftParen)) create->columns = nameList();
    expect(Keyword::As);
    create->query = query();
    add(StepKind::CreateView, offset).createView = create;
}

/// One statement may drop several objects; each becomes a step of its own. An index is named `index ON table` or, in
/// the older form, `table.index`.
void Parser::dropStatement()
{
    const std::uint32_t offset = current().offset;
    ++position_;
    DropStatement drop{};
    if (accept(Keyword::Table)) {
        drop.what = DropStatement::What::Table;
    } else if (accept(Keyword::Index)) {
        drop.what = DropStatement::What::Index;
    } else if (accept(Keyword::View)) {
        drop.what = DropStatement::What::View;
    } else {
        unsupportedHere("DROP " + std::string(text(current())));
    }
    if (accept(Keyword::If)) {
        expect(Keyword::Exists);
        drop.ifExists = true;
    }
    do {
        if (drop.what == DropStatement::What::Index) {
            drop.name = name();
            if (accept(TokenKind::Dot)) {
                drop.table = drop.name;
                drop.name = name();
            } else {
                expect(Keyword::On);
                drop.table = qualifiedName();
            }
        } else {
            drop.name = qualifiedName();
        }
        add(StepKind::Drop, offset).drop = arena_.make<DropStatement>(drop);
    } while (accept(TokenKind::Comma));
}

/// SQLite adds and drops columns, but cannot change a column or add a constraint. Those forms are refused.
void Parser::alterStatement()
{
    const std::uint32_t offset = current().offset;
    ++position_;
    if (!accept(Keyword::Table)) unsupportedHere("ALTER " + std::string(text(current())));
    auto* alter = arena_.make<AlterStatement>();
    alter->table = qualifiedName();
    if (accept(Keyword::Drop)) {
        if (!at(Keyword::Column)) unsupportedHere("ALTER TABLE ... DROP of anything but a column");
        ++position_;
        ArenaList<Name> dropped(arena_);
        do {
            dropped.push(name());
        } while (accept(TokenKind::Comma));
        alter->dropped = dropped.span();
    } else {
        if (!accept(Keyword::Add)) unsupportedHere("ALTER TABLE ... " + std::string(text(current())));
        accept(Keyword::Column);
        ArenaList<ColumnDefinition> added(arena_);
        do {
            if (atConstraint()) unsupportedHere("ALTER TABLE ... ADD of a constraint");
            added.push(columnDefinition());
        } while (accept(TokenKind::Comma));
        alter->added = added.span();
    }
    add(StepKind::Alter, offset).alter = alter;
}

void Parser::truncateStatement()
{
    const std::uint32_t offset = current().offset;
    ++position_;
    expect(Keyword::Table);
    const Name table = qualifiedName();
    add(StepKind::Truncate, offset).name = table;
}

} // namespace tamarok::tsql
