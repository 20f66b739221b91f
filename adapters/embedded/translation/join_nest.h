#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "tamarok_tsql/ast.h"
#include "tamarok_tsql/scope.h"
#include "tamarok_tsql/source_text.h"

/// SQLite joins at most 64 tables in one FROM. A longer FROM begins with a derived table that holds its first tables:
///   FROM (SELECT A.X AS "1.X", B.Y AS "2.Y" FROM A LEFT JOIN B ON ... LIMIT -1) AS "~j1" LEFT JOIN C ON ...
/// That derived table may begin with another one. The first joins of a FROM are a table of rows in themselves, whatever
/// follows them, so that no kind of join changes its rows. LIMIT -1, which is no limit, keeps SQLite from dissolving
/// the derived table into the query around it; it runs beside that query row by row and is not stored.
namespace tamarok::embedded::translation {

using namespace tsql;

/// Most tables that SQLite joins in one FROM.
inline constexpr std::size_t mostJoined = 64;

/// A table, derived table or join in parentheses of a FROM clause, and how it is joined to all that stands before it.
struct JoinTerm {
    FromKind kind = FromKind::Table; ///< the kind of the join; Table for the first term
    const FromItem* operand = nullptr;
    Expr* on = nullptr;
    bool kept = false; ///< a derived table that SQLite must not dissolve
};

/// The most tables that SQLite joins for a FROM clause: it dissolves a derived table into the query around it where
/// that changes no row, so that the tables of both count. Those of views are not known.
std::size_t joinedTables(const FromItem& from);

/// Whether the item is a table or a derived table, and no join.
bool isPlain(const FromItem& item);

/// Whether the joins may be read from the left, behind other tables, without changing their result.
bool isChained(const FromItem& item);

/// The terms of a FROM clause as SQLite reads it, from the left.
std::vector<JoinTerm> joinTerms(const FromItem& from);

/// What refers to the columns of a FROM clause from outside.
struct JoinUsers {
    std::vector<Expr*> values; ///< outside of FROM and WHERE
    Expr* where = nullptr;
    const Source* rowKey = nullptr; ///< a table whose rowid is taken
    std::size_t tablesBeside = 0;   ///< tables that the statement joins to those of FROM
};

/// A column that passes through a derived table.
struct PassedColumn {
    static constexpr std::int32_t rowKey = -1;

    std::uint32_t number = 0; ///< of the source
    std::int32_t column = 0;  ///< in the source, or `rowKey`
    const Source* source = nullptr;

    // NOLINTNEXTLINE(modernize-use-nullptr): the check takes the comparison of the order with 0 for a pointer's
    friend auto operator<=>(const PassedColumn&, const PassedColumn&) = default;
};

/// One of the derived tables.
struct JoinLevel {
    std::size_t end = 0;             ///< the terms before this one are inside
    std::uint32_t lastSource = 0;    ///< number of the last source inside
    std::string alias;               ///< "~j1"
    std::set<PassedColumn> columns;  ///< in the order of the tables
    std::vector<const Expr*> filter; ///< conditions of WHERE that are tested inside
};

/// How the joins of one FROM clause are nested.
struct JoinNest {
    const FromItem* from = nullptr;
    const Scope* scope = nullptr;
    std::vector<JoinTerm> terms;
    std::vector<JoinLevel> levels;   ///< the innermost first; each one holds the one before it
    std::vector<const Expr*> filter; ///< conditions of WHERE that are tested outside of all
    std::size_t writing = 0;         ///< the level whose FROM is being written; `levels.size()` for the outermost

    /// The derived table out of which the source's columns come where the text is being written; nullptr for none.
    const JoinLevel* levelOf(const Source& source) const;
};

/// Plans the nesting of a bound FROM clause for which SQLite would join more than 64 tables, those beside it included.
/// @param aliases  counts the derived tables of a statement; their aliases follow from it
/// Error 106 for joins in parentheses of more than 63 tables, which cannot be divided.
JoinNest nestJoins(const FromItem& from, const JoinUsers& users, const SourceText& text, std::size_t& aliases);

/// What uses the FROM clause of a bound SELECT.
JoinUsers joinUsers(const Query& query);

/// The name of the column in its derived table: the number of its source and, unless it is the rowid, its name.
std::string passedName(const PassedColumn& passed);

} // namespace tamarok::embedded::translation
